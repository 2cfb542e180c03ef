#include "ui/frmRunSaveAs.h"

#include "store/RunSaveAsLogic.h"

frmRunSaveAs::frmRunSaveAs(RunSaveAsLogic &logic, QWidget *parent)
    : frmRunBrowser(logic,
                    {QStringLiteral("frmRunSaveAs"), tr("Save Run As"), QStringLiteral("cmdSave"), tr("Save"),
                     [&logic] { return logic.save(); }},
                    parent),
      mSaveAsLogic(logic)
{
}
