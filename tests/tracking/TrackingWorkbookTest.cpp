// The tracking workbook, read back from the file: the sheet's cells and heads, the charts'
// series, ranges, X values, titles and major unit, and the way out when no program opens it.
#include "TrackingFixture.h"
#include "XlsxReadBack.h"

#include "platform/OoxmlWorkbook.h"
#include "store/DbConnection.h"
#include "tracking/GuideSetStore.h"
#include "tracking/TrackingWorkbook.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cmath>
#include <tuple>

namespace {

// The data of the two Orvexa plates, as the dialog gathers it.
TrackingData orvexaData(TrackingBench &bench)
{
    return bench.gather(orvexaPlates());
}

// Writes the workbook of the data with the options and reads it back.
struct WrittenBook {
    QTemporaryDir dir;
    QString path;
    std::unique_ptr<XlsxReadBack> back;

    WrittenBook(const TrackingData &data, const TrackingChartOptions &options)
    {
        path = dir.filePath(QStringLiteral("tracking.xlsx"));
        OoxmlWorkbook book;
        TrackingWorkbook::fillWorkbook(book, data, options);
        QString error;
        if (!book.save(path, &error))
            ADD_FAILURE() << error.toStdString();
        back = std::make_unique<XlsxReadBack>(path);
    }

    XlsxCell cell(const char *ref) const { return back->cells().value(QString::fromLatin1(ref)); }
    QString chart(int n) const { return QString::fromUtf8(back->part(QStringLiteral("xl/charts/chart%1.xml").arg(n))); }
};

// The references of the chart's series, in order: values ("<c:val>") or X values ("<c:cat>").
QStringList references(const QString &chartXml, const char *part)
{
    QStringList refs;
    const QRegularExpression re(QStringLiteral("<c:%1>.*?<c:f>(.*?)</c:f>").arg(QLatin1String(part)),
                                QRegularExpression::DotMatchesEverythingOption);
    for (auto it = re.globalMatch(chartXml); it.hasNext();)
        refs << it.next().captured(1);
    return refs;
}

QStringList seriesNames(const QString &chartXml)
{
    QStringList names;
    const QRegularExpression re(QStringLiteral("<c:tx><c:v>(.*?)</c:v></c:tx>"));
    for (auto it = re.globalMatch(chartXml); it.hasNext();)
        names << it.next().captured(1);
    return names;
}

QString majorUnit(const QString &chartXml)
{
    const QRegularExpression re(QStringLiteral("<c:majorUnit val=\"([^\"]*)\"/>"));
    return re.match(chartXml).captured(1);
}

TrackingChartOptions ticked(bool plate, bool run, bool date, bool time, bool stdDev = true)
{
    return {plate, run, date, time, stdDev};
}

} // namespace

