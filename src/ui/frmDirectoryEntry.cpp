#include "ui/frmDirectoryEntry.h"

#include "directory/CommandGuard.h"

#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

frmDirectoryEntry::frmDirectoryEntry(const DirectoryKind &kind, const Mode &mode, const ProgramFolder &folder,
                                     Prompt &prompt, QWidget *parent)
    : QDialog(parent), mForm(kind, folder, prompt), mPrompt(prompt)
{
    setObjectName(mode.objectName);
    setModal(true);

    auto *form = new QFormLayout;
    for (int i = 0; i < mForm.fieldCount(); ++i) {
        QLineEdit *box = new QLineEdit(this);
        box->setObjectName(mode.boxNames.value(i));
        box->installEventFilter(this);
        mBoxes << box;
        auto *label = new QLabel(mode.labels.value(i), this);
        label->setBuddy(box);
        form->addRow(label, box);
    }
    mBoxes[0]->setMinimumWidth(280);

    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true); // Enter in any box is OK; Escape is Cancel (reject)
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);
    connect(cmdOK, &QPushButton::clicked, this, &frmDirectoryEntry::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmDirectoryEntry::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
}

void frmDirectoryEntry::load()
{
    mForm.load();
    setWindowTitle(mForm.caption());
    showFields();
    mBoxes[0]->setFocus();
}

int frmDirectoryEntry::exec()
{
    load();
    return QDialog::exec();
}

void frmDirectoryEntry::showFields()
{
    for (int i = 0; i < mForm.fieldCount(); ++i)
        mBoxes[i]->setText(mForm.field(i));
}

void frmDirectoryEntry::takeFields()
{
    for (int i = 0; i < mForm.fieldCount(); ++i)
        mForm.setField(i, mBoxes[i]->text());
}

void frmDirectoryEntry::cmdOK_Click()
{
    takeFields();
    bool closes = false;
    runGuarded(mPrompt, [this, &closes] { closes = mForm.ok(); });
    showFields(); // the boxes show what was trimmed
    if (closes)
        accept();
    else
        mBoxes[0]->setFocus();
}

void frmDirectoryEntry::reject()
{
    mForm.cancel();
    QDialog::reject();
}

bool frmDirectoryEntry::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        if (auto *box = qobject_cast<QLineEdit *>(watched))
            // After the focus has settled, so that a mouse click doesn't undo the selection.
            QTimer::singleShot(0, box, &QLineEdit::selectAll);
    }
    return QDialog::eventFilter(watched, event);
}
