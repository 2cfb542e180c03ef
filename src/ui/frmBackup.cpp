#include "ui/frmBackup.h"

#include "store/CompactDB.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

frmBackup::frmBackup(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : QDialog(parent), mCompact(std::make_unique<CompactDB>(folder, prompt)), Label1(new QLabel(this)),
      Timer1(new QTimer(this))
{
    setObjectName(QStringLiteral("frmBackup"));
    setWindowTitle(tr("Compact Database"));
    setModal(true);
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setText(kLabelText);
    Label1->setAlignment(Qt::AlignCenter);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    resize(300, 100);

    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setSingleShot(true);
    Timer1->setInterval(kTimerMs);
    connect(Timer1, &QTimer::timeout, this, &frmBackup::onTimer);
}

frmBackup::~frmBackup()
{
    restoreCursor();
}

bool frmBackup::runCompaction(QWidget *parent, const ProgramFolder &folder, Prompt &prompt)
{
    frmBackup form(folder, prompt, parent);
    form.exec();
    return form.succeeded();
}

void frmBackup::showEvent(QShowEvent *event)
{
    if (!event->spontaneous() && !mCursorSet) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        mCursorSet = true;
        Timer1->start();
    }
    QDialog::showEvent(event);
}

void frmBackup::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous())
        restoreCursor();
    QDialog::hideEvent(event);
}

void frmBackup::closeEvent(QCloseEvent *event)
{
    // The form goes when the work is done, not before.
    if (mWorking || Timer1->isActive())
        event->ignore();
    else
        QDialog::closeEvent(event);
}

void frmBackup::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        return;
    QDialog::keyPressEvent(event);
}

void frmBackup::restoreCursor()
{
    if (mCursorSet) {
        QApplication::restoreOverrideCursor();
        mCursorSet = false;
    }
}

void frmBackup::onTimer()
{
    Timer1->stop();
    mWorking = true;
    mSucceeded = mCompact->run();
    mWorking = false;
    accept();
}
