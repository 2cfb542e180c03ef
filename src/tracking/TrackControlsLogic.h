#pragma once

#include "tracking/ControlTracking.h"
#include "tracking/TrackingData.h"
#include "tracking/TrackingWorkbook.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

class Browser;
class Clock;
class ProgramFolder;
class Prompt;

// What the control report dialog (frmTrackControls) does, without a screen: its controls'
// state, the load, the chart options' check, and OK, which gathers the tracking data of the
// saved plates chosen and writes the tracking workbook. The dialog stays open after OK,
// whatever came of it; Cancel closes it.
class TrackControlsLogic {
public:
    static inline const QString kCaption = QStringLiteral("Generate Control Report");
    static inline const QString kAnyLot = QStringLiteral("Any Lot Number");
    static inline const QString kAnyTechnician = QStringLiteral("Any Technician");
    static inline const QString kChartWarning = QStringLiteral("Please select at least one chartable element.");
    static inline const QString kNoDataTitle = QStringLiteral("Specified Data Not Available");
    static inline const QString kNoDataText =
        QStringLiteral("There is no saved test data to report that fits this specification.");
    static inline const QString kBadDatesTitle = QStringLiteral("Date range is invalid.");
    static inline const QString kBadDatesText = QStringLiteral("The date range is invalid");
    static inline const QString kNoGuideSetTitle = QStringLiteral("No Guide Set");
    static inline const QString kNoGuideSetText =
        QStringLiteral("This test kit has no guide set, so its plates can't be judged by the Westgard rules. "
                       "The report is written without them.");

    // A combo box: its entries and the selected one (-1: none).
    struct Combo {
        QStringList items;
        int index = -1;
        QString text() const { return index >= 0 && index < items.size() ? items[index] : QString(); }
    };

    TrackControlsLogic(const ProgramFolder &folder, Prompt &prompt, Browser &browser, const Clock &clock,
                       TrackingWorkbook::WorkbookFactory newWorkbook = {});

    // The load: every kit but "Generic", the lots and technicians of the database, the
    // dates from the earliest plate read (1/1/2003 when none was) to today, the first
    // entry of each combo. Throws DatabaseError when the database can't be read.
    void load();

    // After a click on one of the four X-axis boxes: OK only with at least one ticked.
    void checkChartOptions();

    // cmdOK: gathers the data; with data, writes the workbook into the documents folder,
    // named after the test (and the lot and technician when chosen) and the time, opens it
    // and returns its file. Without, tells the user "Specified Data Not Available" (also after the box of
    // a bad date range or of a kit without a critical control) and returns an empty text.
    // With chkWestgard the workbook also holds the kit's guide-set lines and the rules each
    // plate broke; for a kit without a guide set the user is told and the report is the plain one.
    // Failures of the database, of a plate's data or of the file throw.
    QString ok();

    // The dates, the query and the statistics; ok false when there is nothing to report.
    TrackingData gatherTrackingData();

    TrackingChartOptions chartOptions() const;

    // The control state; the dialog shows it and writes the user's changes back.
    Combo tests;
    Combo lotNumbers;
    Combo technicians;
    std::array<QString, 2> monthRange, dayRange, yearRange; // 0 start, 1 end
    bool chkPlateName = true;
    bool chkRunName = false;
    bool chkDate = false;
    bool chkTime = false;
    bool chkStdDev = true;
    bool chkWestgard = false; // "Westgard rules"
    bool okEnabled = true;
    bool warningVisible = false;
    QString warningText;

private:
    std::optional<TrackingCriteria> criteria();
    void fillDates();
    void setDateBoxes(int index, const QDate &date);

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    Browser &mBrowser;
    const Clock &mClock;
    TrackingWorkbook::WorkbookFactory mNewWorkbook;
};
