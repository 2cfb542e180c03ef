#include "ui/frmAddEditTech.h"

#include "directory/DirectoryKind.h"

frmAddEditTech::frmAddEditTech(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : frmDirectoryEntry(
          DirectoryKind::technicians(),
          {QStringLiteral("frmAddEditTech"), {QStringLiteral("Technician Name:")}, {QStringLiteral("txtTechName")}},
          folder, prompt, parent)
{
}
