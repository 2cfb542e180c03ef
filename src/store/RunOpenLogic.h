#pragma once

#include "core/RecordSet.h"
#include "store/RunBrowser.h"

// The Open dialog (frmRunOpen) without its widgets: finds the run named in the run name box
// in the selected folder and reads its plates into a new plate record set.
class RunOpenLogic : public RunBrowser {
public:
    RunOpenLogic(const ProgramFolder &folder, Prompt &prompt);

    // Kept for symmetry with the Save As dialog; the plates opened replace it.
    void setPlatesRecord(const RecordSet &plates);
    // A deep copy of the plates of the run opened last.
    RecordSet getPlatesRecord() const;

    // cmdOpen: nothing happens without a folder or with a blank name; a run that isn't in
    // the folder is told in a box and the dialog stays. On success the plates are the
    // run's rows in the order they were saved, each with its screen state rebuilt from
    // what the read left (CurrentTest from TestName, CurrentReader from ReaderUsed,
    // CurrentFilter from FilterUsed when there is one), the cursor on the first; Close.
    CommandEnd open();

private:
    RecordSet mPlates;
};
