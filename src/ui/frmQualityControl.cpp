#include "ui/frmQualityControl.h"

#include "platform/Prompt.h"
#include "tracking/GuideSetStore.h"
#include "tracking/WestgardRule.h"
#include "worksheet/Workbench.h"

#include <QChart>
#include <QChartView>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLineSeries>
#include <QListWidget>
#include <QPushButton>
#include <QScatterSeries>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QValueAxis>

#include <exception>
#include <map>

namespace {

const QString kDateFormat = QStringLiteral("M/d/yyyy");

template <typename W> W *named(W *widget, const char *name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QDateEdit *dateEdit(const char *name, QWidget *parent)
{
    auto *edit = named(new QDateEdit(parent), name);
    edit->setDisplayFormat(kDateFormat);
    edit->setCalendarPopup(true);
    return edit;
}

// The Levey-Jennings chart of one quantity: the values in the order read, the guide-set
// lines at each plate (a new guide set shows as a step), the violations as marks, one
// series per rule so that the legend names them.
QChartView *chartOf(const QcWindowLogic::Chart &data, QWidget *parent)
{
    auto *chart = new QChart();
    chart->setTitle(data.quantity);
    auto *values = new QLineSeries();
    values->setName(data.quantity);
    values->setPointsVisible(true);
    const int steps[] = {0, -1, 1, -2, 2, -3, 3};
    QLineSeries *lines[7];
    for (int i = 0; i < 7; ++i) {
        lines[i] = new QLineSeries();
        lines[i]->setName(steps[i] == 0
                              ? QStringLiteral("Mean")
                              : QStringLiteral("%1%2 SD").arg(steps[i] > 0 ? "+" : "-").arg(std::abs(steps[i])));
        QPen pen(i == 0 ? Qt::darkGreen
                        : (std::abs(steps[i]) == 3   ? Qt::red
                           : std::abs(steps[i]) == 2 ? QColor(230, 140, 0)
                                                     : Qt::gray));
        pen.setStyle(i == 0 ? Qt::SolidLine : Qt::DashLine);
        lines[i]->setPen(pen);
    }
    std::map<QString, QScatterSeries *> marks;
    for (const QcWindowLogic::Point &p : data.points) {
        const double x = p.run + 1;
        values->append(x, p.value);
        if (p.mean && p.sd) {
            for (int i = 0; i < 7; ++i)
                lines[i]->append(x, *p.mean + steps[i] * *p.sd);
        }
        for (const QString &rule : p.rules) {
            QScatterSeries *&series = marks[rule];
            if (!series) {
                series = new QScatterSeries();
                series->setName(rule);
                series->setMarkerSize(rule == westgard::name(WestgardRule::OneTwoS) ? 9 : 12);
            }
            series->append(x, p.value);
        }
    }
    chart->addSeries(values);
    for (QLineSeries *line : lines)
        chart->addSeries(line);
    for (auto &[rule, series] : marks)
        chart->addSeries(series);
    auto *axisX = new QValueAxis();
    axisX->setTitleText(QStringLiteral("Plate, in the order read"));
    axisX->setLabelFormat(QStringLiteral("%d"));
    auto *axisY = new QValueAxis();
    axisY->setTitleText(data.quantity);
    chart->addAxis(axisX, Qt::AlignBottom);
    chart->addAxis(axisY, Qt::AlignLeft);
    for (QAbstractSeries *series : chart->series()) {
        series->attachAxis(axisX);
        series->attachAxis(axisY);
    }
    auto *view = new QChartView(chart, parent);
    view->setObjectName(QStringLiteral("chart_") + data.quantity);
    view->setRenderHint(QPainter::Antialiasing);
    return view;
}

} // namespace

frmQualityControl::frmQualityControl(const ProgramFolder &folder, Prompt &prompt, const Clock &clock, QWidget *parent)
    : QDialog(parent), mLogic(folder, prompt, clock), mPrompt(prompt)
{
    setObjectName(QStringLiteral("frmQualityControl"));
    setWindowTitle(QcWindowLogic::kCaption);
    buildUi();
    resize(1100, 760);
}

void frmQualityControl::showQualityControl(Workbench &workbench, Prompt &prompt, QWidget *parent)
{
    frmQualityControl window(workbench.folder(), prompt, workbench.clock(), parent);
    window.load();
    window.exec();
}

template <typename Fn> void frmQualityControl::guarded(Fn &&fn)
{
    try {
        fn();
    } catch (const std::exception &e) {
        mPrompt.message(QStringLiteral("The command could not be completed:\r\n") + QString::fromUtf8(e.what()),
                        QStringLiteral("Error"), MsgIcon::Critical);
    }
}

void frmQualityControl::buildUi()
{
    auto *choice = new QHBoxLayout();
    cboTest = named(new QComboBox(this), "cboTest");
    cboLot = named(new QComboBox(this), "cboLot");
    dtFrom = dateEdit("dtFrom", this);
    dtTo = dateEdit("dtTo", this);
    cmdShow = named(new QPushButton(QStringLiteral("Show"), this), "cmdShow");
    choice->addWidget(new QLabel(QStringLiteral("Test Kit:"), this));
    choice->addWidget(cboTest, 1);
    choice->addWidget(new QLabel(QStringLiteral("Lot Number:"), this));
    choice->addWidget(cboLot);
    choice->addWidget(new QLabel(QStringLiteral("From:"), this));
    choice->addWidget(dtFrom);
    choice->addWidget(new QLabel(QStringLiteral("To:"), this));
    choice->addWidget(dtTo);
    choice->addWidget(cmdShow);
    connect(cmdShow, &QPushButton::clicked, this, [this] { guarded([this] { refresh(); }); });
    connect(cboTest, &QComboBox::currentTextChanged, this, [this] { guarded([this] { refresh(); }); });

    lblNotice = named(new QLabel(this), "lblNotice");
    tabCharts = named(new QTabWidget(this), "tabCharts");
    tblViolations = named(new QTableWidget(0, 7, this), "tblViolations");
    tblViolations->setHorizontalHeaderLabels({QStringLiteral("Plate"), QStringLiteral("Date Read"),
                                              QStringLiteral("Quantity"), QStringLiteral("Rule"),
                                              QStringLiteral("Kind"), QStringLiteral("Value"), QStringLiteral("SD")});
    tblViolations->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tblViolations->horizontalHeader()->setStretchLastSection(true);

    // The guide-set editor: typed in, or figured from the plates ticked.
    auto *editor = named(new QGroupBox(QStringLiteral("Guide Set"), this), "fraGuideSet");
    auto *form = new QFormLayout();
    cboQuantity = named(new QComboBox(editor), "cboQuantity");
    txtGuideLot = named(new QLineEdit(editor), "txtGuideLot");
    txtGuideLot->setPlaceholderText(QStringLiteral("every lot"));
    dtGuideStart = dateEdit("dtGuideStart", editor);
    txtMean = named(new QLineEdit(editor), "txtMean");
    txtSD = named(new QLineEdit(editor), "txtSD");
    txtSetBy = named(new QLineEdit(editor), "txtSetBy");
    form->addRow(QStringLiteral("Quantity:"), cboQuantity);
    form->addRow(QStringLiteral("Lot Number:"), txtGuideLot);
    form->addRow(QStringLiteral("Starts on:"), dtGuideStart);
    form->addRow(QStringLiteral("Mean:"), txtMean);
    form->addRow(QStringLiteral("SD:"), txtSD);
    form->addRow(QStringLiteral("Set by:"), txtSetBy);
    auto *cmdAddTyped = named(new QPushButton(QStringLiteral("Keep Mean and SD"), editor), "cmdAddTyped");
    form->addRow(cmdAddTyped);
    lstBaseline = named(new QListWidget(editor), "lstBaseline");
    auto *cmdFromBaseline =
        named(new QPushButton(QStringLiteral("Figure from the Plates Ticked"), editor), "cmdFromBaseline");
    lstRules = named(new QListWidget(editor), "lstRules");
    for (WestgardRule rule : westgard::allRules()) {
        auto *item = new QListWidgetItem(westgard::name(rule), lstRules);
        item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
        item->setCheckState(Qt::Unchecked);
    }
    auto *cmdSaveRules = named(new QPushButton(QStringLiteral("Keep the Kit's Rules"), editor), "cmdSaveRules");
    auto *editorLayout = new QHBoxLayout(editor);
    editorLayout->addLayout(form);
    auto *baseline = new QVBoxLayout();
    baseline->addWidget(new QLabel(QStringLiteral("Baseline plates:"), editor));
    baseline->addWidget(lstBaseline);
    baseline->addWidget(cmdFromBaseline);
    editorLayout->addLayout(baseline, 2);
    auto *rules = new QVBoxLayout();
    rules->addWidget(new QLabel(QStringLiteral("Rules of the kit:"), editor));
    rules->addWidget(lstRules);
    rules->addWidget(cmdSaveRules);
    editorLayout->addLayout(rules, 1);
    connect(cmdAddTyped, &QPushButton::clicked, this, [this] { guarded([this] { addTyped(); }); });
    connect(cmdFromBaseline, &QPushButton::clicked, this, [this] { guarded([this] { addFromBaseline(); }); });
    connect(cmdSaveRules, &QPushButton::clicked, this, [this] { guarded([this] { saveRules(); }); });

    auto *split = new QSplitter(Qt::Vertical, this);
    split->addWidget(tabCharts);
    split->addWidget(tblViolations);
    split->addWidget(editor);
    split->setStretchFactor(0, 3);

    auto *close = named(new QPushButton(QStringLiteral("Close"), this), "cmdClose");
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(choice);
    layout->addWidget(lblNotice);
    layout->addWidget(split, 1);
    layout->addWidget(close, 0, Qt::AlignRight);
}

void frmQualityControl::load()
{
    guarded([this] {
        mLogic.load();
        {
            const QSignalBlocker block(cboTest);
            cboTest->clear();
            cboTest->addItems(mLogic.tests);
            cboTest->setCurrentText(mLogic.testName);
        }
        cboLot->clear();
        cboLot->addItems(mLogic.lots);
        dtFrom->setDate(mLogic.from);
        dtTo->setDate(mLogic.to);
        dtGuideStart->setDate(mLogic.from);
        refresh();
    });
}

void frmQualityControl::refresh()
{
    mLogic.testName = cboTest->currentText();
    mLogic.lot = cboLot->currentText();
    mLogic.from = dtFrom->date();
    mLogic.to = dtTo->date();
    fillEditor();
    const std::optional<QcWindowLogic::View> view = mLogic.gather();
    if (view)
        showView(*view);
}

void frmQualityControl::showView(const QcWindowLogic::View &view)
{
    lblNotice->setText(view.notice);
    lblNotice->setVisible(!view.notice.isEmpty());
    while (tabCharts->count() > 0) {
        QWidget *page = tabCharts->widget(0);
        tabCharts->removeTab(0);
        delete page;
    }
    for (const QcWindowLogic::Chart &chart : view.charts)
        tabCharts->addTab(chartOf(chart, tabCharts), chart.quantity);

    tblViolations->setRowCount(int(view.violations.size()));
    for (int r = 0; r < int(view.violations.size()); ++r) {
        const QcWindowLogic::Violation &v = view.violations[size_t(r)];
        const QString cells[] = {v.plate,
                                 v.dateRead.toString(kDateFormat),
                                 v.quantity,
                                 v.rule,
                                 v.reject ? QStringLiteral("Reject") : QStringLiteral("Warning"),
                                 v.value ? QString::number(*v.value, 'f', 3) : QString(),
                                 v.z ? QString::number(*v.z, 'f', 2) : QString()};
        for (int c = 0; c < 7; ++c)
            tblViolations->setItem(r, c, new QTableWidgetItem(cells[c]));
    }

    // The plates shown are the ones a baseline can be figured from.
    lstBaseline->clear();
    mCandidates.clear();
    for (const QcRun &run : view.history.runs) {
        auto *item = new QListWidgetItem(run.plate.describe() + QStringLiteral(", ") +
                                             run.plate.dateRead.toDate().toString(kDateFormat),
                                         lstBaseline);
        item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
        item->setCheckState(Qt::Unchecked);
        mCandidates.push_back({run.plate, run.values});
    }
}

void frmQualityControl::fillEditor()
{
    cboQuantity->clear();
    if (mLogic.testName.isEmpty())
        return;
    cboQuantity->addItems(mLogic.editor().quantitiesOf(mLogic.testName));
    const QStringList chosen = westgard::names(mLogic.kitRules());
    for (int i = 0; i < lstRules->count(); ++i)
        lstRules->item(i)->setCheckState(chosen.contains(lstRules->item(i)->text()) ? Qt::Checked : Qt::Unchecked);
}

GuideSetEditor::Entry frmQualityControl::entry() const
{
    return {mLogic.testName, cboQuantity->currentText(), txtGuideLot->text(), dtGuideStart->date(), txtSetBy->text()};
}

void frmQualityControl::addTyped()
{
    if (mLogic.editor().addTyped(entry(), txtMean->text(), txtSD->text()))
        refresh();
}

void frmQualityControl::addFromBaseline()
{
    std::vector<GuideSetEditor::Candidate> picked;
    for (int i = 0; i < lstBaseline->count(); ++i) {
        if (lstBaseline->item(i)->checkState() == Qt::Checked)
            picked.push_back(mCandidates[size_t(i)]);
    }
    if (mLogic.editor().addFromBaseline(entry(), picked))
        refresh();
}

void frmQualityControl::saveRules()
{
    QStringList names;
    for (int i = 0; i < lstRules->count(); ++i) {
        if (lstRules->item(i)->checkState() == Qt::Checked)
            names << lstRules->item(i)->text();
    }
    if (mLogic.editor().setRules(mLogic.testName, names))
        refresh();
}
