#pragma once

#include "ui/frmDirectoryEntry.h"

// The modal form for one technician's name (txtTechName).
class frmAddEditTech : public frmDirectoryEntry {
    Q_OBJECT
public:
    frmAddEditTech(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);

    void setTechName(const QString &name) { mForm.setName(name); }
    QString getTechName() const { return mForm.getName(); }
};
