#pragma once

#include "directory/DirectoryForm.h"

// The work of frmAddEditTech: one technician's name (txtTechName).
class TechForm : public DirectoryForm {
public:
    TechForm(const ProgramFolder &folder, Prompt &prompt);

    void setTechName(const QString &name) { setName(name); }
    QString getTechName() const { return getName(); }
    // txtTechName.
    QString text() const { return field(0); }
    void setText(const QString &text) { setField(0, text); }
};