TEST(TrackingWorkbook, TheSheetHoldsTheTableAsValues)
{
    TrackingBench bench;
    const TrackingData data = orvexaData(bench);
    ASSERT_TRUE(data.ok);
    const WrittenBook book(data, TrackingChartOptions{});
    ASSERT_TRUE(book.back->isValid()) << book.back->error().toStdString();

    EXPECT_TRUE(book.cell("G1").bold);
    EXPECT_FALSE(book.cell("A2").bold);
    // Texts, dates and times as the user reads them (also where they label the X axis); the
    // control figures as numbers: the plate's mean, the deviation, the four bands; the ratio
    // figures as percentages, 72.727% being 0.72727.
    const struct {
        const char *ref, *text;
        double number; // NaN: a text
        const char *format;
    } cells[] = {{"A2", "Ana Ruiz", NAN, ""}, {"B2", "Plate A", NAN, ""},    {"C2", "Run of January", NAN, ""},
                 {"D2", "1/5/2024", NAN, ""}, {"E2", "9:00:00 AM", NAN, ""}, {"E3", "2:30:05 PM", NAN, ""},
                 {"F3", "L-100", NAN, ""},    {"A3", "Ben Okafor", NAN, ""}, {"G2", "", 1.1, ""},
                 {"H2", "", 0.2, ""},         {"I2", "", 0.8, ""},           {"J2", "", 1.2, ""},
                 {"K2", "", 0.6, ""},         {"L2", "", 1.4, ""},           {"G3", "", 0.8, ""},
                 {"H3", "", 0.2, ""},         {"L3", "", 1.4, ""},           {"M2", "", 0.72727, "0.00%"},
                 {"M3", "", 0.625, "0.00%"},  {"N2", "", 0.1, "0%"},         {"O2", "", 0.6, "0%"},
                 {"P2", "", 0.8, "0%"},       {"Q2", "", 0.5, "0%"},         {"R3", "", 0.9, "0%"}};
    for (const auto &c : cells) {
        const XlsxCell cell = book.cell(c.ref);
        EXPECT_EQ(cell.isNumber, !std::isnan(c.number)) << c.ref;
        if (std::isnan(c.number))
            EXPECT_EQ(cell.text, QString::fromUtf8(c.text)) << c.ref;
        else
            EXPECT_NEAR(cell.text.toDouble(), c.number, 1e-12) << c.ref;
        EXPECT_EQ(cell.numberFormat, QString::fromLatin1(c.format)) << c.ref;
    }
    EXPECT_FALSE(book.back->cells().contains(QStringLiteral("A4")));
}

TEST(TrackingWorkbook, TheChartsPlotTheMeansBetweenTheirBands)
{
    TrackingBench bench;
    const TrackingData data = orvexaData(bench);
    const WrittenBook book(data, TrackingChartOptions{});

    const QString control = book.chart(1);
    EXPECT_EQ(seriesNames(control), QStringList({"Mean NC", "-Stdev", "+Stdev", "-2xStdev", "+2xStdev"}));
    EXPECT_EQ(references(control, "val"), QStringList({"Sheet1!$G$2:$G$3", "Sheet1!$I$2:$I$3", "Sheet1!$J$2:$J$3",
                                                       "Sheet1!$K$2:$K$3", "Sheet1!$L$2:$L$3"}));
    EXPECT_EQ(references(control, "cat"), QStringList({"Sheet1!$B$2:$B$3"}));
    EXPECT_TRUE(control.contains(QStringLiteral("<a:t>Control ODs for Test Orvexa 412</a:t>")));
    // The values lie from 0.6 to 1.4: the spreadsheet's own scale is 0 to 1.6.
    EXPECT_EQ(majorUnit(control), QStringLiteral("0.32"));

    const QString ratio = book.chart(2);
    EXPECT_EQ(seriesNames(ratio), QStringList({"Mean %I", "-Stdev", "+Stdev", "-2xStdev", "+2xStdev"}));
    EXPECT_EQ(references(ratio, "val"), QStringList({"Sheet1!$M$2:$M$3", "Sheet1!$O$2:$O$3", "Sheet1!$P$2:$P$3",
                                                     "Sheet1!$Q$2:$Q$3", "Sheet1!$R$2:$R$3"}));
    EXPECT_EQ(references(ratio, "cat"), QStringList({"Sheet1!$B$2:$B$3"}));
    EXPECT_TRUE(ratio.contains(QStringLiteral("<a:t>%I for Test Orvexa 412</a:t>")));
    EXPECT_TRUE(ratio.contains(QStringLiteral("<c:numFmt formatCode=\"0%\" sourceLinked=\"0\"/>")));
    EXPECT_FALSE(control.contains(QStringLiteral("sourceLinked=\"0\"")));
    EXPECT_TRUE(book.chart(3).isEmpty());
}

