#pragma once

#include "ui/frmDirectoryEntry.h"

// The modal form for one group: its name and contact data in txtGroupData_0 to _12.
class frmAddEditGroup : public frmDirectoryEntry {
    Q_OBJECT
public:
    frmAddEditGroup(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);

    void setGroupName(const QString &name) { mForm.setName(name); }
    QString getGroupName() const { return mForm.getName(); }
};
