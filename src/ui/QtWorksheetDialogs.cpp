#include "ui/QtWorksheetDialogs.h"

#include "ui/frmAddEditGroup.h"
#include "ui/frmAddSamples.h"
#include "ui/frmGroupQuery.h"
#include "ui/frmPlatesEdit.h"
#include "ui/frmSetGroup.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/Workbench.h"

GroupQueryAnswer QtWorksheetDialogs::askNewGroup()
{
    frmGroupQuery form(mParent);
    form.exec();
    return form.GetResult();
}

QString QtWorksheetDialogs::addGroupNamed(const QString &name)
{
    frmAddEditGroup form(mWb.folder(), mWb.prompt(), mParent);
    form.setOptionFlag(QStringLiteral("ADDNAME"));
    form.setGroupName(name);
    form.exec();
    return form.getGroupName();
}

QString QtWorksheetDialogs::chooseGroup()
{
    frmSetGroup form(LayoutEditor(mWb).groupNames(true), mParent);
    form.exec();
    return form.getGroupName();
}

AddSamplesRequest QtWorksheetDialogs::addSamples(int sampleMax)
{
    frmAddSamples form(mWb.prompt(), LayoutEditor(mWb).groupNames(false), mParent);
    form.setSampleMax(sampleMax);
    if (form.exec() != QDialog::Accepted)
        return {};
    return form.request();
}

void QtWorksheetDialogs::editPlates(PlatesEditLogic &logic)
{
    frmPlatesEdit form(logic, mParent);
    form.exec();
}
