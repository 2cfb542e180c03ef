#pragma once

#include "core/RecordSet.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

class Browser;
class ProgramFolder;
class Prompt;

// What the report dialog (frmPrint) does, without a screen: its options as the controls
// hold them, their clicks, and OK, which turns the options into the arguments of one of
// the two reports of clsReport and shows the report in the user's browser.
//
// The dialog works on its own copy of the plates: no option, sort or cursor move reaches
// the main window's plates.
class ReportSelection {
public:
    static inline const QString kCaption = QStringLiteral("Generate Report");
    static inline const QString kNoDataTitle = QStringLiteral("Requested Data Not Available");
    static inline const QString kNoDataText =
        QStringLiteral("There is no completed test data to report that fits this specification.");
    static inline const QString kBadDatesTitle = QStringLiteral("Date range is invalid.");
    static inline const QString kBadDatesText = QStringLiteral("The date range is invalid");
    static inline const QString kNoBrowserText =
        QStringLiteral("The report was written to %1, but no program could be started to show it.");

    // A combo box: its entries, the selected one (-1: none) and whether it can be used.
    struct Combo {
        QStringList items;
        int index = -1;
        bool enabled = true;
        QString text() const { return index >= 0 && index < items.size() ? items[index] : QString(); }
    };

    ReportSelection(const ProgramFolder &folder, Prompt &prompt, Browser &browser);

    // Called before the dialog shows.
    void setRunName(const QString &name) { mRunName = name; }
    void setPlatesRecord(const RecordSet &plates) { mPlates = copyRecordset(plates); }

    // The load of the dialog: the lists and the date range from the database, then the
    // first option of each choice.
    void load();

    // Clicks.
    void clickReport(int index);      // optReport: 0 "Plate:", 1 "Current Run", 2 "Group:"
    void clickGroupReport(int index); // optGroupReport: 0 current run, 1 saved run, 2 date range
    void clickReplicates(int index);  // optReplicates

    // cmdOK. True when the report was made and handed to the browser: the dialog closes.
    // False: the user was told why, and the dialog stays. Failures of the database or of
    // the report file throw.
    bool ok();

    // The control state. The dialog shows it and writes the user's changes back.
    int report = 0;
    Combo plates;
    bool separateGroups = false;
    bool separateGroupsEnabled = true;
    Combo groups;
    int groupReport = -1; // -1: none of the three is selected
    bool groupReportEnabled = false;
    Combo runs;
    std::array<QString, 2> monthRange, dayRange, yearRange; // 0 start, 1 end
    bool dateBoxesEnabled = true;
    int style = 0;      // optStyle: 0 client, 1 analytical
    int replicates = 0; // optReplicates selected
    int sort = 0;       // optSort: 0 by name, 1 by plate position

    qint16 replicatesMode() const { return mReplicatesMode; }
    QString runName() const { return mRunName; }
    const RecordSet &platesRecord() const { return mPlates; }
    QString reportPath() const;

    // The plates the options choose, as the report takes them: the plates, the one plate's
    // name (empty for all) and the group (empty for all). runName is the open run's name
    // for its own plates, the saved run's for a saved run, empty for a date range, whose
    // plates come from any run. nullopt when nothing is chosen; the user was told when
    // the dates were wrong (told is then true).
    struct Chosen {
        RecordSet plates;
        QString plateName;
        QString groupName;
        bool separateGroups = false;
        QString runName;
    };
    std::optional<Chosen> chosenPlates(bool *told = nullptr);

    // A date typed as month, day and year, as the boxes take it: whole numbers, a real
    // day of that month, a year of one or two digits counted in 1930 to 2029.
    static std::optional<QDate> dateFromParts(const QString &month, const QString &day, const QString &year);

private:
    void fillPrintPlates();
    void fillPrintGroups();
    void fillPrintRuns();
    void fillPrintDates();
    void enableDateBoxes(bool enabled) { dateBoxesEnabled = enabled; }

    // Runs the chosen report; nullopt when the user has been told something already.
    std::optional<bool> makeReport();
    bool make(const RecordSet &plates, bool separate, const QString &plateName, const QString &groupName);
    RecordSet savedRunPlates() const;
    std::optional<RecordSet> datedPlates();
    void ensureLogo() const;

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    Browser &mBrowser;
    RecordSet mPlates;
    QString mRunName;
    qint16 mReplicatesMode = 0;
};
