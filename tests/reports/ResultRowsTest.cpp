#include "FakePrompt.h"
#include "QtPrinters.h"
#include "ReportFixtures.h"

#include "core/WellList.h"
#include "reports/ReportText.h"
#include "reports/clsReport.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace {

const QString kRun = QStringLiteral("Spring Run");

struct RowsFixture : ::testing::Test {
    QTemporaryDir dir;
    FakePrompt prompt;
    clsReport report{prompt, dir.filePath(QStringLiteral("TempHTML.htm"))};

    RecordSet rows(const QList<TestPlate> &plates, qint16 replicatesMode = 0, const QString &groupName = QString())
    {
        return report.buildResultRows(plateRecordSet(plates), kRun, replicatesMode, QString(), groupName);
    }
};

QStringList column(const RecordSet &rows, const char *field)
{
    QStringList values;
    for (int r = 0; r < rows.recordCount(); ++r)
        values << rows.valueAt(r, QString::fromLatin1(field)).toString();
    return values;
}

// A passing Orvexa plate with the wells given besides its controls (NC 1.000, 0.900; PC 0.200).
TestPlate orvexaWith(const QMap<QString, TestWell> &samples)
{
    TestPlate p = fixtures::orvexaPlate();
    p.wells = {
        {QStringLiteral("A1"), {QStringLiteral("NC"), QString(), QStringLiteral("1.000"), QString()}},
        {QStringLiteral("B1"), {QStringLiteral("NC"), QString(), QStringLiteral("0.900"), QString()}},
        {QStringLiteral("C1"), {QStringLiteral("PC"), QString(), QStringLiteral("0.200"), QString()}},
    };
    for (auto it = samples.begin(); it != samples.end(); ++it)
        p.wells.insert(it.key(), it.value());
    return p;
}

TestWell sample(const char *name, const char *group, const char *od = "0.500", const char *result = "POS", int flag = 1)
{
    return {QString::fromUtf8(name), QString::fromUtf8(group), QString::fromUtf8(od), QString::fromUtf8(result), flag};
}

} // namespace

TEST_F(RowsFixture, OneRowPerSampleWellInPlateAndWellOrderWithThePlateData)
{
    const RecordSet r = report.buildResultRows(fixtures::springRun(), kRun, 0, QString(), QString());
    ASSERT_EQ(r.recordCount(), 6);
    EXPECT_EQ(r.fieldNames(), clsReport::resultFields());
    EXPECT_EQ(column(r, "PlatePosition"), (QStringList{"D1", "E1", "F1", "G1", "A2", "C1"}));
    EXPECT_EQ(column(r, "Group"), (QStringList{"Herd B", "Herd A", "Herd A", "Herd A", "No Group", "Herd A"}));
    EXPECT_EQ(column(r, "Sample"), (QStringList{"S10", "S2", "S1", "S2", "S3", "S1"}));
    EXPECT_EQ(column(r, "OD"), (QStringList{"0.500", "0.800", "0.300", "0.700", "0.100", "0.250"}));
    EXPECT_EQ(column(r, "Result"), (QStringList{"POS", "NEG", "POS", "NEG", "POS", ""}));
    EXPECT_EQ(column(r, "RunName"), QStringList(6, kRun));
    EXPECT_EQ(r.valueAt(0, u"TestName"), QVariant(QStringLiteral("Orvexa 412")));
    EXPECT_EQ(r.valueAt(0, u"DateRead"), QVariant(QDate(2026, 11, 23)));
    EXPECT_EQ(r.valueAt(0, u"TimeRead"), QVariant(QTime(9, 30, 0)));
    EXPECT_EQ(r.valueAt(0, u"LastVersionValidated"), QVariant(QStringLiteral("1.5.4")));
    EXPECT_EQ(r.valueAt(5, u"PlateName"), QVariant(QStringLiteral("Plate #2")));
}

TEST_F(RowsFixture, NumericSampleIsTheRankOfTheFirstEntryOfTheName)
{
    const RecordSet r = report.buildResultRows(fixtures::springRun(), kRun, 0, QString(), QString());
    // Ranked: S1 S1 S2 S2 S3 S10.
    EXPECT_EQ(column(r, "NumericSample"), (QStringList{"6", "3", "1", "3", "5", "1"}));
}

