#include "ui/QtRunDialogs.h"

#include "ui/frmRunOpen.h"
#include "ui/frmRunSaveAs.h"

#include <QInputDialog>
#include <QLineEdit>

QtRunDialogs::QtRunDialogs(const ProgramFolder &folder, Prompt &prompt, QWidget *parentWindow)
    : mSaveAs(folder, prompt), mOpen(folder, prompt), mParentWindow(parentWindow)
{
    mSaveAs.setReasonAsker([this](const QStringList &plates) -> std::optional<QString> {
        bool ok = false;
        const QString reason = QInputDialog::getText(
            mParentWindow, RunSaveAsLogic::kReasonTitle,
            QStringLiteral("These plates were read and passed, and this save changes their ODs, flags or results:\n") +
                plates.join(QStringLiteral(", ")) + QStringLiteral("\n\nThe reason for the change:"),
            QLineEdit::Normal, QString(), &ok);
        return ok ? std::optional<QString>(reason) : std::nullopt;
    });
}

QtRunDialogs::~QtRunDialogs()
{
    delete mSaveAsDialog.data();
    delete mOpenDialog.data();
}

void QtRunDialogs::setParentWindow(QWidget *parentWindow)
{
    mParentWindow = parentWindow;
    for (QDialog *dialog : {static_cast<QDialog *>(mSaveAsDialog.data()), static_cast<QDialog *>(mOpenDialog.data())}) {
        if (dialog)
            dialog->setParent(parentWindow, dialog->windowFlags());
    }
}

frmRunSaveAs *QtRunDialogs::saveAsDialog()
{
    if (!mSaveAsDialog)
        mSaveAsDialog = new frmRunSaveAs(mSaveAs, mParentWindow);
    return mSaveAsDialog;
}

frmRunOpen *QtRunDialogs::openDialog()
{
    if (!mOpenDialog)
        mOpenDialog = new frmRunOpen(mOpen, mParentWindow);
    return mOpenDialog;
}

void QtRunDialogs::setPlatesRecord(const RecordSet &plates)
{
    mSaveAs.setPlatesRecord(plates);
}

void QtRunDialogs::showSaveAs()
{
    saveAsDialog()->exec();
}

void QtRunDialogs::simpleSave()
{
    mSaveAs.simpleSave();
}

bool QtRunDialogs::saveAsNewRequested() const
{
    return mSaveAs.saveAsNewRequested();
}

bool QtRunDialogs::saveAsUserOk() const
{
    return mSaveAs.getUserOk();
}

RecordSet QtRunDialogs::saveAsPlatesRecord() const
{
    return mSaveAs.getPlatesRecord();
}

QString QtRunDialogs::saveAsRunName() const
{
    return mSaveAs.getRunName();
}

void QtRunDialogs::showOpen()
{
    openDialog()->exec();
}

bool QtRunDialogs::openUserOk() const
{
    return mOpen.getUserOk();
}

RecordSet QtRunDialogs::openPlatesRecord() const
{
    return mOpen.getPlatesRecord();
}

QString QtRunDialogs::openRunName() const
{
    return mOpen.getRunName();
}
