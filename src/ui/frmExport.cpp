#include "ui/frmExport.h"

#include "ui/FormParts.h"

#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "worksheet/Workbench.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
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
    ReportSelection &s = mLogic.selection();
    auto *choice = new QGridLayout();
    choice->addWidget(new QLabel(QStringLiteral("Export By:"), this), 0, 0, 1, 3);
    auto *reportButtons = new QButtonGroup(this);
    const char *reportCaptions[] = {"Plate:", "Current Run", "Group:"};
    for (int i = 0; i < 3; ++i) {
        optReport[i] = FormParts::radio(QString::fromLatin1(reportCaptions[i]), QStringLiteral("optReport"), i, this);
        reportButtons->addButton(optReport[i], i);
        connect(optReport[i], &QRadioButton::clicked, this, [this, i] {
            mLogic.selection().clickReport(i);
            showState();
        });
    }
    cboPlates = new QComboBox(this);
    cboPlates->setObjectName(QStringLiteral("cboPlates"));
    cboGroups = new QComboBox(this);
    cboGroups->setObjectName(QStringLiteral("cboGroups"));
    cboRuns = new QComboBox(this);
    cboRuns->setObjectName(QStringLiteral("cboRuns"));
    choice->addWidget(optReport[0], 1, 0);
    choice->addWidget(cboPlates, 1, 1, 1, 2);
    choice->addWidget(optReport[1], 2, 0);
    choice->addWidget(optReport[2], 3, 0);
    choice->addWidget(cboGroups, 3, 1, 1, 2);
    mGroupReportButtons = new QButtonGroup(this);
    const char *groupCaptions[] = {"In Current Run", "In Saved Runs:", "By Date Range:"};
    for (int i = 0; i < 3; ++i) {
        optGroupReport[i] =
            FormParts::radio(QString::fromLatin1(groupCaptions[i]), QStringLiteral("optGroupReport"), i, this);
        mGroupReportButtons->addButton(optGroupReport[i], i);
        connect(optGroupReport[i], &QRadioButton::clicked, this, [this, i] {
            mLogic.selection().clickGroupReport(i);
            showState();
        });
        choice->addWidget(optGroupReport[i], 4 + i, 1);
    }
    choice->addWidget(cboRuns, 5, 2);
    auto *dates = new QHBoxLayout();
    for (int i = 0; i < 2; ++i) {
        txtMonthRange[i] = FormParts::dateBox(QStringLiteral("txtMonthRange"), i, 2, this);
        txtDayRange[i] = FormParts::dateBox(QStringLiteral("txtDayRange"), i, 2, this);
        txtYearRange[i] = FormParts::dateBox(QStringLiteral("txtYearRange"), i, 4, this);
        dates->addWidget(new QLabel(i == 0 ? QStringLiteral("Start (MM/DD/YYYY)") : QStringLiteral("End"), this));
        dates->addWidget(txtMonthRange[i]);
        dates->addWidget(txtDayRange[i]);
        dates->addWidget(txtYearRange[i]);
        connect(txtMonthRange[i], &QLineEdit::textEdited, this, [this, i](const QString &t) {
            mLogic.selection().monthRange[i] = t;
            showState();
        });
        connect(txtDayRange[i], &QLineEdit::textEdited, this, [this, i](const QString &t) {
            mLogic.selection().dayRange[i] = t;
            showState();
        });
        connect(txtYearRange[i], &QLineEdit::textEdited, this, [this, i](const QString &t) {
            mLogic.selection().yearRange[i] = t;
            showState();
        });
    }
    choice->addLayout(dates, 7, 1, 1, 2);
    connect(cboPlates, &QComboBox::currentIndexChanged, this, [this, &s](int i) {
        s.plates.index = i;
        showState();
    });
    connect(cboGroups, &QComboBox::currentIndexChanged, this, [this, &s](int i) {
        s.groups.index = i;
        showState();
    });
    connect(cboRuns, &QComboBox::currentIndexChanged, this, [this, &s](int i) {
        s.runs.index = i;
        showState();
    });

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
    body->addLayout(choice, 3);
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
    const ReportSelection &s = mLogic.selection();
    for (int i = 0; i < 3; ++i) {
        const QSignalBlocker block(optReport[i]);
        optReport[i]->setChecked(s.report == i);
    }
    FormParts::showCombo(cboPlates, s.plates);
    FormParts::showCombo(cboGroups, s.groups);
    FormParts::showCombo(cboRuns, s.runs);
    mGroupReportButtons->setExclusive(false);
    for (int i = 0; i < 3; ++i) {
        const QSignalBlocker block(optGroupReport[i]);
        optGroupReport[i]->setChecked(s.groupReport == i);
        optGroupReport[i]->setEnabled(s.groupReportEnabled);
    }
    mGroupReportButtons->setExclusive(true);
    for (int i = 0; i < 2; ++i) {
        txtMonthRange[i]->setText(s.monthRange[i]);
        txtDayRange[i]->setText(s.dayRange[i]);
        txtYearRange[i]->setText(s.yearRange[i]);
        for (QLineEdit *box : {txtMonthRange[i], txtDayRange[i], txtYearRange[i]})
            box->setEnabled(s.dateBoxesEnabled);
    }
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
    QApplication::setOverrideCursor(Qt::WaitCursor);
    bool written = false;
    try {
        written = mLogic.ok();
    } catch (const std::exception &e) {
        QApplication::restoreOverrideCursor();
        mPrompt.message(QStringLiteral("The results could not be exported.\r\n\r\n") + QString::fromUtf8(e.what()),
                        ResultExport::kCaption, MsgIcon::Critical);
        return;
    }
    QApplication::restoreOverrideCursor();
    if (written)
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
