#pragma once

#include "directory/DirectoryManager.h"

// The work of frmTechManagement, the list of technicians (lstTechNames).
class TechManager : public DirectoryManager {
public:
    TechManager(const ProgramFolder &folder, Prompt &prompt, FormOpener openForm);

    // cmdDelete.
    void deleteTech() { deleteEntry(); }
};
