#include "tracking/TrackingWorkbook.h"

#include "core/LegacyFormat.h"
#include "platform/Browser.h"
#include "platform/Prompt.h"
#include "platform/Workbook.h"
#include "platform/OoxmlWorkbook.h"
#include "store/DocumentFolder.h"
#include "tracking/QcHistory.h"
#include "tracking/QcWorkbookColumns.h"
#include "tracking/ValueAxisScale.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTime>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <vector>

namespace {

constexpr int kHeadRow = 1;
constexpr int kFirstDataRow = 2;
constexpr int kColumns = 18;
constexpr int kTechColumn = 1;
constexpr int kFirstLabelColumn = 2;
constexpr int kLotColumn = 6;
constexpr int kControlColumn = 7; // G: the mean, then H the deviation, I to L the bands
constexpr int kRatioColumn = 13;  // M: the same for the ratio, to R

const double kWidths[kColumns] = {24, 11, 12, 10, 13, 16, 9, 10, 12, 12, 12, 12, 10, 10, 12, 12, 12, 12};

// The five figures of a row after the mean: the deviation and the four band values, as
// the super mean and deviation give them (each band a step of one deviation at a time).
struct Bands {
    double stdDev, minus1, plus1, minus2, plus2;
};

Bands bandsOf(const QString &superMeanText, const QString &stdDevText)
{
    const double mean = legacy::toDouble(superMeanText);
    const double sd = legacy::toDouble(stdDevText);
    return {sd, mean - sd, mean + sd, mean - sd - sd, mean + sd + sd};
}

// A label goes in as the text the user reads: a date as M/d/yyyy, a time as h:mm:ss AM/PM.
// The label columns are the charts' X values, and spreadsheet programs label several
// levels of X values from the cells' values, not from their formats: a date value would
// show there as a day number.
void setLabel(Workbook &book, int row, int column, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDate: book.setText(row, column, legacy::defaultDate(value.toDate())); break;
    case QMetaType::QTime: book.setText(row, column, legacy::defaultTime(value.toTime())); break;
    default: book.setText(row, column, value.toString()); break;
    }
}

// A value as a percentage cell: the number a spreadsheet reads and its format.
struct PercentCell {
    double number = 0;
    QString format;
};

PercentCell percentCell(double value)
{
    return {TrackingWorkbook::percentValue(value), TrackingWorkbook::percentFormat(value)};
}

void setPercent(Workbook &book, int row, int column, const PercentCell &cell, std::vector<double> *plotted)
{
    book.setNumber(row, column, cell.number, cell.format);
    if (plotted)
        plotted->push_back(cell.number);
}

// The bands of the super figures of a row. Every row of a table holds the same super
// figures, so they are worked out again only when their texts change.
class RowBands {
public:
    const Bands &control(const QString &meanText, const QString &stdDevText)
    {
        if (!mControlSeen || meanText != mControlMean || stdDevText != mControlStdDev) {
            mControl = bandsOf(meanText, stdDevText);
            mControlMean = meanText;
            mControlStdDev = stdDevText;
            mControlSeen = true;
        }
        return mControl;
    }
    // stdDev, minus1, plus1, minus2, plus2 as percentage cells.
    const std::array<PercentCell, 5> &ratio(const QString &meanText, const QString &stdDevText)
    {
        if (!mRatioSeen || meanText != mRatioMean || stdDevText != mRatioStdDev) {
            const Bands b = bandsOf(meanText, stdDevText);
            mRatio = {percentCell(b.stdDev), percentCell(b.minus1), percentCell(b.plus1), percentCell(b.minus2),
                      percentCell(b.plus2)};
            mRatioMean = meanText;
            mRatioStdDev = stdDevText;
            mRatioSeen = true;
        }
        return mRatio;
    }

private:
    bool mControlSeen = false;
    bool mRatioSeen = false;
    QString mControlMean, mControlStdDev, mRatioMean, mRatioStdDev;
    Bands mControl{};
    std::array<PercentCell, 5> mRatio;
};

void setPlain(Workbook &book, int row, int column, double value, std::vector<double> *plotted)
{
    book.setNumber(row, column, value);
    if (plotted)
        plotted->push_back(value);
}

// The labels of a percentage axis, with as many decimals as its major unit needs (20%,
// 2.8%, 0.32%), so that every label reads as the percentage it stands for.
QString percentAxisFormat(double majorUnit)
{
    const double percent = majorUnit * 100;
    int decimals = 0;
    for (double scaled = percent; decimals < 3 && std::abs(scaled - std::round(scaled)) > 1e-9 * std::max(1.0, scaled);
         scaled *= 10)
        ++decimals;
    return decimals == 0 ? QStringLiteral("0%") : QStringLiteral("0.") + QString(decimals, u'0') + QStringLiteral("%");
}