TEST_F(RowsFixture, ATableOfOneRowHasNoNumericSample)
{
    const RecordSet r = rows({orvexaWith({{"D1", sample("S1", "G")}})});
    ASSERT_EQ(r.recordCount(), 1);
    EXPECT_TRUE(r.valueAt(0, u"NumericSample").isNull());
    RecordSet sorted = r;
    sorted.sort(clsReport::customerSort(true));
    EXPECT_EQ(sorted.recordCount(), 1);
}

TEST_F(RowsFixture, CriticalODAndRatioComeFromTheControlsOfAValidatedPlate)
{
    const RecordSet r = rows({orvexaWith({{"D1", sample("S1", "G", "0.300")}})});
    EXPECT_EQ(r.valueAt(0, u"CriticalOD"), QVariant(QStringLiteral("0.950")));
    EXPECT_EQ(r.valueAt(0, u"CalcRatio"), QVariant(QStringLiteral("68.4%")));
}

TEST_F(RowsFixture, APlateThatFailsValidationHasNoRatioButKeepsItsCriticalOD)
{
    // An NC mean of 0.30 is below the kit's range.
    TestPlate p = orvexaWith({{"D1", sample("S1", "G", "0.100")}});
    p.wells[QStringLiteral("A1")].od = QStringLiteral("0.300");
    p.wells[QStringLiteral("B1")].od = QStringLiteral("0.300");
    const RecordSet r = rows({p});
    EXPECT_EQ(r.valueAt(0, u"CriticalOD"), QVariant(QStringLiteral("0.300")));
    EXPECT_EQ(r.valueAt(0, u"CalcRatio"), QVariant(QString()));
    EXPECT_FALSE(r.valueAt(0, u"CalcRatio").isNull());
}

TEST_F(RowsFixture, AGenericPlateHasNoRatioAndTheMeanOfItsIncludedPCs)
{
    const RecordSet r = rows({fixtures::genericPlate()});
    EXPECT_EQ(r.valueAt(0, u"CalcRatio"), QVariant(QString()));
    EXPECT_EQ(r.valueAt(0, u"CriticalOD"), QVariant(QStringLiteral("0.500")));
}

TEST_F(RowsFixture, WithEveryCriticalControlExcludedCriticalODIsNullAndTheWellsStillReport)
{
    TestPlate p = orvexaWith({{"D1", sample("S1", "G")}});
    p.wells[QStringLiteral("A1")].flag = 0;
    p.wells[QStringLiteral("B1")].flag = 0;
    const RecordSet r = rows({p});
    ASSERT_EQ(r.recordCount(), 1);
    EXPECT_TRUE(r.valueAt(0, u"CriticalOD").isNull());
    EXPECT_EQ(r.valueAt(0, u"CalcRatio"), QVariant(QString()));
    EXPECT_EQ(r.valueAt(0, u"Result"), QVariant(QStringLiteral("POS")));
}

TEST_F(RowsFixture, ControlsCountWithoutRegardToCaseButOnlyExactNamesAreLeftOut)
{
    TestPlate p = orvexaWith({{"D1", sample("nc", "G", "0.950", "NEG")}});
    p.wells[QStringLiteral("A1")].flag = 0;
    p.wells[QStringLiteral("B1")].flag = 0;
    const RecordSet r = rows({p});
    // "nc" is counted as an included NC (mean 0.950), and reported as a sample.
    ASSERT_EQ(r.recordCount(), 1);
    EXPECT_EQ(r.valueAt(0, u"Sample"), QVariant(QStringLiteral("nc")));
    EXPECT_EQ(r.valueAt(0, u"CriticalOD"), QVariant(QStringLiteral("0.950")));
}

TEST_F(RowsFixture, AnExcludedSampleIsStillReported)
{
    const RecordSet r = rows({orvexaWith({{"D1", sample("S1", "G", "0.500", "POS", 0)}})});
    EXPECT_EQ(r.recordCount(), 1);
}

TEST_F(RowsFixture, AnUnreadPlateGivesNoRowsAndIsNotWorkedOn)
{
    // Its control ODs are empty: working them out would fail.
    EXPECT_EQ(rows({fixtures::unreadPlate()}).recordCount(), 0);
    EXPECT_EQ(rows({fixtures::unreadPlate()}, 1).recordCount(), 0);
    EXPECT_EQ(prompt.count(), 0);
}

