#include "ui/frmAddSamples.h"

#include "worksheet/LayoutEditor.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

frmAddSamples::frmAddSamples(Prompt &prompt, const QStringList &groupNames, QWidget *parent)
    : QDialog(parent), mPrompt(prompt)
{
    setObjectName(QStringLiteral("frmAddSamples"));
    setWindowTitle(QStringLiteral("Add Samples"));
    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout();
    txtSampleName = new QLineEdit(this);
    txtSampleName->setObjectName(QStringLiteral("txtSampleName"));
    txtSampleName->setMaxLength(LayoutEditor::kMaxCellText - 5);
    cboGroupNames = new QComboBox(this);
    cboGroupNames->setObjectName(QStringLiteral("cboGroupNames"));
    cboGroupNames->addItem(QStringLiteral("(No Group)"));
    cboGroupNames->addItems(groupNames);
    cboNumberOfSamples = new QComboBox(this);
    cboNumberOfSamples->setObjectName(QStringLiteral("cboNumberOfSamples"));
    txtStartingNumber = new QLineEdit(QStringLiteral("1"), this);
    txtStartingNumber->setObjectName(QStringLiteral("txtStartingNumber"));
    txtStartingNumber->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d{0,6}")), this));
    form->addRow(QStringLiteral("Sample name:"), txtSampleName);
    form->addRow(QStringLiteral("Group:"), cboGroupNames);
    form->addRow(QStringLiteral("Number of samples:"), cboNumberOfSamples);
    form->addRow(QStringLiteral("Starting number:"), txtStartingNumber);
    layout->addLayout(form);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmAddSamples::cmdOK_Click);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

void frmAddSamples::setSampleMax(int n)
{
    cboNumberOfSamples->clear();
    for (int i = 1; i <= n; ++i)
        cboNumberOfSamples->addItem(QString::number(i));
    cboNumberOfSamples->setCurrentIndex(0);
}

void frmAddSamples::cmdOK_Click()
{
    mRequest =
        LayoutEditor::acceptAddSamples(mPrompt, txtSampleName->text(), cboGroupNames->currentText(),
                                       cboNumberOfSamples->currentText().toInt(), txtStartingNumber->text().toInt());
    if (mRequest.ok)
        accept();
}
