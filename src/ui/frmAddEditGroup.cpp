#include "ui/frmAddEditGroup.h"

#include "directory/CommandGuard.h"

#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const char *const kLabels[GroupForm::kFieldCount] = {
    "Group Name:", "Name:", "Company:", "Address 1:", "Address 2:", "City:", "State:",
    "Zip:",        "Country:", "Phone:", "Fax:",     "Email:",     "Vet:",
};

} // namespace

frmAddEditGroup::frmAddEditGroup(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : QDialog(parent), mPrompt(prompt), mForm(folder, prompt)
{
    setObjectName(QStringLiteral("frmAddEditGroup"));
    setModal(true);

    auto *form = new QFormLayout;
    for (int i = 0; i < GroupForm::kFieldCount; ++i) {
        QLineEdit *box = new QLineEdit(this);
        box->setObjectName(QStringLiteral("txtGroupData_%1").arg(i));
        box->installEventFilter(this);
        txtGroupData[i] = box;
        auto *label = new QLabel(QString::fromLatin1(kLabels[i]), this);
        label->setBuddy(box);
        form->addRow(label, box);
    }
    txtGroupData[0]->setMinimumWidth(280);

    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true); // Enter in any box is OK; Escape is Cancel (reject)
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);
    connect(cmdOK, &QPushButton::clicked, this, &frmAddEditGroup::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmAddEditGroup::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
}

void frmAddEditGroup::load()
{
    mForm.load();
    setWindowTitle(mForm.caption());
    showFields();
    txtGroupData[0]->setFocus();
}

int frmAddEditGroup::exec()
{
    load();
    return QDialog::exec();
}

void frmAddEditGroup::showFields()
{
    for (int i = 0; i < GroupForm::kFieldCount; ++i)
        txtGroupData[i]->setText(mForm.field(i));
}

void frmAddEditGroup::takeFields()
{
    for (int i = 0; i < GroupForm::kFieldCount; ++i)
        mForm.setField(i, txtGroupData[i]->text());
}

void frmAddEditGroup::cmdOK_Click()
{
    takeFields();
    bool closes = false;
    runGuarded(mPrompt, [this, &closes] { closes = mForm.ok(); });
    showFields(); // the boxes show what was trimmed
    if (closes)
        accept();
    else
        txtGroupData[0]->setFocus();
}

void frmAddEditGroup::reject()
{
    mForm.cancel();
    QDialog::reject();
}

bool frmAddEditGroup::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        if (auto *box = qobject_cast<QLineEdit *>(watched))
            // After the focus has settled, so that a mouse click doesn't undo the selection.
            QTimer::singleShot(0, box, &QLineEdit::selectAll);
    }
    return QDialog::eventFilter(watched, event);
}
