// The plate list of the run and the commands on single wells of the plate on screen.
#include "worksheet/Workbench.h"

#include "platform/Prompt.h"
#include "worksheet/PlatesEditLogic.h"
#include "worksheet/WorksheetDialogs.h"

void Workbench::deletePlate()
{
    if (mPlates.recordCount() == 1) {
        mPrompt.message(QStringLiteral("Plate cannot be deleted.  A run must consist of at least one plate."),
                        QStringLiteral("At Least One Plate Required"), MsgIcon::Exclamation);
        return;
    }
    const QString name = combo(Plates).text();
    if (mPrompt.ask(QStringLiteral("Are you sure you want to delete plate '") + name + QStringLiteral("'?"),
                    QStringLiteral("Delete Plate?"), MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    if (mPlates.findFirst(u"PlateName", name))
        mPlates.deleteCurrent();
    setDirty(true);
    fillPlates();
    loadPlateRecord();
    selectComboIndex(Plates, 0);
}

void Workbench::editPlates(bool addMode)
{
    storePlateRecord();
    PlatesEditLogic dialog(mPrompt);
    dialog.setPlatesRecord(mPlates);
    dialog.setSelectedPlate(combo(Plates).text());
    if (addMode)
        dialog.setAddFlag();
    mWorksheetDialogs->editPlates(dialog);
    if (!dialog.getUserOk()) {
        Q_EMIT focusGridRequested();
        return;
    }
    setDirty(true);
    mPlates = dialog.getPlatesRecord();
    fillPlates();
    const QString selected = dialog.getSelectedPlate();
    mPlates.findFirst(u"PlateName", selected);
    loadPlateRecord();
    selectComboIndex(Plates, combo(Plates).findText(selected));
    Q_EMIT focusGridRequested();
}

void Workbench::excludeControl(int row, int col)
{
    setDirty(true);
    mSheet.setInclusionFlag(row, col, 0);
    refreshTestPanel(combo(Tests).text());
    refreshEvaluation();
}

void Workbench::includeControl(int row, int col)
{
    setDirty(true);
    mSheet.setInclusionFlag(row, col, 2);
    refreshTestPanel(combo(Tests).text());
    refreshEvaluation();
}

void Workbench::reCheckControls()
{
    if (plateVersion().isEmpty())
        return;
    for (int k = 0; k < wells::kCount; ++k)
        mSheet.setInclusionFlagAt(k, 1);
    refreshEvaluation();
}

QString Workbench::wellToolTip(int row, int col) const
{
    if (!wells::valid(row, col))
        return QString();
    return QStringLiteral("Sample: ") + mSheet.text(PlateSheet::Samples, row, col) + QStringLiteral(", ") +
           QStringLiteral("Group: ") + mSheet.text(PlateSheet::Groups, row, col) + QStringLiteral(", ") +
           QStringLiteral("Optical Density: ") + mSheet.text(PlateSheet::ODs, row, col) + QStringLiteral(", ") +
           QStringLiteral("Result: ") + mSheet.text(PlateSheet::Results, row, col);
}