TEST_F(RowsFixture, APlateWithNoTestIsNotLookedAt)
{
    TestPlate p = fixtures::genericPlate();
    p.testName.clear();
    p.wells[QStringLiteral("A1")].od = QStringLiteral("not a number");
    EXPECT_EQ(rows({p}).recordCount(), 0);
}

TEST_F(RowsFixture, IndividualModeReportsEveryWellOfASharedName)
{
    const RecordSet r = rows({orvexaWith({{"D1", sample("S1", "G")}, {"E1", sample("S1", "G")}})});
    EXPECT_EQ(r.recordCount(), 2);
}

TEST_F(RowsFixture, TooFewControlsKeepTheStoredResultInIndividualMode)
{
    TestPlate p = orvexaWith({{"D1", sample("S1", "G", "0.900", "STORED")}});
    p.wells.remove(QStringLiteral("C1"));
    const RecordSet r = rows({p});
    EXPECT_EQ(r.valueAt(0, u"Result"), QVariant(QStringLiteral("STORED")));
    EXPECT_EQ(r.valueAt(0, u"CalcRatio"), QVariant(QString()));
}

TEST_F(RowsFixture, ReplicatesMergeLikeNamesOfOneGroupOnly)
{
    const RecordSet r = rows({orvexaWith({{"D1", sample("S1", "A", "0.100")},
                                          {"E1", sample("S1", "B", "0.200")},
                                          {"F1", sample("s1", "A", "0.300")},
                                          {"G1", sample("S1", "A", "0.400")},
                                          {"H1", sample("S2", "A", "0.200")}})},
                             1);
    EXPECT_EQ(column(r, "PlatePosition"), (QStringList{"D1", "E1", "F1", "H1"}));
    EXPECT_EQ(column(r, "OD"), (QStringList{"0.25", "0.2", "0.3", "0.2"}));
    // Results and ratios rest on the means: 0.25 against an NC mean of 0.95 is 73.68% inhibition.
    EXPECT_EQ(r.valueAt(0, u"Result"), QVariant(QStringLiteral("POS")));
    EXPECT_EQ(r.valueAt(0, u"CalcRatio"), QVariant(QStringLiteral("73.6%")));
}

TEST_F(RowsFixture, AGroupNameLeavesOutWellsOfOtherGroupsAndOfNoGroup)
{
    const RecordSet r = rows({fixtures::orvexaPlate()}, 0, QStringLiteral("Herd A"));
    EXPECT_EQ(column(r, "PlatePosition"), (QStringList{"E1", "F1", "G1"}));
    EXPECT_FALSE(column(r, "Group").contains(QStringLiteral("No Group")));
}

TEST_F(RowsFixture, OnePlateByName)
{
    const RecordSet r = report.buildResultRows(fixtures::springRun(), kRun, 0, QStringLiteral("Plate #2"), QString());
    EXPECT_EQ(column(r, "PlateName"), (QStringList{"Plate #2"}));
    EXPECT_THROW(report.buildResultRows(fixtures::springRun(), kRun, 0, QStringLiteral("Nope"), QString()), ReportError);
}

TEST_F(RowsFixture, TheInputIsOnlyRead)
{
    const RecordSet plates = plateRecordSet({orvexaWith({{"D1", sample("S1", "A", "0.100")}, {"E1", sample("S1", "A", "0.400")}})});
    const RecordSet before = copyRecordset(plates);
    report.buildResultRows(plates, kRun, 1, QString(), QString());
    for (const QString &field : plates.fieldNames())
        EXPECT_EQ(plates.valueAt(0, field), before.valueAt(0, field)) << field.toStdString();
}

TEST(ReportControls, CountMeanAndCVOfIncludedControls)
{
    QStringList samples(96), flags(96, QStringLiteral("1")), ods(96);
    samples[0] = QStringLiteral("PC");
    ods[0] = QStringLiteral("0.200");
    samples[1] = QStringLiteral("pc");
    ods[1] = QStringLiteral("0.400");
    samples[2] = QStringLiteral("PC");
    ods[2] = QStringLiteral("9.000");
    flags[2] = QStringLiteral("0");
    samples[3] = QStringLiteral("PC");
    ods[3] = QStringLiteral("0.600");
    flags[3] = QStringLiteral("2"); // kept by hand
    EXPECT_EQ(clsReport::countIncludedControls(samples, flags, QStringLiteral("PC")), 3);
    EXPECT_DOUBLE_EQ(clsReport::reportControlMean(samples, flags, ods, QStringLiteral("pc")), 0.4);
    FakePrompt prompt;
    clsReport report(prompt, QString());
    EXPECT_DOUBLE_EQ(report.reportControlCV(samples, flags, ods, QStringLiteral("PC")), 50.0);
    EXPECT_THROW(clsReport::reportControlMean(samples, flags, ods, QStringLiteral("NC")), ReportError);
}