TEST(TrackingWorkbook, WithoutDeviationsEachChartHasTheMeansAlone)
{
    TrackingBench bench;
    const WrittenBook book(orvexaData(bench), ticked(true, false, false, false, false));
    EXPECT_EQ(seriesNames(book.chart(1)), QStringList({"Mean NC"}));
    EXPECT_EQ(seriesNames(book.chart(2)), QStringList({"Mean %I"}));
    // The scale of the means alone (56% to 74%): a fifth of it, 3.6%, takes a decimal.
    EXPECT_EQ(majorUnit(book.chart(2)), QStringLiteral("0.036"));
    EXPECT_TRUE(book.chart(2).contains(QStringLiteral("<c:numFmt formatCode=\"0.0%\" sourceLinked=\"0\"/>")));
    // The band columns are written all the same.
    EXPECT_NEAR(book.cell("L2").text.toDouble(), 1.4, 1e-12);
}

TEST(TrackingWorkbook, TheTickedLabelsComeFirstAndMakeTheXValues)
{
    TrackingBench bench;
    const TrackingData data = orvexaData(bench);
    const struct {
        TrackingChartOptions options;
        QStringList heads;
        QStringList xValues;
    } cases[] = {
        {ticked(true, false, false, false), {"Plate Name", "Run Name", "Date Read", "Time Read"}, {"Sheet1!$B$2:$B$3"}},
        // By date alone the X values also take the next column, as two areas.
        {ticked(false, false, true, false),
         {"Date Read", "Plate Name", "Run Name", "Time Read"},
         {"(Sheet1!$B$2:$B$3,Sheet1!$C$2:$C$3)"}},
        {ticked(true, true, true, true), {"Plate Name", "Run Name", "Date Read", "Time Read"}, {"Sheet1!$B$2:$E$3"}},
        {ticked(false, true, false, true), {"Run Name", "Time Read", "Plate Name", "Date Read"}, {"Sheet1!$B$2:$C$3"}},
        {ticked(false, false, true, true), {"Date Read", "Time Read", "Plate Name", "Run Name"}, {"Sheet1!$B$2:$C$3"}},
        {ticked(false, false, false, true), {"Time Read", "Plate Name", "Run Name", "Date Read"}, {"Sheet1!$B$2:$B$3"}},
    };
    for (const auto &c : cases) {
        const WrittenBook book(data, c.options);
        const QStringList heads = {book.cell("B1").text, book.cell("C1").text, book.cell("D1").text,
                                   book.cell("E1").text};
        EXPECT_EQ(heads, c.heads);
        EXPECT_EQ(references(book.chart(1), "cat"), c.xValues) << c.heads.join(u',').toStdString();
        EXPECT_EQ(references(book.chart(2), "cat"), c.xValues) << c.heads.join(u',').toStdString();
    }
    // The columns follow their heads: by date alone, B holds the dates and C the plate names.
    const WrittenBook byDate(data, ticked(false, false, true, false));
    EXPECT_EQ(byDate.cell("B2").text, QStringLiteral("1/5/2024"));
    EXPECT_EQ(byDate.cell("C2").text, QStringLiteral("Plate A"));
    EXPECT_EQ(byDate.cell("D3").text, QStringLiteral("Run of January"));
}

TEST(TrackingWorkbook, OnePlateGivesRangesOneCellLong)
{
    TrackingBench bench;
    const TrackingData data =
        bench.gather({readPlate(QStringLiteral("Only"), kOrvexa, QDate(2024, 1, 5),
                                {{"A1", control("NC", "0.950")}, {"B1", control("PC", "0.190")}})});
    ASSERT_TRUE(data.ok);
    const WrittenBook book(data, ticked(true, true, true, true));
    // A range of one cell is written as that cell.
    EXPECT_EQ(references(book.chart(1), "val"),
              QStringList({"Sheet1!$G$2", "Sheet1!$I$2", "Sheet1!$J$2", "Sheet1!$K$2", "Sheet1!$L$2"}));
    EXPECT_EQ(references(book.chart(1), "cat"), QStringList({"Sheet1!$B$2:$E$2"}));
    // The mean and the bands are marked, so that single points show.
    EXPECT_EQ(book.chart(1).count(QStringLiteral("<c:symbol val=\"diamond\"/>")), 4);
}

