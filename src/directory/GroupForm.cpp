#include "directory/GroupForm.h"

#include "directory/DirectoryKind.h"

GroupForm::GroupForm(const ProgramFolder &folder, Prompt &prompt)
    : DirectoryForm(DirectoryKind::groups(), folder, prompt)
{
}
