#pragma once

#include "directory/DirectoryManager.h"

// The work of frmGroupManagement, the list of client groups (lstGroupNames).
class GroupManager : public DirectoryManager {
public:
    GroupManager(const ProgramFolder &folder, Prompt &prompt, FormOpener openForm);

    // cmdDelete.
    void deleteGroup() { deleteEntry(); }
};