// One of the two charts: the mean series over the X values, the four bands when asked,
// and a major unit of a fifth of the scale the spreadsheet program will choose.
WorkbookLineChart makeChart(const TrackingChartOptions &options, const QStringList &labels, int lastRow, int meanColumn,
                            const QString &meanName, const QString &title, const QString &axisTitle, double left,
                            const std::vector<double> &plotted, bool percentages)
{
    // By date alone the labels take the column after the dates too.
    const bool byDateAlone = labels.first() == TrackingWorkbook::kDateRead && options.numChecked() == 1;
    const int labelLevels = byDateAlone ? 2 : options.numChecked();

    WorkbookLineChart chart;
    chart.left = left;
    chart.top = 40;
    chart.width = 300;
    // Every level of labels past the second takes room under the plot; the chart grows by
    // as much, so that the lines keep theirs.
    chart.height = 200 + 60 * std::max(0, labelLevels - 2);
    chart.title = title;
    chart.titleFontSize = 8;
    chart.valueAxisTitle = axisTitle;
    // Labels of up to four levels under a chart 300 points wide.
    chart.categoryAxisFontSize = 7;

    WorkbookSeries mean;
    mean.name = meanName;
    mean.values = {kFirstDataRow, meanColumn, lastRow, meanColumn};
    mean.marker = WorkbookMarker::Circle;
    if (byDateAlone)
        mean.categoryAreas = {{kFirstDataRow, 2, lastRow, 2}, {kFirstDataRow, 3, lastRow, 3}};
    else
        mean.categories = WorkbookRange{kFirstDataRow, 2, lastRow, options.numChecked() + 1};
    chart.series.append(mean);

    if (options.stdDev) {
        const char *names[] = {"-Stdev", "+Stdev", "-2xStdev", "+2xStdev"};
        for (int i = 0; i < 4; ++i) {
            WorkbookSeries band;
            band.name = QString::fromLatin1(names[i]);
            const int column = meanColumn + 2 + i;
            band.values = {kFirstDataRow, column, lastRow, column};
            band.dashed = true;
            // A band of one plate is a single point: it shows only as a mark.
            if (lastRow == kFirstDataRow)
                band.marker = WorkbookMarker::Diamond;
            chart.series.append(band);
        }
    }
    const double majorUnit = ValueAxisScale::automatic(plotted).fifthOfSpan();
    chart.valueAxisMajorUnit = majorUnit;
    if (percentages)
        chart.valueAxisNumberFormat = percentAxisFormat(majorUnit);
    return chart;
}

} // namespace

TrackingWorkbook::TrackingWorkbook(Prompt &prompt, Browser &browser, const QString &folder, WorkbookFactory newWorkbook)
    : mPrompt(prompt), mBrowser(browser), mFolder(folder), mNewWorkbook(std::move(newWorkbook))
{
    if (!mNewWorkbook)
        mNewWorkbook = [] { return std::make_unique<OoxmlWorkbook>(); };
}

QStringList TrackingWorkbook::labelOrder(const TrackingChartOptions &options)
{
    const QString names[] = {kPlateName, kRunName, kDateRead, kTimeRead};
    const bool ticked[] = {options.plateName, options.runName, options.date, options.time};
    QStringList first, after;
    for (int i = 0; i < 4; ++i)
        (ticked[i] ? first : after) << names[i];
    return first + after;
}

QVariant TrackingWorkbook::getTrackingField(const RecordSet &rows, const QString &label)
{
    if (label == kRunName)
        return rows.value(u"RunName");
    if (label == kPlateName)
        return rows.value(u"PlateName");
    if (label == kDateRead)
        return rows.value(u"DateRead");
    if (label == kTimeRead)
        return rows.value(u"TimeRead");
    return QVariant();
}

double TrackingWorkbook::percentValue(double value)
{
    if (value == 0)
        return 0.0;
    // The decimal of the text moved two places, so 45.12% is the double nearest 0.4512.
    return (QString::number(value, 'g', 15) + QStringLiteral("E-2")).toDouble();
}

QString TrackingWorkbook::percentFormat(double value)
{
    const QString text = QString::number(value, 'g', 15);
    return text.contains(u'.') || text.contains(u'e') ? QStringLiteral("0.00%") : QStringLiteral("0%");
}

