#pragma once

#include "core/RecordSet.h"
#include "core/ComboState.h"
#include "worksheet/PlateSheet.h"
#include "worksheet/clsUndoStack.h"

#include <QObject>
#include <QString>

#include <array>
#include <memory>

class Clipboard;
class Clock;
class DbConnection;
class WorksheetDialogs;
class ProgramFolder;
class Prompt;
class RunDialogs;
class clsTests;
struct PlateEvaluation;
struct PlateInput;

// The panel beside the sheets: counts of the controls against the kit's needs, and the
// marks ("greencheck", "bluecheck", "xmark", "nomark"). The four tabs show the same panel.
struct TestPanel {
    QString pcCurrent, pcRequired, pcRecommended;
    QString ncCurrent, ncRequired, ncRecommended;
    QString auxCurrent, auxRequired, auxRecommended;
    QString filterCurrent, filterRequired;
    QString pcMark = QStringLiteral("nomark");
    QString ncMark = QStringLiteral("nomark");
    QString auxMark = QStringLiteral("nomark");
    QString filterMark = QStringLiteral("nomark");
};

// The labels of the plate on screen (Info view and the head of the sheets).
struct PlateInfoLabels {
    QString plateName, runName, testName, lotNumber, expDate, readTime, readDate, filterUsed;
};

// The light that tells whether the database wants compacting.
struct CompactLight {
    bool yellow = false;
    QString toolTip;
};

// The work in hand of the main window: the plates of the open run (mPlates, its cursor on
// the plate on screen), that plate's sheets, raw ODs and inclusion flags, the undo stack,
// the combo boxes' contents, the status bar, the panel and the validation texts, and the
// dirty flag. Every command of the main window is a method here; the window only shows
// this state and forwards the user's gestures.
class Workbench : public QObject {
    Q_OBJECT
public:
    enum Combo { Tests, Readers, Filters, Technicians, Plates };
    static constexpr int kComboCount = 5;
    static inline const QString kVersion = QStringLiteral("1.5.4");
    static inline const QString kCaption = QStringLiteral("Qorn Tavimetra 1.5.4");
    static inline const QString kNoTechnician = QStringLiteral("<No Technician Selected>");
    static inline const QString kNoRunName = QStringLiteral("No Name");

    Workbench(const ProgramFolder &folder, Prompt &prompt, Clock &clock, RunDialogs &runDialogs,
              QObject *parent = nullptr);
    ~Workbench() override;

    // The main window's load: combos, a new run of one plate, panel, status bar. Throws
    // when the database can't be read; the program can't start then.
    void load();

    // Commands of the File menu. fileExit/queryUnload returns false when the user cancelled.
    void fileNew();
    void fileOpen();
    void fileSave();
    void fileSaveAs();
    bool queryUnload();

    // Combo boxes. selectComboIndex runs the box's click handler when the selection changes,
    // whether the user or the program changed it.
    const ComboState &combo(Combo which) const { return mCombos[which]; }
    void selectComboIndex(Combo which, int index);

    // The plate record and the screen.
    void storePlateRecord();
    void loadPlateRecord();
    void showPlateInfo();
    void selectPlateTechnician();
    void showRunStatus();
    void refreshTestPanel(const QString &testName);
    // Evaluates the plate again when it was read and validated before; otherwise empties the
    // validation boxes.
    void refreshEvaluation();
    // The plate on screen as the evaluation sees it.
    PlateInput plateInput() const;
    // Evaluates the plate on screen and shows the outcome; true when it passed. An error of
    // the evaluation is thrown after the outcome until then is shown.
    bool evaluatePlate();
    // Shows an evaluation of the plate made from the input: stamps, flags, ODs, results,
    // validation texts, then its messages in order, then its error if it stopped on one.
    void applyEvaluation(const PlateInput &input, const PlateEvaluation &evaluation);

    // Plate list: Delete Plate, Edit Plates / Add Plates (through the plate list dialog).
    void deletePlate();
    void editPlates(bool addMode);

    // The popup menu's Exclude Control / Include Control on a well, and Recheck Controls.
    void excludeControl(int row, int col);
    void includeControl(int row, int col);
    void reCheckControls();
    // The tool tip of a well: its sample, group, OD and result.
    QString wellToolTip(int row, int col) const;

    // Refills the lists that other windows change (readers and filters, technicians).
    void fillReaders();
    void fillFilters();
    void fillTechnicians();
    void fillPlates();

    // Counting saves for the compaction light.
    void noteDatabaseChanges();
    void showCompactLight(bool mayPopup);

