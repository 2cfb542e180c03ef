#pragma once

#include "core/RecordSet.h"
#include "store/RunBrowser.h"

#include <functional>
#include <optional>

// The Save As dialog (frmRunSaveAs) without its widgets, and the plain save of a run that
// is in the database already. These are the only writers of plate rows: a save deletes
// every row of the run and inserts the plates of the record set again.
//
// Each save is one transaction (the overwritten run going, the Runs row, the delete of the
// former rows, every insert): a failure anywhere leaves the database as it was, the
// dialog's plates as they were, getUserOk() false, and a critical box "Run Not Saved".
class RunSaveAsLogic : public RunBrowser {
public:
    // Called inside a save's transaction: with 0 once the run's former rows are gone, then
    // with the count of plate rows written after each one. Whatever it throws fails the
    // save like a failure of the database.
    using SaveProgress = std::function<void(int platesWritten)>;

    // Asks the user why plates that were read and passed change (their names given);
    // nothing when the user cancels.
    using ReasonAsker = std::function<std::optional<QString>(const QStringList &plateNames)>;
    static inline const QString kReasonTitle = QStringLiteral("Reason for the Change");
    static inline const QString kNoReasonText =
        QStringLiteral("The run was not saved: the laboratory asks for a reason when the ODs, flags or results "
                       "of a plate that was read and passed change.");

    static inline const QString kNotSavedTitle = QStringLiteral("Run Not Saved");
    static inline const QString kNotSavedText =
        QStringLiteral("The run was not saved. Nothing in the database was changed by this save.");

    static inline const QString kChangedElsewhereTitle = QStringLiteral("Run Changed on Another Workstation");
    static inline const QString kChangedElsewhereText =
        QStringLiteral("This run was saved on another workstation after you opened it.  Saving now would "
                       "overwrite that work.") +
        QStringLiteral("\r\n\r\n") +
        QStringLiteral("Yes: save your work as a new run.\r\nNo: overwrite the run with your work.\r\n"
                       "Cancel: do not save.");
    static inline const QString kRunGoneText =
        QStringLiteral("The run no longer exists in the database: it was deleted on another workstation. "
                       "Use Save As to save it again.");

    RunSaveAsLogic(const ProgramFolder &folder, Prompt &prompt);

    // Keeps a deep copy of the plates to save.
    void setPlatesRecord(const RecordSet &plates);
    // A deep copy of the plates, with the run id the last save gave them.
    RecordSet getPlatesRecord() const;

    // cmdSave: saves the plates as the run named in the run name box, in the selected
    // folder. A blank name only asks for the focus; no folder is told in a box; a name in
    // use in the folder asks whether to overwrite it. The run keeps its id unless that id
    // belongs to a saved run already (Save As of a saved run): then the plates get a new
    // id and the former run stays as it is. Close on success.
    CommandEnd save();

    // Rewrites the rows of the plates' run, which is in the database already. True on
    // success; false after the box that says the run was not saved. On a server, a run
    // saved on another workstation since this one opened it is not overwritten silently:
    // a box offers to save as a new run (false, and saveAsNewRequested()), to overwrite,
    // or to cancel (false).
    bool simpleSave();
    bool saveAsNewRequested() const { return mSaveAsNewRequested; }

    void setSaveProgress(SaveProgress progress) { mProgress = std::move(progress); }
    // Without an asker such a save is refused when the laboratory asks for a reason.
    void setReasonAsker(ReasonAsker asker) { mReasonAsker = std::move(asker); }

private:
    // The run id of the plates: that of the current record (of the first at EOF); none
    // when the set is empty or the id is not a number.
    static std::optional<qint64> runIDOf(const RecordSet &plates);
    // Writes the id to every plate; the cursor stays on the same plate.
    static void setRunIDOfPlates(RecordSet &plates, qint64 runID);

    void reportNotSaved(const std::exception &error);

    RecordSet mPlates;
    SaveProgress mProgress;
    ReasonAsker mReasonAsker;
    bool mSaveAsNewRequested = false;
};
