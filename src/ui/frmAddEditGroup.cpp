#include "ui/frmAddEditGroup.h"

#include "directory/DirectoryKind.h"

namespace {

frmDirectoryEntry::Mode groupMode()
{
    frmDirectoryEntry::Mode mode{QStringLiteral("frmAddEditGroup"),
                                 {QStringLiteral("Group Name:"), QStringLiteral("Name:"), QStringLiteral("Company:"),
                                  QStringLiteral("Address 1:"), QStringLiteral("Address 2:"), QStringLiteral("City:"),
                                  QStringLiteral("State:"), QStringLiteral("Zip:"), QStringLiteral("Country:"),
                                  QStringLiteral("Phone:"), QStringLiteral("Fax:"), QStringLiteral("Email:"),
                                  QStringLiteral("Vet:")},
                                 {}};
    for (int i = 0; i < mode.labels.size(); ++i)
        mode.boxNames << QStringLiteral("txtGroupData_%1").arg(i);
    return mode;
}

} // namespace

frmAddEditGroup::frmAddEditGroup(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : frmDirectoryEntry(DirectoryKind::groups(), groupMode(), folder, prompt, parent)
{
}
