// Gathering the tracking data of saved plates: which plates count, the figures of the
// tracking table, and the boxes on the ways out with nothing to report.
#include "TrackingFixture.h"
#include "XlsxReadBack.h"

#include "store/DbConnection.h"
#include "tracking/ControlTracking.h"

#include <gtest/gtest.h>

namespace {

const QString kNoDataTitle = QStringLiteral("Specified Data Not Available");
const QString kNoDataText = QStringLiteral("There is no saved test data to report that fits this specification.");

// The values of one field in every row of the table, in order.
QStringList column(const RecordSet &table, const char *field)
{
    RecordSet rows = copyRecordset(table);
    QStringList values;
    for (rows.moveFirst(); !rows.eof(); rows.moveNext())
        values << rows.text(QString::fromLatin1(field));
    return values;
}

void expectOnlyNoDataBox(const FakePrompt &prompt)
{
    ASSERT_EQ(prompt.count(), 1) << prompt.texts().join(u'|').toStdString();
    EXPECT_EQ(prompt.last(), (PromptBox{kNoDataTitle, kNoDataText}));
}

} // namespace

TEST(GatherTrackingData, TheTableHoldsEachPlateAndTheSuperFiguresOfAllWells)
{
    TrackingBench bench;
    const TrackingData data = bench.gather(orvexaPlates());
    ASSERT_TRUE(data.ok);
    EXPECT_EQ(bench.prompt.count(), 0);
    EXPECT_EQ(data.rows.position(), 0);
    EXPECT_EQ(column(data.rows, "TechName"), QStringList({"Ana Ruiz", "Ben Okafor"}));

    // Per plate, the critical control is NC: plate A (1.0 + 1.2) / 2, plate B 0.8 alone (the
    // excluded PC and the "pc" in lower case don't count anywhere).
    EXPECT_EQ(column(data.rows, "MeanControl"), QStringList({"1.100", ".800"}));
    // %I of each PC with the plate's own NC mean: on A, (1 - 0.2 / 1.1) x 100 and
    // (1 - 0.4 / 1.1) x 100 give 72.727 on average; on B, (1 - 0.3 / 0.8) x 100 is 62.5.
    EXPECT_EQ(column(data.rows, "MeanCalcRatio"), QStringList({"72.727", "62.500"}));
    // Over wells, not plate means: NC (1.0 + 1.2 + 0.8) / 3 = 1.0, deviation 0.2; the %I of
    // the three PCs with the super means (NC 1.0): 80, 60 and 70, mean 70, deviation 10.
    EXPECT_EQ(column(data.rows, "SuperMeanControl"), QStringList({"1.000", "1.000"}));
    EXPECT_EQ(column(data.rows, "SuperStdDevControl"), QStringList({".200", ".200"}));
    EXPECT_EQ(column(data.rows, "SuperMeanCalcRatio"), QStringList({"70.000", "70.000"}));
    EXPECT_EQ(column(data.rows, "SuperStdDevCalcRatio"), QStringList({"10.000", "10.000"}));
}

TEST(GatherTrackingData, PlatesComeInTheOrderTheyWereRead)
{
    TrackingBench bench;
    const auto plate = [](const char *name, QDate date, QTime time) {
        return readPlate(QString::fromLatin1(name), kOrvexa, date, {{"A1", control("NC", "1.000")}},
                         QStringLiteral("L-100"), QStringLiteral("Ana Ruiz"), time);
    };
    bench.saved.saveRun(QStringLiteral("Late run"), {plate("Late", QDate(2024, 2, 1), QTime(8, 0)),
                                                     plate("Early afternoon", QDate(2024, 1, 3), QTime(13, 0))});
    bench.saved.saveRun(QStringLiteral("Early run"), {plate("Early morning", QDate(2024, 1, 3), QTime(7, 15))});
    bench.choose(kOrvexa, QStringLiteral("1/1/2024"), QStringLiteral("3/9/2024"));

    const TrackingData data = bench.logic.gatherTrackingData();
    ASSERT_TRUE(data.ok);
    EXPECT_EQ(column(data.rows, "PlateName"), QStringList({"Early morning", "Early afternoon", "Late"}));
}

TEST(GatherTrackingData, DatesAreComparedAsDatesWithBothEndsIncluded)
{
    TrackingBench bench;
    const auto plate = [](const char *name, QDate date) {
        return readPlate(QString::fromLatin1(name), kOrvexa, date, {{"A1", control("NC", "1.000")}});
    };
    bench.saved.saveRun(QStringLiteral("Turn of the year"),
                        {plate("Before", QDate(2023, 12, 30)), plate("First day", QDate(2023, 12, 31)),
                         plate("Between", QDate(2024, 1, 1)), plate("Last day", QDate(2024, 1, 2)),
                         plate("After", QDate(2024, 1, 3)), plate("Long after", QDate(2024, 10, 1))});
    // As texts, "12/31/2023" sorts after "1/2/2024"; as dates it comes first.
    bench.choose(kOrvexa, QStringLiteral("12/31/2023"), QStringLiteral("1/2/2024"));
    TrackingData data = bench.logic.gatherTrackingData();
    ASSERT_TRUE(data.ok);
    EXPECT_EQ(column(data.rows, "PlateName"), QStringList({"First day", "Between", "Last day"}));

    // A range of one day passes.
    bench.logic.monthRange = {QStringLiteral("1"), QStringLiteral("1")};
    bench.logic.dayRange = {QStringLiteral("1"), QStringLiteral("1")};
    bench.logic.yearRange = {QStringLiteral("2024"), QStringLiteral("2024")};
    data = bench.logic.gatherTrackingData();
    ASSERT_TRUE(data.ok);
    EXPECT_EQ(column(data.rows, "PlateName"), QStringList({"Between"}));
    EXPECT_EQ(bench.prompt.count(), 0);
}

