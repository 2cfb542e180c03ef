#include "directory/GroupManager.h"

#include "directory/DirectoryKind.h"

GroupManager::GroupManager(const ProgramFolder &folder, Prompt &prompt, FormOpener openForm)
    : DirectoryManager(DirectoryKind::groups(), folder, prompt, std::move(openForm))
{
}