TEST(ReportControls, WellPositionsRunDownTheColumns)
{
    const QStringList &p = clsReport::getWellPositions();
    ASSERT_EQ(p.size(), 96);
    EXPECT_EQ(p[0], QStringLiteral("A1"));
    EXPECT_EQ(p[1], QStringLiteral("B1"));
    EXPECT_EQ(p[7], QStringLiteral("H1"));
    EXPECT_EQ(p[8], QStringLiteral("A2"));
    EXPECT_EQ(p[95], QStringLiteral("H12"));
}

TEST(ReportSortStrings, AsTheReportsUseThem)
{
    EXPECT_EQ(clsReport::customerSort(false), QStringLiteral("Group ASC, Testname ASC, DateRead ASC"));
    EXPECT_EQ(clsReport::customerSort(true), QStringLiteral("Group ASC, NumericSample ASC, Testname ASC, DateRead ASC"));
    EXPECT_EQ(clsReport::analyticalSort(false), QStringLiteral("Group ASC, Testname ASC, PlateName"));
    EXPECT_EQ(clsReport::analyticalSort(true), QStringLiteral("Group ASC, Testname ASC, PlateName, NumericSample ASC"));
}

TEST(ReportText, LegacyNumberTextHasFifteenSignificantDigits)
{
    EXPECT_EQ(ReportText::legacyNumberText(0.7 / 3), QStringLiteral("0.233333333333333"));
    EXPECT_EQ(ReportText::legacyNumberText(0.2), QStringLiteral("0.2"));
    EXPECT_EQ(ReportText::legacyNumberText(1.5), QStringLiteral("1.5"));
    EXPECT_EQ(ReportText::legacyNumberText(-0.05), QStringLiteral("-0.05"));
    EXPECT_EQ(ReportText::legacyNumberText(2.0), QStringLiteral("2"));
    EXPECT_EQ(ReportText::legacyNumberText(-0.0), QStringLiteral("0"));
    EXPECT_EQ(ReportText::legacyNumberText(0.0001), QStringLiteral("0.0001"));
    EXPECT_EQ(ReportText::legacyNumberText(0.00001), QStringLiteral("1E-05"));
    EXPECT_EQ(ReportText::legacyNumberText(123456789012345.0), QStringLiteral("123456789012345"));
    EXPECT_EQ(ReportText::legacyNumberText(1e15), QStringLiteral("1E+15"));
}

TEST(ReportText, Windows1252)
{
    EXPECT_EQ(ReportText::toWindows1252(u"A\u00E9\u2022\u20AC\u0178"), QByteArray("A\xE9\x95\x80\x9F"));
    EXPECT_EQ(ReportText::toWindows1252(u"\u4E2D\U0001F404x"), QByteArray("??x"));
    EXPECT_EQ(ReportText::toWindows1252(u"\u0080"), QByteArray("?")); // byte 0x80 is the euro sign
}

TEST(ResultTableSort, StableWithNullsFirstAndTextsWithoutRegardToCase)
{
    ResultTable table;
    auto add = [&table](const char *group, const char *sample, QVariant number) {
        ResultRow row;
        row.group = QString::fromUtf8(group);
        row.sample = QString::fromUtf8(sample);
        row.numericSample = number;
        table.rows().append(row);
    };
    add("herd b", "x1", qulonglong(2));
    add("Herd A", "x2", qulonglong(5));
    add("HERD B", "x3", QVariant());
    add("herd a", "x4", qulonglong(5));
    add("Herd b", "x5", qulonglong(1));
    table.sort(QStringLiteral("Group ASC, NumericSample ASC"));
    QStringList order;
    for (const ResultRow &row : table.rows())
        order << row.sample;
    EXPECT_EQ(order, (QStringList{"x2", "x4", "x3", "x5", "x1"}));
    table.sort(QStringLiteral("Sample DESC"));
    EXPECT_EQ(table.rows().first().sample, QStringLiteral("x5"));
    EXPECT_THROW(table.sort(QStringLiteral("Colour")), RecordSetError);
}
