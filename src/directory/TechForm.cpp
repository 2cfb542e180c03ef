#include "directory/TechForm.h"

#include "directory/DirectoryKind.h"

TechForm::TechForm(const ProgramFolder &folder, Prompt &prompt)
    : DirectoryForm(DirectoryKind::technicians(), folder, prompt)
{
}
