#pragma once

#include "ui/frmDirectoryManagement.h"

// The modal list of client groups (lstGroupNames); the form for one group is
// frmAddEditGroup.
class frmGroupManagement : public frmDirectoryManagement {
    Q_OBJECT
public:
    frmGroupManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);
};
