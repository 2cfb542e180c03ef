#pragma once

#include "core/RecordSet.h"

#include <QString>

// The run dialogs as the main window's commands see them: the Save As dialog (which also
// performs the plain save of a known run) and the Open dialog. Each keeps its last answer,
// as a dialog object that lives as long as the program does.
class RunDialogs {
public:
    virtual ~RunDialogs() = default;

    // Save As: hand over the plates, show the dialog modally, read the outcome.
    virtual void setPlatesRecord(const RecordSet &plates) = 0;
    virtual void showSaveAs() = 0;
    // Saves the plates handed over into their known run, without showing anything.
    virtual void simpleSave() = 0;
    // After a plain save that was not made: whether the user chose to save as a new run
    // instead (the run had been saved on another workstation meanwhile).
    virtual bool saveAsNewRequested() const { return false; }
    virtual bool saveAsUserOk() const = 0;
    virtual RecordSet saveAsPlatesRecord() const = 0;
    virtual QString saveAsRunName() const = 0;

    // Open: show the dialog modally, read the outcome.
    virtual void showOpen() = 0;
    virtual bool openUserOk() const = 0;
    virtual RecordSet openPlatesRecord() const = 0;
    virtual QString openRunName() const = 0;
};
