#pragma once

#include "directory/DirectoryForm.h"
#include "directory/GroupDirectory.h"

// The work of frmAddEditGroup: a group's name and contact data (boxes txtGroupData 0 to
// 12, in the order of GroupDirectory::columns()).
class GroupForm : public DirectoryForm {
public:
    static constexpr int kFieldCount = GroupDirectory::kFieldCount;

    GroupForm(const ProgramFolder &folder, Prompt &prompt);

    void setGroupName(const QString &name) { setName(name); }
    QString getGroupName() const { return getName(); }
};
