#include "ui/frmGroupManagement.h"

#include "directory/DirectoryKind.h"
#include "ui/frmAddEditGroup.h"

frmGroupManagement::frmGroupManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : frmDirectoryManagement(DirectoryKind::groups(),
                             {QStringLiteral("frmGroupManagement"), QStringLiteral("Group Management"),
                              QStringLiteral("lstGroupNames"), openerOf<frmAddEditGroup>(this, folder, prompt)},
                             folder, prompt, parent)
{
}
