#include "ui/frmTrackControls.h"

#include "ui/FormParts.h"

#include "platform/Prompt.h"
#include "worksheet/Workbench.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

#include <exception>

namespace {

QComboBox *combo(const QString &name, QWidget *parent)
{
    auto *box = new QComboBox(parent);
    box->setObjectName(name);
    return box;
}

QCheckBox *check(const QString &caption, const QString &name, QWidget *parent)
{
    auto *box = new QCheckBox(caption, parent);
    box->setObjectName(name);
    return box;
}

void showCheck(QCheckBox *box, bool ticked)
{
    const QSignalBlocker block(box);
    box->setChecked(ticked);
}

} // namespace

frmTrackControls::frmTrackControls(const ProgramFolder &folder, Prompt &prompt, Browser &browser, const Clock &clock,
                                   QWidget *parent, TrackingWorkbook::WorkbookFactory newWorkbook)
    : QDialog(parent), mLogic(folder, prompt, browser, clock, std::move(newWorkbook)), mPrompt(prompt)
{
    setObjectName(QStringLiteral("frmTrackControls"));
    setWindowTitle(TrackControlsLogic::kCaption);
    setModal(true);
    buildUi();
}

void frmTrackControls::buildUi()
{
    // Left: the data to report.
    auto *data = new QGroupBox(QStringLiteral("Data to Report:"), this);
    data->setObjectName(QStringLiteral("fraData"));
    auto *dataLayout = new QGridLayout(data);
    cboTests = combo(QStringLiteral("cboTests"), data);
    cboLotNumbers = combo(QStringLiteral("cboLotNumbers"), data);
    cboTechnicians = combo(QStringLiteral("cboTechnicians"), data);
    dataLayout->addWidget(new QLabel(QStringLiteral("Test Kit:"), data), 0, 0);
    dataLayout->addWidget(cboTests, 0, 1);
    dataLayout->addWidget(new QLabel(QStringLiteral("Lot Number:"), data), 1, 0);
    dataLayout->addWidget(cboLotNumbers, 1, 1);
    dataLayout->addWidget(new QLabel(QStringLiteral("Technician:"), data), 2, 0);
    dataLayout->addWidget(cboTechnicians, 2, 1);

    auto *dates = new QGridLayout();
    const char *ends[] = {"Start", "End"};
    for (int i = 0; i < 2; ++i) {
        txtMonthRange[i] = FormParts::dateBox(QStringLiteral("txtMonthRange"), i, 2, data);
        txtDayRange[i] = FormParts::dateBox(QStringLiteral("txtDayRange"), i, 2, data);
        txtYearRange[i] = FormParts::dateBox(QStringLiteral("txtYearRange"), i, 4, data);
        dates->addWidget(new QLabel(QString::fromLatin1(ends[i]), data), i * 2, 0);
        dates->addWidget(txtMonthRange[i], i * 2, 1);
        dates->addWidget(new QLabel(QStringLiteral("/"), data), i * 2, 2);
        dates->addWidget(txtDayRange[i], i * 2, 3);
        dates->addWidget(new QLabel(QStringLiteral("/"), data), i * 2, 4);
        dates->addWidget(txtYearRange[i], i * 2, 5);
        dates->addWidget(new QLabel(QStringLiteral("MM  /  DD  /  YYYY"), data), i * 2 + 1, 1, 1, 5);
        for (QLineEdit *box : {txtMonthRange[i], txtDayRange[i], txtYearRange[i]})
            box->installEventFilter(this);
        connect(txtMonthRange[i], &QLineEdit::textChanged, this,
                [this, i](const QString &t) { mLogic.monthRange[i] = t; });
        connect(txtDayRange[i], &QLineEdit::textChanged, this, [this, i](const QString &t) { mLogic.dayRange[i] = t; });
        connect(txtYearRange[i], &QLineEdit::textChanged, this,
                [this, i](const QString &t) { mLogic.yearRange[i] = t; });
    }
    dates->setColumnStretch(6, 1);
    dataLayout->addLayout(dates, 3, 0, 1, 2);

    connect(cboTests, &QComboBox::currentIndexChanged, this, [this](int i) { mLogic.tests.index = i; });
    connect(cboLotNumbers, &QComboBox::currentIndexChanged, this, [this](int i) { mLogic.lotNumbers.index = i; });
    connect(cboTechnicians, &QComboBox::currentIndexChanged, this, [this](int i) { mLogic.technicians.index = i; });

    // Right: the chart options.
    auto *chart = new QGroupBox(QStringLiteral("Chart Options"), this);
    chart->setObjectName(QStringLiteral("fraChartOptions"));
    auto *chartLayout = new QVBoxLayout(chart);
    chartLayout->addWidget(new QLabel(QStringLiteral("Show the following on the X-Axis:"), chart));
    chkPlateName = check(QStringLiteral("Plate Name"), QStringLiteral("chkPlateName"), chart);
    chkRunName = check(QStringLiteral("Run Name"), QStringLiteral("chkRunName"), chart);
    chkDate = check(QStringLiteral("Date"), QStringLiteral("chkDate"), chart);
    chkTime = check(QStringLiteral("Time of Day"), QStringLiteral("chkTime"), chart);
    chkStdDev = check(QStringLiteral("Display +/- Standard Deviations"), QStringLiteral("chkStdDev"), chart);
    for (QCheckBox *box : {chkPlateName, chkRunName, chkDate, chkTime}) {
        chartLayout->addWidget(box);
        connect(box, &QCheckBox::clicked, this, &frmTrackControls::onChartOption);
    }
    chartLayout->addSpacing(8);
    chartLayout->addWidget(chkStdDev);
    connect(chkStdDev, &QCheckBox::toggled, this, [this](bool on) { mLogic.chkStdDev = on; });
    chkWestgard = check(QStringLiteral("Westgard rules"), QStringLiteral("chkWestgard"), chart);
    chkWestgard->setToolTip(QStringLiteral("Also write the guide-set lines and the rules each plate broke"));
    chartLayout->addWidget(chkWestgard);
    connect(chkWestgard, &QCheckBox::toggled, this, [this](bool on) { mLogic.chkWestgard = on; });
    lblWarning = new QLabel(chart);
    lblWarning->setObjectName(QStringLiteral("lblWarning"));
    lblWarning->setWordWrap(true);
    lblWarning->setStyleSheet(QStringLiteral("color: #b00000;"));
    chartLayout->addWidget(lblWarning);
    chartLayout->addStretch(1);

    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(cmdOK, &QPushButton::clicked, this, &frmTrackControls::onOk);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = new QHBoxLayout();
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);

    auto *body = new QHBoxLayout();
    body->addWidget(data, 3);
    body->addWidget(chart, 2);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(body);
    layout->addLayout(buttons);
    showState();
}