TEST(TrackingWorkbook, AKitWithoutARatioHasOneChartAndNoRatioColumns)
{
    TrackingBench bench;
    const TrackingData data =
        bench.gather({readPlate(QStringLiteral("K1"), kKestrin, QDate(2024, 1, 5),
                                {{"A1", control("PC", "0.900")}, {"B1", control("PC", "1.100")}}),
                      readPlate(QStringLiteral("K2"), kKestrin, QDate(2024, 1, 6), {{"A1", control("NC", "0.100")}})},
                     kKestrin);
    ASSERT_TRUE(data.ok);
    const WrittenBook book(data, TrackingChartOptions{});

    EXPECT_FALSE(book.chart(1).isEmpty());
    EXPECT_TRUE(book.chart(2).isEmpty());
    EXPECT_EQ(seriesNames(book.chart(1)).first(), QStringLiteral("Mean PC"));
    EXPECT_EQ(book.cell("G1").text, QStringLiteral("Mean PC"));
    // A plate without the control plots -1.
    EXPECT_EQ(book.cell("G3").text.toDouble(), -1.0);
    for (const char *ref : {"M1", "M2", "R3"})
        EXPECT_TRUE(book.cell(ref).text.isEmpty()) << ref;
}

TEST(TrackingWorkbook, OkKeepsEachWorkbookInTheDocumentsFolderUnderItsTestAndTime)
{
    TrackingBench bench;
    bench.january(orvexaPlates());
    const QString first = bench.logic.ok();
    bench.logic.lotNumbers.index = int(bench.logic.lotNumbers.items.indexOf(QStringLiteral("L-100")));
    const QString second = bench.logic.ok();
    EXPECT_EQ(QFileInfo(first).fileName(), QStringLiteral("Control report - Orvexa 412 - 2024-03-09 10-00-00.xlsx"));
    EXPECT_EQ(QFileInfo(second).fileName(),
              QStringLiteral("Control report - Orvexa 412 - L-100 - 2024-03-09 10-00-00.xlsx"));
    EXPECT_EQ(bench.browser.opened, QStringList({first, second}));
    EXPECT_EQ(QFileInfo(first).absolutePath(), QFileInfo(bench.saved.folder().documentsDir()).absoluteFilePath());
    EXPECT_TRUE(QFileInfo::exists(first));
    EXPECT_EQ(bench.prompt.count(), 0);
}

TEST(TrackingWorkbook, WithNoProgramToOpenItTheUserIsToldAndNoFileStays)
{
    TrackingBench bench;
    bench.browser.canOpen = false;
    bench.january(orvexaPlates());
    EXPECT_TRUE(bench.logic.ok().isEmpty());
    ASSERT_EQ(bench.prompt.count(), 1);
    EXPECT_EQ(bench.prompt.last().title, QStringLiteral("Microsoft Excel not found."));
    EXPECT_EQ(
        bench.prompt.last().text,
        QStringLiteral("Unable to export data.  Make sure you have Microsoft Excel version 5.0 or higher installed."));
    ASSERT_EQ(bench.browser.opened.size(), 1);
    EXPECT_FALSE(QFileInfo::exists(bench.browser.opened.first()));
}

TEST(TrackingWorkbook, AFileThatCannotBeWrittenIsReported)
{
    TrackingBench bench;
    const TrackingData data = orvexaData(bench);
    QTemporaryDir dir;
    // A folder that is a file can't take the workbook.
    TempProgramFolder::writeFile(dir.filePath(QStringLiteral("blocked")), "x");
    TrackingWorkbook writer(bench.prompt, bench.browser, dir.filePath(QStringLiteral("blocked")));
    EXPECT_THROW(writer.writeTrackingWorkbook(data, TrackingChartOptions{}, {kOrvexa}, QDateTime::currentDateTime()),
                 std::runtime_error);
    EXPECT_TRUE(bench.browser.opened.isEmpty());
}

