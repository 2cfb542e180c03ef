#include "directory/TechManager.h"

#include "directory/DirectoryKind.h"

TechManager::TechManager(const ProgramFolder &folder, Prompt &prompt, FormOpener openForm)
    : DirectoryManager(DirectoryKind::technicians(), folder, prompt, std::move(openForm))
{
}
