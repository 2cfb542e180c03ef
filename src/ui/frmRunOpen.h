#pragma once

#include "ui/frmRunBrowser.h"

class RunOpenLogic;

// The Open dialog: the run browser with cmdOpen ("Open").
class frmRunOpen : public frmRunBrowser {
    Q_OBJECT
public:
    explicit frmRunOpen(RunOpenLogic &logic, QWidget *parent = nullptr);

    RunOpenLogic &logic() { return mOpenLogic; }

private:
    RunOpenLogic &mOpenLogic;
};
