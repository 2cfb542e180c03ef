#pragma once

#include "ui/frmDirectoryManagement.h"

// The modal list of technicians (lstTechNames); the form for one technician is
// frmAddEditTech.
class frmTechManagement : public frmDirectoryManagement {
    Q_OBJECT
public:
    frmTechManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);
};