void frmTrackControls::load()
{
    mLogic.load();
    mLoaded = true;
    showState();
}

int frmTrackControls::exec()
{
    if (!mLoaded)
        load();
    return QDialog::exec();
}

void frmTrackControls::showState()
{
    const TrackControlsLogic &s = mLogic;
    FormParts::showCombo(cboTests, s.tests);
    FormParts::showCombo(cboLotNumbers, s.lotNumbers);
    FormParts::showCombo(cboTechnicians, s.technicians);
    for (int i = 0; i < 2; ++i) {
        const QSignalBlocker m(txtMonthRange[i]), d(txtDayRange[i]), y(txtYearRange[i]);
        txtMonthRange[i]->setText(s.monthRange[i]);
        txtDayRange[i]->setText(s.dayRange[i]);
        txtYearRange[i]->setText(s.yearRange[i]);
    }
    showCheck(chkPlateName, s.chkPlateName);
    showCheck(chkRunName, s.chkRunName);
    showCheck(chkDate, s.chkDate);
    showCheck(chkTime, s.chkTime);
    showCheck(chkStdDev, s.chkStdDev);
    showCheck(chkWestgard, s.chkWestgard);
    cmdOK->setEnabled(s.okEnabled);
    lblWarning->setText(s.warningText);
    lblWarning->setVisible(s.warningVisible);
}

void frmTrackControls::onChartOption()
{
    mLogic.chkPlateName = chkPlateName->isChecked();
    mLogic.chkRunName = chkRunName->isChecked();
    mLogic.chkDate = chkDate->isChecked();
    mLogic.chkTime = chkTime->isChecked();
    mLogic.checkChartOptions();
    cmdOK->setEnabled(mLogic.okEnabled);
    lblWarning->setText(mLogic.warningText);
    lblWarning->setVisible(mLogic.warningVisible);
}

void frmTrackControls::onOk()
{
    mLastWorkbook.clear();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        mLastWorkbook = mLogic.ok();
    } catch (const std::exception &e) {
        QApplication::restoreOverrideCursor();
        mPrompt.message(QStringLiteral("The control report could not be made.\r\n\r\n") + QString::fromUtf8(e.what()),
                        TrackControlsLogic::kCaption, MsgIcon::Critical);
        return;
    }
    QApplication::restoreOverrideCursor();
}

bool frmTrackControls::eventFilter(QObject *watched, QEvent *event)
{
    // A click in a date box selects all of its text.
    if (event->type() == QEvent::MouseButtonPress) {
        if (auto *box = qobject_cast<QLineEdit *>(watched))
            QTimer::singleShot(0, box, &QLineEdit::selectAll);
    }
    return QDialog::eventFilter(watched, event);
}

void frmTrackControls::generateControlReport(Workbench &workbench, Prompt &prompt, Browser &browser, QWidget *parent)
{
    frmTrackControls dialog(workbench.folder(), prompt, browser, workbench.clock(), parent);
    dialog.load();
    dialog.exec();
    if (!dialog.lastWorkbook().isEmpty())
        workbench.noteFileWritten(Workbench::WrittenFile::Workbook, dialog.lastWorkbook());
}
