#include "ui/frmTechManagement.h"

#include "directory/DirectoryKind.h"
#include "ui/frmAddEditTech.h"

frmTechManagement::frmTechManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : frmDirectoryManagement(DirectoryKind::technicians(),
                             {QStringLiteral("frmTechManagement"), QStringLiteral("Technician Management"),
                              QStringLiteral("lstTechNames"), openerOf<frmAddEditTech>(this, folder, prompt)},
                             folder, prompt, parent)
{
}
