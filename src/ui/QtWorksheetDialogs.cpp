#include "ui/QtWorksheetDialogs.h"

#include "ui/frmAddEditGroup.h"
#include "ui/frmAddSamples.h"
#include "ui/frmGroupQuery.h"
#include "ui/frmPlatesEdit.h"
#include "ui/frmSetGroup.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/Workbench.h"

int QtWorksheetDialogs::execOver(QDialog &dialog)
{
    const int result = dialog.exec();
    Q_EMIT mWb.focusGridRequested();
    return result;
}

GroupQueryAnswer QtWorksheetDialogs::askNewGroup()
{
    frmGroupQuery form(mParent);
    execOver(form);
    return form.GetResult();
}

QString QtWorksheetDialogs::addGroupNamed(const QString &name)
{
    frmAddEditGroup form(mWb.folder(), mWb.prompt(), mParent);
    form.setOptionFlag(QStringLiteral("ADDNAME"));
    form.setGroupName(name);
    execOver(form);
    return form.getGroupName();
}

QString QtWorksheetDialogs::chooseGroup()
{
    frmSetGroup form(LayoutEditor(mWb).groupNames(true), mParent);
    execOver(form);
    return form.getGroupName();
}

AddSamplesRequest QtWorksheetDialogs::addSamples(int sampleMax)
{
    frmAddSamples form(mWb.prompt(), LayoutEditor(mWb).groupNames(false), mParent);
    form.setSampleMax(sampleMax);
    if (execOver(form) != QDialog::Accepted)
        return {};
    return form.request();
}

void QtWorksheetDialogs::editPlates(PlatesEditLogic &logic)
{
    frmPlatesEdit form(logic, mParent);
    execOver(form);
}
