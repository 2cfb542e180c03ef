#include "ui/frmAddEditTech.h"

#include "directory/CommandGuard.h"

#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

frmAddEditTech::frmAddEditTech(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : QDialog(parent), mPrompt(prompt), mForm(folder, prompt)
{
    setObjectName(QStringLiteral("frmAddEditTech"));
    setModal(true);

    txtTechName = new QLineEdit(this);
    txtTechName->setObjectName(QStringLiteral("txtTechName"));
    txtTechName->setMinimumWidth(260);
    txtTechName->installEventFilter(this);
    auto *form = new QFormLayout;
    auto *label = new QLabel(QStringLiteral("Technician Name:"), this);
    label->setBuddy(txtTechName);
    form->addRow(label, txtTechName);

    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true); // Enter in the box is OK; Escape is Cancel (reject)
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);
    connect(cmdOK, &QPushButton::clicked, this, &frmAddEditTech::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmAddEditTech::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
}

void frmAddEditTech::load()
{
    mForm.load();
    setWindowTitle(mForm.caption());
    txtTechName->setText(mForm.text());
    txtTechName->setFocus();
}

int frmAddEditTech::exec()
{
    load();
    return QDialog::exec();
}

void frmAddEditTech::cmdOK_Click()
{
    mForm.setText(txtTechName->text());
    bool closes = false;
    runGuarded(mPrompt, [this, &closes] { closes = mForm.ok(); });
    txtTechName->setText(mForm.text()); // shows what was trimmed
    if (closes)
        accept();
    else
        txtTechName->setFocus();
}

void frmAddEditTech::reject()
{
    mForm.cancel();
    QDialog::reject();
}

bool frmAddEditTech::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtTechName && event->type() == QEvent::FocusIn)
        // After the focus has settled, so that a mouse click doesn't undo the selection.
        QTimer::singleShot(0, txtTechName, &QLineEdit::selectAll);
    return QDialog::eventFilter(watched, event);
}