TEST(GatherTrackingData, ALotOrTechnicianNarrowsThePlatesAndMatchingNothingHasNoDataToReport)
{
    TrackingBench bench;
    QList<TestPlate> plates = orvexaPlates();
    plates[1].lotNumber = QStringLiteral("O'Neil 7");
    bench.saved.saveRun(QStringLiteral("Run of January"), plates);
    bench.saved.addTechnician(QStringLiteral("Ana Ruiz"));
    bench.saved.addTechnician(QStringLiteral("Cleo Tran"));
    bench.saved.saveRun(QStringLiteral("Other kit"),
                        {readPlate(QStringLiteral("KSV plate"), kKestrin, QDate(2024, 1, 5),
                                   {{"A1", control("PC", "0.900")}}, QStringLiteral("K-9"))});
    bench.choose(kOrvexa, QStringLiteral("1/1/2024"), QStringLiteral("1/31/2024"));

    // A lot of another kit.
    bench.logic.lotNumbers.index = int(bench.logic.lotNumbers.items.indexOf(QStringLiteral("K-9")));
    ASSERT_GT(bench.logic.lotNumbers.index, 0);
    EXPECT_TRUE(bench.logic.ok().isEmpty());
    expectOnlyNoDataBox(bench.prompt);
    EXPECT_TRUE(bench.browser.opened.isEmpty());

    // A technician with no plate of the kit.
    bench.prompt.clearBoxes();
    bench.logic.lotNumbers.index = 0;
    bench.logic.technicians.index = int(bench.logic.technicians.items.indexOf(QStringLiteral("Cleo Tran")));
    ASSERT_GT(bench.logic.technicians.index, 0);
    EXPECT_TRUE(bench.logic.ok().isEmpty());
    expectOnlyNoDataBox(bench.prompt);

    // The technician who read plate A: that plate alone; the lot of plate B: that plate alone.
    bench.logic.technicians.index = int(bench.logic.technicians.items.indexOf(QStringLiteral("Ana Ruiz")));
    EXPECT_EQ(column(bench.logic.gatherTrackingData().rows, "PlateName"), QStringList({"Plate A"}));
    bench.logic.technicians.index = 0;
    bench.logic.lotNumbers.index = int(bench.logic.lotNumbers.items.indexOf(QStringLiteral("O'Neil 7")));
    EXPECT_EQ(column(bench.logic.gatherTrackingData().rows, "PlateName"), QStringList({"Plate B"}));
}

TEST(GatherTrackingData, ADateThatIsNoDateOrAStartAfterTheEndIsAnInvalidRange)
{
    TrackingBench bench;
    bench.saved.saveRun(QStringLiteral("Run"), orvexaPlates());
    const struct {
        const char *month, *day, *year;
    } bad[] = {{"2", "30", "2024"}, {"13", "1", "2024"}, {"", "1", "2024"}, {"1", "x", "2024"}, {"1", "1", "20.4"}};
    for (const auto &b : bad) {
        bench.choose(kOrvexa, QStringLiteral("1/1/2024"), QStringLiteral("1/31/2024"));
        bench.logic.monthRange[1] = QString::fromLatin1(b.month);
        bench.logic.dayRange[1] = QString::fromLatin1(b.day);
        bench.logic.yearRange[1] = QString::fromLatin1(b.year);
        bench.prompt.clearBoxes();
        EXPECT_FALSE(bench.logic.gatherTrackingData().ok) << b.month << "/" << b.day << "/" << b.year;
        ASSERT_EQ(bench.prompt.count(), 1);
        EXPECT_EQ(bench.prompt.last().text, QStringLiteral("The date range is invalid"));
    }
    // A start after the end: the date box, then the one of no data, and no workbook.
    bench.choose(kOrvexa, QStringLiteral("1/7/2024"), QStringLiteral("1/6/2024"));
    bench.prompt.clearBoxes();
    EXPECT_TRUE(bench.logic.ok().isEmpty());
    EXPECT_EQ(bench.prompt.boxes(),
              (QList<PromptBox>{{u"Date range is invalid."_qs, u"The date range is invalid"_qs, MsgIcon::Exclamation},
                                {kNoDataTitle, kNoDataText}}));
    EXPECT_TRUE(bench.browser.opened.isEmpty());
}