    // State.
    PlateSheet &sheet() { return mSheet; }
    const PlateSheet &sheet() const { return mSheet; }
    RecordSet &plates() { return mPlates; }
    const RecordSet &plates() const { return mPlates; }
    clsUndoStack &undoStack() { return mUndoStack; }
    clsTests &tests() { return *mTests; }
    WorksheetDialogs &worksheetDialogs() { return *mWorksheetDialogs; }
    void setWorksheetDialogs(WorksheetDialogs &dialogs) { mWorksheetDialogs = &dialogs; }
    Clipboard &clipboard() { return *mClipboard; }
    void setClipboard(Clipboard &clipboard) { mClipboard = &clipboard; }
    Prompt &prompt() { return mPrompt; }
    Clock &clock() { return mClock; }
    const ProgramFolder &folder() const { return mFolder; }
    DbConnection openDatabase() const;

    bool isDirty() const { return mDirty; }
    void setDirty(bool dirty);
    bool undoEnabled() const { return mUndoEnabled; }
    void setUndoEnabled(bool enabled);
    bool setGroupEnabled() const { return mSetGroupEnabled; }

    // Status bar panels 1 to 4: "Plate: ...", the date, "Test: ...", "Run: ...".
    QString statusPanel(int panel) const { return mStatus.at(panel - 1); }
    void setStatusPanel(int panel, const QString &text);
    // The run's name: the fourth panel from its sixth character on.
    QString runName() const { return mStatus[3].mid(5); }

    // The message area of the status bar: what was last written for the user, and where.
    enum class WrittenFile { Report, Workbook, Backup, PlateMap };
    void noteFileWritten(WrittenFile what, const QString &path);
    // A notice of its own wording, such as what an export wrote.
    void showNotice(const QString &text)
    {
        mNotice = text;
        Q_EMIT noticeChanged();
    }
    QString notice() const { return mNotice; }

    const PlateInfoLabels &plateInfo() const { return mPlateInfo; }
    const TestPanel &testPanel() const { return mPanel; }
    const CompactLight &compactLight() const { return mCompactLight; }

    // Validation text boxes: 0 to 3 beside the sheets, 4 on the Info view.
    QString validationText(int box) const { return mValidation.at(box); }
    void setValidationText(int box, const QString &text);
    // Writes the same text into boxes 0 to 3.
    void setValidationBoxes(const QString &text);
    // The quality-control line of a read plate whose kit has a guide set (empty otherwise),
    // and its tool tip; set after each evaluation, cleared with the validation boxes.
    QString qcLine() const { return mQcLine; }
    QString qcToolTip() const { return mQcToolTip; }

    // The kit version of the plate on screen (its LastVersionValidated).
    QString plateVersion() const;

signals:
    void combosChanged();
    void statusChanged();
    void plateInfoChanged();
    void panelChanged();
    void validationChanged();
    void dirtyChanged(bool dirty);
    void undoEnabledChanged(bool enabled);
    void compactLightChanged();
    void noticeChanged();
    // The notice beside the light: "Compacting the database is recommended. ..."
    void compactNoticeRequested();
    // The grid of the current tab should take the focus / the tab should change.
    void focusGridRequested();
    void tabRequested(int tab);

private:
    void fillTests();
    void selectLastReader();
    void selectLastFilter();
    void selectDefaultFilter();
    void resetWellArrays();
    int defaultFilterIndex() const;

    void onTestsClick();
    void onReadersClick();
    void onFiltersClick();
    void onTechniciansClick();
    void onPlatesClick();

    // Asks "Save Changes?"; returns false when the command is to stop.
    bool offerToSave();
    void newRunState();

    // The connection of one step of the work: the one load() holds while it runs, or else
    // one of the step's own.
    class StepConnection;
    // Held by load(): each new connection reads the database's schema again, and the fills
    // and selections of a start would open a dozen.
    std::unique_ptr<DbConnection> mLoadConnection;

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    Clock &mClock;
    RunDialogs &mRunDialogs;
    clsTests *mTests;
    WorksheetDialogs *mWorksheetDialogs;
    Clipboard *mClipboard;
    std::unique_ptr<Clipboard> mOwnClipboard;

    RecordSet mPlates;
    PlateSheet mSheet;
    clsUndoStack mUndoStack;
    std::array<ComboState, kComboCount> mCombos;
    std::array<QString, 4> mStatus;
    QString mNotice;
    std::array<QString, 5> mValidation;
    QString mQcLine;
    QString mQcToolTip;
    void refreshQcLine();
    PlateInfoLabels mPlateInfo;
    TestPanel mPanel;
    CompactLight mCompactLight;
    bool mDirty = false;
    bool mUndoEnabled = false;
    bool mSetGroupEnabled = true;
};