void TrackingWorkbook::fillWorkbook(Workbook &book, const TrackingData &data, const TrackingChartOptions &options,
                                    const QcHistory *qc)
{
    if (qc && qc->runs.size() != size_t(data.rows.recordCount()))
        throw std::invalid_argument("The quality-control history does not hold the plates of the tracking table");
    if (options.numChecked() < 1)
        throw std::invalid_argument("At least one label must be shown on the X axis of the charts");
    RecordSet rows = copyRecordset(data.rows);
    if (rows.recordCount() < 1)
        throw std::invalid_argument("The tracking table has no rows to chart");

    const QStringList labels = labelOrder(options);
    const bool hasRatio = !data.ratioCriticalType.isEmpty();
    const QString &c = data.criticalType;
    const QString &h = data.ratioHeader;

    for (int col = 1; col <= kColumns; ++col)
        book.setBold(kHeadRow, col);
    QStringList heads = {QStringLiteral("Technician")};
    heads << labels << QStringLiteral("Lot Number");
    heads << QStringLiteral("Mean ") + c << c + QStringLiteral(" StdDev") << c + QStringLiteral(" -1xStdDev")
          << c + QStringLiteral(" +1xStdDev") << c + QStringLiteral(" -2xStdDev") << c + QStringLiteral(" +2xStdDev");
    if (hasRatio)
        heads << QStringLiteral("Mean ") + h << h + QStringLiteral(" StdDev") << h + QStringLiteral(" -1xStdDev")
              << h + QStringLiteral(" +1xStdDev") << h + QStringLiteral(" -2xStdDev")
              << h + QStringLiteral(" +2xStdDev");
    for (int col = 1; col <= kColumns; ++col) {
        if (col <= heads.size())
            book.setText(kHeadRow, col, heads[col - 1]);
        book.setColumnWidth(col, kWidths[col - 1]);
    }

    // What each chart plots, for the scale of its value axis.
    std::vector<double> controlPlotted, ratioPlotted;
    std::vector<double> *controlBands = options.stdDev ? &controlPlotted : nullptr;
    std::vector<double> *ratioBands = options.stdDev ? &ratioPlotted : nullptr;

    RowBands bands;
    int row = kFirstDataRow;
    for (rows.moveFirst(); !rows.eof(); rows.moveNext(), ++row) {
        book.setText(row, kTechColumn, rows.text(u"TechName"));
        for (int i = 0; i < 4; ++i)
            setLabel(book, row, kFirstLabelColumn + i, getTrackingField(rows, labels[i]));
        book.setText(row, kLotColumn, rows.text(u"LotNumber"));

        const Bands &control = bands.control(rows.text(u"SuperMeanControl"), rows.text(u"SuperStdDevControl"));
        setPlain(book, row, kControlColumn, legacy::toDouble(rows.text(u"MeanControl")), &controlPlotted);
        setPlain(book, row, kControlColumn + 1, control.stdDev, nullptr);
        setPlain(book, row, kControlColumn + 2, control.minus1, controlBands);
        setPlain(book, row, kControlColumn + 3, control.plus1, controlBands);
        setPlain(book, row, kControlColumn + 4, control.minus2, controlBands);
        setPlain(book, row, kControlColumn + 5, control.plus2, controlBands);

        if (hasRatio) {
            const std::array<PercentCell, 5> &ratio =
                bands.ratio(rows.text(u"SuperMeanCalcRatio"), rows.text(u"SuperStdDevCalcRatio"));
            setPercent(book, row, kRatioColumn, percentCell(legacy::toDouble(rows.text(u"MeanCalcRatio"))),
                       &ratioPlotted);
            setPercent(book, row, kRatioColumn + 1, ratio[0], nullptr);
            for (int i = 1; i < 5; ++i)
                setPercent(book, row, kRatioColumn + 1 + i, ratio[size_t(i)], ratioBands);
        }
    }
    const int lastRow = row - 1;
    if (qc)
        QcWorkbookColumns::write(book, *qc, kHeadRow, kFirstDataRow, kColumns + 1);

    book.addLineChart(makeChart(options, labels, lastRow, kControlColumn, QStringLiteral("Mean ") + c,
                                data.controlChartTitle, QStringLiteral("OD"), 50, controlPlotted, false));
    if (hasRatio)
        book.addLineChart(makeChart(options, labels, lastRow, kRatioColumn, QStringLiteral("Mean ") + h,
                                    data.ratioChartTitle, h, 370, ratioPlotted, true));
}

QString TrackingWorkbook::writeTrackingWorkbook(const TrackingData &data, const TrackingChartOptions &options,
                                                const QStringList &nameParts, const QDateTime &when,
                                                const QcHistory *qc)
{
    std::unique_ptr<Workbook> book = mNewWorkbook();
    fillWorkbook(*book, data, options, qc);
    const QString path = DocumentFolder(mFolder).newFilePath(QStringList{kFileName} + nameParts, when);
    QString error;
    if (!book->save(path, &error))
        throw std::runtime_error(error.toStdString());
    if (!mBrowser.openFile(path)) {
        QFile::remove(path);
        mPrompt.message(Workbook::kNotFoundText, Workbook::kNotFoundTitle, MsgIcon::None);
        return QString();
    }
    return path;
}