TEST(TrackingWorkbook, APercentIsTheTextOfTheNumberReadAsAPercentage)
{
    EXPECT_EQ(TrackingWorkbook::percentValue(-1), -0.01);
    EXPECT_EQ(TrackingWorkbook::percentFormat(-1), QStringLiteral("0%"));
    // 70.0 - 10.1 carries binary noise that the 15-digit text drops.
    EXPECT_EQ(TrackingWorkbook::percentValue(70.0 - 10.1), 0.599);
}

TEST(TrackingWorkbook, WithWestgardRulesTheSheetAlsoHoldsTheGuideSetLinesAndEachPlatesViolations)
{
    TrackingBench bench;
    bench.saved.saveRun(QStringLiteral("Run of January"), orvexaPlates());
    {
        DbConnection db(bench.saved.temp().databaseLocation());
        for (const auto &[quantity, mean, sd] : {std::tuple{"NC", 1.0, 0.1}, std::tuple{"PC", 0.25, 0.01}}) {
            GuideSet set;
            set.testName = kOrvexa;
            set.quantity = QString::fromLatin1(quantity);
            set.mean = mean;
            set.sd = sd;
            set.start = QDate(2024, 1, 1);
            GuideSetStore::add(db, set);
        }
    }
    bench.choose(kOrvexa, QStringLiteral("1/1/2024"), QStringLiteral("1/31/2024"));
    bench.logic.chkWestgard = true;
    const QString path = bench.logic.ok();
    ASSERT_FALSE(path.isEmpty());
    const XlsxReadBack back(path);
    auto cell = [&](const char *ref) { return back.cells().value(QString::fromLatin1(ref)).text; };

    // The table as without the rules, then from S: PC, its guide mean and -3 to +3 SD; the
    // same for NC and %I (no guide set: empty lines); then the violations.
    EXPECT_EQ(cell("G2").toDouble(), 1.1);
    EXPECT_EQ(cell("S1"), QStringLiteral("PC"));
    EXPECT_EQ(cell("T1"), QStringLiteral("PC Guide Mean"));
    EXPECT_EQ(cell("U1"), QStringLiteral("PC -3SD"));
    EXPECT_EQ(cell("Z1"), QStringLiteral("PC +3SD"));
    EXPECT_NEAR(cell("S3").toDouble(), 0.3, 1e-12);
    EXPECT_NEAR(cell("U3").toDouble(), 0.22, 1e-12);
    EXPECT_NEAR(cell("Z3").toDouble(), 0.28, 1e-12);
    EXPECT_EQ(cell("AA1"), QStringLiteral("NC"));
    EXPECT_NEAR(cell("AA3").toDouble(), 0.8, 1e-12);
    EXPECT_NEAR(cell("AB3").toDouble(), 1.0, 1e-12);
    EXPECT_EQ(cell("AI1"), QStringLiteral("%I"));
    EXPECT_TRUE(cell("AJ2").isEmpty());
    EXPECT_EQ(cell("AQ1"), QStringLiteral("Violations"));
    // Plate A: PC at +5 SD. Plate B: PC again (2-2s), NC at -2 SD (the range of the run is
    // 7 SD); the warnings after the rejections.
    EXPECT_EQ(cell("AQ2"), QStringLiteral("1-3s PC; warning 1-2s PC"));
    EXPECT_EQ(cell("AQ3"), QStringLiteral("1-3s PC, 2-2s PC, R-4s; warning 1-2s PC/NC"));
    EXPECT_EQ(bench.prompt.count(), 0);

    // A kit without a guide set: the user is told and gets the plain report.
    bench.saved.saveRun(QStringLiteral("Run"), {readPlate(QStringLiteral("K1"), kKestrin, QDate(2024, 1, 5),
                                                          {{"A1", control("PC", "0.900")}})});
    bench.choose(kKestrin, QStringLiteral("1/1/2024"), QStringLiteral("1/31/2024"));
    const XlsxReadBack plain(bench.logic.ok());
    EXPECT_EQ(bench.prompt.last().title, TrackControlsLogic::kNoGuideSetTitle);
    EXPECT_FALSE(plain.cells().contains(QStringLiteral("S1")));
}
