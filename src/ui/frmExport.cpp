#include "ui/frmExport.h"

#include "ui/FormParts.h"
#include "ui/PlateChoice.h"

#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "worksheet/Workbench.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr std::array<ResultExport::Format, 4> kFormats{ResultExport::Format::Csv, ResultExport::Format::CsvSemicolon,
                                                       ResultExport::Format::Json, ResultExport::Format::Hl7};

} // namespace

frmExport::frmExport(const ProgramFolder &folder, Prompt &prompt, Browser &browser, QWidget *parent)
    : QDialog(parent), mLogic(folder, prompt, browser), mPrompt(prompt)
{
    setObjectName(QStringLiteral("frmExport"));
    setWindowTitle(ResultExport::kCaption);
    setModal(true);
    buildUi();
}

void frmExport::buildUi()
{
    mChoice = new PlateChoice(mLogic.selection(), QStringLiteral("Export By:"), nullptr, this);
    // The file's default name follows the choice.
    connect(mChoice, &PlateChoice::changed, this, &frmExport::showState);

    auto *formatBox = new QGroupBox(QStringLiteral("Format"), this);
    auto *formatLayout = new QVBoxLayout(formatBox);
    auto *formatButtons = new QButtonGroup(formatBox);
    for (int i = 0; i < int(kFormats.size()); ++i) {
        optFormat[i] = FormParts::radio(ResultExport::caption(kFormats[i]), QStringLiteral("optFormat"), i, formatBox);
        formatButtons->addButton(optFormat[i], i);
        formatLayout->addWidget(optFormat[i]);
        connect(optFormat[i], &QRadioButton::clicked, this, [this, i] {
            mLogic.format = kFormats[i];
            showState();
        });
    }
    chkControls = new QCheckBox(QStringLiteral("Export the controls too, marked as controls (QC)"), formatBox);
    chkControls->setObjectName(QStringLiteral("chkControls"));
    formatLayout->addWidget(chkControls);
    formatLayout->addStretch(1);
    connect(chkControls, &QCheckBox::toggled, this, [this](bool on) { mLogic.withControls = on; });

    txtFile = new QLineEdit(this);
    txtFile->setObjectName(QStringLiteral("txtFile"));
    connect(txtFile, &QLineEdit::textEdited, this, [this](const QString &t) { mLogic.setPath(t.trimmed()); });
    cmdBrowse = new QPushButton(QStringLiteral("Browse..."), this);
    cmdBrowse->setObjectName(QStringLiteral("cmdBrowse"));
    connect(cmdBrowse, &QPushButton::clicked, this, [this] {
        const QString chosen = QFileDialog::getSaveFileName(this, ResultExport::kCaption, mLogic.path());
        if (!chosen.isEmpty()) {
            mLogic.setPath(chosen);
            showState();
        }
    });
    auto *file = new QHBoxLayout();
    file->addWidget(new QLabel(QStringLiteral("File:"), this));
    file->addWidget(txtFile, 1);
    file->addWidget(cmdBrowse);

    cmdOK = new QPushButton(QStringLiteral("Export"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(cmdOK, &QPushButton::clicked, this, &frmExport::onOk);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = new QHBoxLayout();
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);

    auto *body = new QHBoxLayout();
    body->addWidget(mChoice, 3);
    body->addWidget(formatBox, 2);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(body);
    layout->addLayout(file);
    layout->addLayout(buttons);
}

void frmExport::load(const QDateTime &when)
{
    mLogic.load(when);
    showState();
}

void frmExport::showState()
{
    mChoice->showState();
    for (int i = 0; i < int(kFormats.size()); ++i)
        optFormat[i]->setChecked(mLogic.format == kFormats[i]);
    {
        const QSignalBlocker block(chkControls);
        chkControls->setChecked(mLogic.withControls);
    }
    if (!txtFile->hasFocus())
        txtFile->setText(QDir::toNativeSeparators(mLogic.path()));
}

void frmExport::onOk()
{
    const std::optional<bool> close = FormParts::runOk(mPrompt, QStringLiteral("The results could not be exported."),
                                                       ResultExport::kCaption, [this] { return mLogic.ok(); });
    if (!close)
        return;
    if (*close)
        accept();
    else
        showState();
}

void frmExport::exportResults(Workbench &workbench, Prompt &prompt, Browser &browser, QWidget *parent)
{
    workbench.storePlateRecord();
    frmExport dialog(workbench.folder(), prompt, browser, parent);
    dialog.logic().setRunName(workbench.runName());
    dialog.logic().setPlatesRecord(workbench.plates());
    dialog.load(workbench.clock().now());
    if (dialog.exec() == QDialog::Accepted)
        workbench.showNotice(dialog.logic().notice());
}
