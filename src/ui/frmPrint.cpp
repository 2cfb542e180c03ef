#include "ui/frmPrint.h"

#include "ui/FormParts.h"

#include "platform/Prompt.h"
#include "worksheet/Workbench.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

#include <exception>

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
    auto *choice = new QGridLayout();
    choice->addWidget(new QLabel(QStringLiteral("Report By:"), this), 0, 0, 1, 3);

    auto *reportButtons = new QButtonGroup(this);
    const char *reportCaptions[] = {"Plate:", "Current Run", "Group:"};
    for (int i = 0; i < 3; ++i) {
        optReport[i] = FormParts::radio(QString::fromLatin1(reportCaptions[i]), QStringLiteral("optReport"), i, this);
        reportButtons->addButton(optReport[i], i);
        connect(optReport[i], &QRadioButton::clicked, this, [this, i] {
            mSelection.clickReport(i);
            showState();
        });
    }
    cboPlates = new QComboBox(this);
    cboPlates->setObjectName(QStringLiteral("cboPlates"));
    chkSeparateGroups = new QCheckBox(QStringLiteral("Separate Groups by Page"), this);
    chkSeparateGroups->setObjectName(QStringLiteral("chkSeparateGroups"));
    cboGroups = new QComboBox(this);
    cboGroups->setObjectName(QStringLiteral("cboGroups"));
    choice->addWidget(optReport[0], 1, 0);
    choice->addWidget(cboPlates, 1, 1, 1, 2);
    choice->addWidget(optReport[1], 2, 0);
    choice->addWidget(chkSeparateGroups, 2, 1, 1, 2);
    choice->addWidget(optReport[2], 3, 0);
    choice->addWidget(cboGroups, 3, 1, 1, 2);

    mGroupReportButtons = new QButtonGroup(this);
    const char *groupCaptions[] = {"In Current Run", "In Saved Runs:", "By Date Range:"};
    for (int i = 0; i < 3; ++i) {
        optGroupReport[i] =
            FormParts::radio(QString::fromLatin1(groupCaptions[i]), QStringLiteral("optGroupReport"), i, this);
        mGroupReportButtons->addButton(optGroupReport[i], i);
        connect(optGroupReport[i], &QRadioButton::clicked, this, [this, i] {
            mSelection.clickGroupReport(i);
            showState();
        });
    }
    cboRuns = new QComboBox(this);
    cboRuns->setObjectName(QStringLiteral("cboRuns"));
    choice->addWidget(optGroupReport[0], 4, 1);
    choice->addWidget(optGroupReport[1], 5, 1);
    choice->addWidget(cboRuns, 5, 2);
    choice->addWidget(optGroupReport[2], 6, 1);

    auto *dates = new QGridLayout();
    const char *ends[] = {"Start", "End"};
    for (int i = 0; i < 2; ++i) {
        txtMonthRange[i] = FormParts::dateBox(QStringLiteral("txtMonthRange"), i, 2, this);
        txtDayRange[i] = FormParts::dateBox(QStringLiteral("txtDayRange"), i, 2, this);
        txtYearRange[i] = FormParts::dateBox(QStringLiteral("txtYearRange"), i, 4, this);
        dates->addWidget(new QLabel(QString::fromLatin1(ends[i]), this), 0, i * 6, 1, 5);
        dates->addWidget(txtMonthRange[i], 1, i * 6);
        dates->addWidget(new QLabel(QStringLiteral("/"), this), 1, i * 6 + 1);
        dates->addWidget(txtDayRange[i], 1, i * 6 + 2);
        dates->addWidget(new QLabel(QStringLiteral("/"), this), 1, i * 6 + 3);
        dates->addWidget(txtYearRange[i], 1, i * 6 + 4);
        dates->addWidget(new QLabel(QStringLiteral("MM  /  DD  /  YYYY"), this), 2, i * 6, 1, 5);
        for (QLineEdit *box : {txtMonthRange[i], txtDayRange[i], txtYearRange[i]})
            box->installEventFilter(this);
        connect(txtMonthRange[i], &QLineEdit::textEdited, this,
                [this, i](const QString &t) { mSelection.monthRange[i] = t; });
        connect(txtDayRange[i], &QLineEdit::textEdited, this,
                [this, i](const QString &t) { mSelection.dayRange[i] = t; });
        connect(txtYearRange[i], &QLineEdit::textEdited, this,
                [this, i](const QString &t) { mSelection.yearRange[i] = t; });
    }
    dates->setColumnMinimumWidth(5, 16);
    choice->addLayout(dates, 7, 1, 1, 2);

    connect(cboPlates, &QComboBox::currentIndexChanged, this, [this](int i) { mSelection.plates.index = i; });
    connect(cboGroups, &QComboBox::currentIndexChanged, this, [this](int i) { mSelection.groups.index = i; });
    connect(cboRuns, &QComboBox::currentIndexChanged, this, [this](int i) { mSelection.runs.index = i; });
    connect(chkSeparateGroups, &QCheckBox::toggled, this, [this](bool on) { mSelection.separateGroups = on; });

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
    body->addLayout(choice, 3);
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
    for (int i = 0; i < 3; ++i) {
        const QSignalBlocker block(optReport[i]);
        optReport[i]->setChecked(s.report == i);
    }
    FormParts::showCombo(cboPlates, s.plates);
    FormParts::showCombo(cboGroups, s.groups);
    FormParts::showCombo(cboRuns, s.runs);
    {
        const QSignalBlocker block(chkSeparateGroups);
        chkSeparateGroups->setChecked(s.separateGroups);
        chkSeparateGroups->setEnabled(s.separateGroupsEnabled);
    }
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
        optStyle[i]->setChecked(s.style == i);
        optReplicates[i]->setChecked(s.replicates == i);
        optSort[i]->setChecked(s.sort == i);
    }
}

bool frmPrint::eventFilter(QObject *watched, QEvent *event)
{
    // A click in a date box selects all of its text.
    if (event->type() == QEvent::MouseButtonPress) {
        if (auto *box = qobject_cast<QLineEdit *>(watched))
            QTimer::singleShot(0, box, &QLineEdit::selectAll);
    }
    return QDialog::eventFilter(watched, event);
}

void frmPrint::onOk()
{
    bool close = false;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        close = mSelection.ok();
    } catch (const std::exception &e) {
        QApplication::restoreOverrideCursor();
        mPrompt.message(QStringLiteral("The report could not be made.\r\n\r\n") + QString::fromUtf8(e.what()),
                        ReportSelection::kCaption, MsgIcon::Critical);
        return;
    }
    QApplication::restoreOverrideCursor();
    if (close)
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
