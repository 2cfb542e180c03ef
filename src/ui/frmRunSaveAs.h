#pragma once

#include "ui/frmRunBrowser.h"

class RunSaveAsLogic;

// The Save As dialog: the run browser with cmdSave ("Save").
class frmRunSaveAs : public frmRunBrowser {
    Q_OBJECT
public:
    explicit frmRunSaveAs(RunSaveAsLogic &logic, QWidget *parent = nullptr);

    RunSaveAsLogic &logic() { return mSaveAsLogic; }

private:
    RunSaveAsLogic &mSaveAsLogic;
};