TEST(GatherTrackingData, AKitWithoutARatioLeavesTheRatioMeansAtZero)
{
    TrackingBench bench;
    const TrackingData data =
        bench.gather({readPlate(QStringLiteral("K1"), kKestrin, QDate(2024, 1, 5),
                                {{"A1", control("PC", "0.900")},
                                 {"B1", control("PC", "1.100")},
                                 {"C1", control("NC", "0.100")},
                                 {"D1", sample("Calf 2", "0.400")}}),
                      readPlate(QStringLiteral("K2"), kKestrin, QDate(2024, 1, 6), {{"A1", control("PC", "1.000")}})},
                     kKestrin);
    ASSERT_TRUE(data.ok);
    EXPECT_EQ(data.criticalType, QStringLiteral("PC"));
    EXPECT_TRUE(data.ratioCriticalType.isEmpty());
    EXPECT_EQ(column(data.rows, "MeanCalcRatio"), QStringList({".000", ".000"}));
    EXPECT_EQ(column(data.rows, "MeanControl"), QStringList({"1.000", "1.000"}));
    // No well is the ratio control of such a kit.
    EXPECT_EQ(column(data.rows, "SuperMeanCalcRatio"), QStringList({"-1.000", "-1.000"}));
    EXPECT_EQ(column(data.rows, "SuperStdDevCalcRatio"), QStringList({".000", ".000"}));
    EXPECT_EQ(column(data.rows, "SuperStdDevControl"), QStringList({".100", ".100"}));
}

TEST(GatherTrackingData, APlateWithAllCriticalWellsExcludedReadsMinusOne)
{
    TrackingBench bench;
    QList<TestPlate> plates = orvexaPlates();
    plates[1].wells[QStringLiteral("A1")].flag = 0; // its only NC
    const TrackingData data = bench.gather(plates);
    ASSERT_TRUE(data.ok);
    EXPECT_EQ(column(data.rows, "MeanControl"), QStringList({"1.100", "-1.000"}));
    // The plate's ratio is figured with its NC mean of -1: (1 - 0.3 / -1) x 100.
    EXPECT_EQ(column(data.rows, "MeanCalcRatio")[1], QStringLiteral("130.000"));
    // The super NC is that of plate A alone.
    EXPECT_EQ(column(data.rows, "SuperMeanControl")[0], QStringLiteral("1.100"));
}

TEST(GatherTrackingData, APlateOfAnyVersionCounts)
{
    TrackingBench bench;
    TestPlate kept = readPlate(QStringLiteral("Kept"), kOrvexa, QDate(2024, 1, 5),
                               {{"A1", control("NC", "1.000", 2)}, {"B1", control("NC", "0.600")}});
    kept.version = QStringLiteral("1.2.0");
    TestPlate unversioned =
        readPlate(QStringLiteral("Never validated"), kOrvexa, QDate(2024, 1, 6), {{"A1", control("NC", "0.500")}});
    bench.saved.saveRun(QStringLiteral("Run"), {kept, unversioned});
    {
        const DbConnection db = bench.saved.temp().open();
        db.execute(QStringLiteral("UPDATE Plates SET LastVersionValidated = NULL WHERE PlateName = ?"),
                   {QStringLiteral("Never validated")});
    }
    bench.choose(kOrvexa, QStringLiteral("1/1/2024"), QStringLiteral("1/31/2024"));
    const TrackingData data = bench.logic.gatherTrackingData();
    ASSERT_TRUE(data.ok);
    EXPECT_EQ(column(data.rows, "MeanControl"), QStringList({".800", ".500"}));
}

TEST(GatherTrackingData, APlateThatCannotBeReadIsNamedAndNothingIsWritten)
{
    TrackingBench bench;
    QList<TestPlate> plates = orvexaPlates();
    plates[1].wells[QStringLiteral("A1")].od = QStringLiteral("OVER");
    bench.january(plates);
    try {
        bench.logic.ok();
        FAIL() << "a control OD that is not a number must stop the report";
    } catch (const TrackingDataError &e) {
        EXPECT_EQ(QString::fromUtf8(e.what()),
                  QStringLiteral("The plate \"Plate B\" of run \"Run of January\" can't be tracked: the OD of control "
                                 "well A1 (\"OVER\") is not a number."));
    }
    EXPECT_TRUE(bench.browser.opened.isEmpty());
    EXPECT_EQ(bench.prompt.count(), 0);
}

TEST(GatherTrackingData, ARatioDividingByZeroIsNamed)
{
    TrackingBench bench;
    bench.january({readPlate(QStringLiteral("Zero NC"), kOrvexa, QDate(2024, 1, 5),
                             {{"A1", control("NC", "0.000")}, {"B1", control("PC", "0.100")}})});
    try {
        bench.logic.gatherTrackingData();
        FAIL() << "a ratio over a mean of 0 must stop the report";
    } catch (const TrackingDataError &e) {
        EXPECT_TRUE(QString::fromUtf8(e.what()).contains(QStringLiteral("\"Zero NC\" of run \"Run of January\"")));
    }
}
