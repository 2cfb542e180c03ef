#include "ui/frmGroupManagement.h"

#include "directory/DirectoryKind.h"
#include "ui/frmAddEditGroup.h"

frmGroupManagement::frmGroupManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : frmDirectoryManagement(DirectoryKind::groups(),
                             {QStringLiteral("frmGroupManagement"), QStringLiteral("Group Management"),
                              QStringLiteral("lstGroupNames"),
                              [this, &folder, &prompt](const QString &flag, const QString &name) {
                                  frmAddEditGroup form(folder, prompt, this);
                                  form.setOptionFlag(flag);
                                  form.setGroupName(name);
                                  form.exec();
                                  return form.getGroupName();
                              }},
                             folder, prompt, parent)
{
}
