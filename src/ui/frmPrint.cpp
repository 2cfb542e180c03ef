#include "ui/frmPrint.h"

#include "ui/FormParts.h"
#include "ui/PlateChoice.h"

#include "platform/Prompt.h"
#include "worksheet/Workbench.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

frmPrint::frmPrint(const ProgramFolder &folder, Prompt &prompt, Browser &browser, QWidget *parent)
    : QDialog(parent), mSelection(folder, prompt, browser), mPrompt(prompt)
{
    setObjectName(QStringLiteral("frmPrint"));
    setWindowTitle(ReportSelection::kCaption);
    setModal(true);
    buildUi();
}

void frmPrint::buildUi()
{
    chkSeparateGroups = new QCheckBox(QStringLiteral("Separate Groups by Page"), this);
    chkSeparateGroups->setObjectName(QStringLiteral("chkSeparateGroups"));
    connect(chkSeparateGroups, &QCheckBox::toggled, this, [this](bool on) { mSelection.separateGroups = on; });
    mChoice = new PlateChoice(mSelection, QStringLiteral("Report By:"), chkSeparateGroups, this);
    connect(mChoice, &PlateChoice::changed, this, &frmPrint::showState);

    auto frame = [this](const QString &title, const QString &name, const QStringList &captions, QRadioButton **buttons,
                        const std::function<void(int)> &onClick) {
        auto *box = new QGroupBox(title, this);
        auto *layout = new QVBoxLayout(box);
        auto *group = new QButtonGroup(box);
        for (int i = 0; i < captions.size(); ++i) {
            buttons[i] = FormParts::radio(captions[i], name, i, box);
            group->addButton(buttons[i], i);
            layout->addWidget(buttons[i]);
            connect(buttons[i], &QRadioButton::clicked, this, [onClick, i] { onClick(i); });
        }
        return box;
    };
    auto *options = new QVBoxLayout();
    options->addWidget(frame(QStringLiteral("Report Style"), QStringLiteral("optStyle"),
                             {QStringLiteral("Client Report"), QStringLiteral("Analytical Report")}, optStyle.data(),
                             [this](int i) { mSelection.style = i; }));
    options->addWidget(frame(QStringLiteral("Sample Replicates"), QStringLiteral("optReplicates"),
                             {QStringLiteral("Report all samples individually."),
                              QStringLiteral("Treat samples in the same group with identical names as replicates.")},
                             optReplicates.data(), [this](int i) { mSelection.clickReplicates(i); }));
    options->addWidget(
        frame(QStringLiteral("Sorting"), QStringLiteral("optSort"),
              {QStringLiteral("Sort samples by name."), QStringLiteral("Sort samples by plate position.")},
              optSort.data(), [this](int i) { mSelection.sort = i; }));
    options->addStretch(1);

    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(cmdOK, &QPushButton::clicked, this, &frmPrint::onOk);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = new QHBoxLayout();
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);

    auto *body = new QHBoxLayout();
    body->addWidget(mChoice, 3);
    body->addLayout(options, 2);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(body);
    layout->addLayout(buttons);
}

void frmPrint::load()
{
    mSelection.load();
    mLoaded = true;
    showState();
}

int frmPrint::exec()
{
    if (!mLoaded)
        load();
    return QDialog::exec();
}

void frmPrint::showState()
{
    const ReportSelection &s = mSelection;
    mChoice->showState();
    {
        const QSignalBlocker block(chkSeparateGroups);
        chkSeparateGroups->setChecked(s.separateGroups);
        chkSeparateGroups->setEnabled(s.separateGroupsEnabled);
    }
    for (int i = 0; i < 2; ++i) {
        optStyle[i]->setChecked(s.style == i);
        optReplicates[i]->setChecked(s.replicates == i);
        optSort[i]->setChecked(s.sort == i);
    }
}

void frmPrint::onOk()
{
    const std::optional<bool> close = FormParts::runOk(mPrompt, QStringLiteral("The report could not be made."),
                                                       ReportSelection::kCaption, [this] { return mSelection.ok(); });
    if (!close)
        return;
    if (*close)
        accept();
    else
        showState();
}

void frmPrint::generateReport(Workbench &workbench, Prompt &prompt, Browser &browser, QWidget *parent)
{
    workbench.storePlateRecord();
    frmPrint dialog(workbench.folder(), prompt, browser, parent);
    dialog.setRunName(workbench.runName());
    dialog.setPlatesRecord(workbench.plates());
    dialog.load();
    if (dialog.exec() == QDialog::Accepted)
        workbench.noteFileWritten(Workbench::WrittenFile::Report, dialog.selection().reportPath());
}
