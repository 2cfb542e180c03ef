#include "ui/frmTechManagement.h"

#include "directory/DirectoryKind.h"
#include "ui/frmAddEditTech.h"

frmTechManagement::frmTechManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : frmDirectoryManagement(DirectoryKind::technicians(),
                             {QStringLiteral("frmTechManagement"), QStringLiteral("Technician Management"),
                              QStringLiteral("lstTechNames"),
                              [this, &folder, &prompt](const QString &flag, const QString &name) {
                                  frmAddEditTech form(folder, prompt, this);
                                  form.setOptionFlag(flag);
                                  form.setTechName(name);
                                  form.exec();
                                  return form.getTechName();
                              }},
                             folder, prompt, parent)
{
}
