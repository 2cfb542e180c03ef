#include "ui/PlateChoice.h"

#include "reports/ReportSelection.h"
#include "ui/FormParts.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTimer>

PlateChoice::PlateChoice(ReportSelection &selection, const QString &heading, QWidget *runOption, QWidget *parent)
    : QWidget(parent), mSelection(selection)
{
    auto *choice = new QGridLayout(this);
    choice->setContentsMargins(0, 0, 0, 0);
    choice->addWidget(new QLabel(heading, this), 0, 0, 1, 3);

    auto *reportButtons = new QButtonGroup(this);
    const char *reportCaptions[] = {"Plate:", "Current Run", "Group:"};
    for (int i = 0; i < 3; ++i) {
        optReport[i] = FormParts::radio(QString::fromLatin1(reportCaptions[i]), QStringLiteral("optReport"), i, this);
        reportButtons->addButton(optReport[i], i);
        connect(optReport[i], &QRadioButton::clicked, this, [this, i] {
            mSelection.clickReport(i);
            showState();
            emit changed();
        });
    }
    cboPlates = new QComboBox(this);
    cboPlates->setObjectName(QStringLiteral("cboPlates"));
    cboGroups = new QComboBox(this);
    cboGroups->setObjectName(QStringLiteral("cboGroups"));
    choice->addWidget(optReport[0], 1, 0);
    choice->addWidget(cboPlates, 1, 1, 1, 2);
    choice->addWidget(optReport[1], 2, 0);
    if (runOption)
        choice->addWidget(runOption, 2, 1, 1, 2);
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
            emit changed();
        });
        choice->addWidget(optGroupReport[i], 4 + i, 1);
    }
    cboRuns = new QComboBox(this);
    cboRuns->setObjectName(QStringLiteral("cboRuns"));
    choice->addWidget(cboRuns, 5, 2);

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
        const std::array<std::pair<QLineEdit *, QString *>, 3> parts{{{txtMonthRange[i], &mSelection.monthRange[i]},
                                                                      {txtDayRange[i], &mSelection.dayRange[i]},
                                                                      {txtYearRange[i], &mSelection.yearRange[i]}}};
        for (const auto &[box, text] : parts) {
            box->installEventFilter(this);
            connect(box, &QLineEdit::textEdited, this, [this, target = text](const QString &t) {
                *target = t;
                emit changed();
            });
        }
    }
    dates->setColumnMinimumWidth(5, 16);
    choice->addLayout(dates, 7, 1, 1, 2);

    const std::array<std::pair<QComboBox *, int *>, 3> combos{{{cboPlates, &mSelection.plates.index},
                                                               {cboGroups, &mSelection.groups.index},
                                                               {cboRuns, &mSelection.runs.index}}};
    for (const auto &[combo, index] : combos) {
        connect(combo, &QComboBox::currentIndexChanged, this, [this, target = index](int i) {
            *target = i;
            emit changed();
        });
    }
}

void PlateChoice::showState()
{
    const ReportSelection &s = mSelection;
    for (int i = 0; i < 3; ++i) {
        const QSignalBlocker block(optReport[i]);
        optReport[i]->setChecked(s.report == i);
    }
    FormParts::showCombo(cboPlates, s.plates);
    FormParts::showCombo(cboGroups, s.groups);
    FormParts::showCombo(cboRuns, s.runs);
    // Not exclusive while set, so that no button is checked when the choice is off.
    mGroupReportButtons->setExclusive(false);
    for (int i = 0; i < 3; ++i) {
        const QSignalBlocker block(optGroupReport[i]);
        optGroupReport[i]->setChecked(s.groupReport == i);
        optGroupReport[i]->setEnabled(s.groupReportEnabled);
    }
    mGroupReportButtons->setExclusive(true);
    for (int i = 0; i < 2; ++i) {
        const std::array<std::pair<QLineEdit *, QString>, 3> parts{
            {{txtMonthRange[i], s.monthRange[i]}, {txtDayRange[i], s.dayRange[i]}, {txtYearRange[i], s.yearRange[i]}}};
        for (const auto &[box, text] : parts) {
            if (box->text() != text) // keeps the cursor where the user is typing
                box->setText(text);
            box->setEnabled(s.dateBoxesEnabled);
        }
    }
}

bool PlateChoice::eventFilter(QObject *watched, QEvent *event)
{
    // A click in a date box selects all of its text.
    if (event->type() == QEvent::MouseButtonPress) {
        if (auto *box = qobject_cast<QLineEdit *>(watched))
            QTimer::singleShot(0, box, &QLineEdit::selectAll);
    }
    return QWidget::eventFilter(watched, event);
}
