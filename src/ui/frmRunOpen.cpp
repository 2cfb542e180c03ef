#include "ui/frmRunOpen.h"

#include "store/RunOpenLogic.h"

frmRunOpen::frmRunOpen(RunOpenLogic &logic, QWidget *parent)
    : frmRunBrowser(logic,
                    {QStringLiteral("frmRunOpen"), tr("Open Run"), QStringLiteral("cmdOpen"), tr("Open"),
                     [&logic] { return logic.open(); }},
                    parent),
      mOpenLogic(logic)
{
}
