#include "ui/frmSetGroup.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

frmSetGroup::frmSetGroup(const QStringList &groupNames, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSetGroup"));
    setWindowTitle(QStringLiteral("Set Group"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Choose a group:"), this));
    cboGroups = new QComboBox(this);
    cboGroups->setObjectName(QStringLiteral("cboGroups"));
    cboGroups->addItems(groupNames);
    layout->addWidget(cboGroups);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Ok)->setEnabled(!groupNames.isEmpty());
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        mChosen = cboGroups->currentText();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}
