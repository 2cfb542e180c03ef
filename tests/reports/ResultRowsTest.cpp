#include "FakePrompt.h"
#include "QtPrinters.h"
#include "ReportFixtures.h"

#include "core/WellList.h"
#include "reports/ReportText.h"
#include "reports/clsReport.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <functional>

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

TEST_F(RowsFixture, OneRowPerSampleWellInPlateAndWellOrderWithThePlateDataAndTheRankOfItsName)
{
    const RecordSet r = report.buildResultRows(fixtures::springRun(), kRun, 0, QString(), QString());
    ASSERT_EQ(r.recordCount(), 6);
    EXPECT_EQ(r.fieldNames(), clsReport::resultFields());
    EXPECT_EQ(column(r, "PlatePosition"), (QStringList{"D1", "E1", "F1", "G1", "A2", "C1"}));
    EXPECT_EQ(column(r, "Group"), (QStringList{"Herd B", "Herd A", "Herd A", "Herd A", "No Group", "Herd A"}));
    EXPECT_EQ(column(r, "Result"), (QStringList{"POS", "NEG", "POS", "NEG", "POS", ""}));
    EXPECT_EQ(r.valueAt(0, u"TimeRead"), QVariant(QTime(9, 30, 0)));
    // Ranked: S1 S1 S2 S2 S3 S10; a name takes the rank of its first entry.
    EXPECT_EQ(column(r, "NumericSample"), (QStringList{"6", "3", "1", "3", "5", "1"}));

    const RecordSet one = rows({orvexaWith({{"D1", sample("S1", "G", "0.500", "POS", 0)}})});
    ASSERT_EQ(one.recordCount(), 1); // an excluded sample is still reported
    EXPECT_TRUE(one.valueAt(0, u"NumericSample").isNull());
}

TEST_F(RowsFixture, CriticalODAndRatioFollowTheControlsAndTheVerdict)
{
    const struct {
        const char *what;
        std::function<void(TestPlate &)> change;
        QVariant criticalOD;
        QString ratio;
    } cases[] = {
        {"validated", [](TestPlate &) {}, u"0.950"_qs, u"68.4%"_qs},
        {"failed: NC mean below range", [](TestPlate &p) { p.wells[u"A1"_qs].od = p.wells[u"B1"_qs].od = u"0.300"_qs; },
         u"0.300"_qs, QString()},
        {"every critical control excluded", [](TestPlate &p) { p.wells[u"A1"_qs].flag = p.wells[u"B1"_qs].flag = 0; },
         QVariant(), QString()},
        {"a sample \"nc\" counts as an NC without regard to case",
         [](TestPlate &p) {
             p.wells[u"A1"_qs].flag = p.wells[u"B1"_qs].flag = 0;
             p.wells[u"E1"_qs] = sample("nc", "G", "0.950", "NEG");
         },
         u"0.950"_qs, u"68.4%"_qs},
    };
    for (const auto &c : cases) {
        TestPlate p = orvexaWith({{"D1", sample("S1", "G", "0.300")}});
        c.change(p);
        const RecordSet r = rows({p});
        EXPECT_EQ(r.valueAt(0, u"CriticalOD"), c.criticalOD) << c.what;
        EXPECT_EQ(r.valueAt(0, u"CalcRatio"), QVariant(c.ratio)) << c.what;
        EXPECT_EQ(r.valueAt(0, u"Result"), QVariant(u"POS"_qs)) << c.what;
        // The export's rows of one plate follow the same rules.
        const RecordSet plates = plateRecordSet({p});
        const ResultRow one = report.plateResultRows(plates, 0, PlateLists::of(plates, 0), kRun, {}).rows().at(0);
        EXPECT_EQ(one.criticalOD, c.criticalOD) << c.what;
        EXPECT_EQ(one.calcRatio, c.ratio) << c.what;
    }
    const RecordSet generic = rows({fixtures::genericPlate()});
    EXPECT_EQ(generic.valueAt(0, u"CriticalOD"), QVariant(u"0.500"_qs)); // the mean of its included PCs
    EXPECT_EQ(generic.valueAt(0, u"CalcRatio"), QVariant(QString()));
}

TEST_F(RowsFixture, UnreadPlatesAndPlatesWithNoTestGiveNoRowsAndAreNotWorkedOn)
{
    TestPlate noTest = fixtures::genericPlate();
    noTest.testName.clear();
    noTest.wells[u"A1"_qs].od = u"not a number"_qs;
    EXPECT_EQ(rows({fixtures::unreadPlate(), noTest}).recordCount(), 0);
    EXPECT_EQ(rows({fixtures::unreadPlate()}, 1).recordCount(), 0);
    EXPECT_EQ(prompt.count(), 0);
}

TEST_F(RowsFixture, TooFewControlsKeepTheStoredResultInIndividualMode)
{
    TestPlate p = orvexaWith({{"D1", sample("S1", "G", "0.900", "STORED")}});
    p.wells.remove(u"C1"_qs);
    const RecordSet r = rows({p});
    EXPECT_EQ(r.valueAt(0, u"Result"), QVariant(u"STORED"_qs));
    EXPECT_EQ(r.valueAt(0, u"CalcRatio"), QVariant(QString()));
}

TEST_F(RowsFixture, ReplicatesMergeLikeNamesOfOneGroupOnlyAndLeaveTheInputAlone)
{
    const RecordSet plates = plateRecordSet({orvexaWith({{"D1", sample("S1", "A", "0.100")},
                                                         {"E1", sample("S1", "B", "0.200")},
                                                         {"F1", sample("s1", "A", "0.300")},
                                                         {"G1", sample("S1", "A", "0.400")},
                                                         {"H1", sample("S2", "A", "0.200")}})});
    const RecordSet before = copyRecordset(plates);
    const RecordSet r = report.buildResultRows(plates, kRun, 1, QString(), QString());
    EXPECT_EQ(column(r, "PlatePosition"), (QStringList{"D1", "E1", "F1", "H1"}));
    EXPECT_EQ(column(r, "OD"), (QStringList{"0.25", "0.2", "0.3", "0.2"}));
    // Results and ratios rest on the means: 0.25 against an NC mean of 0.95 is 73.68% inhibition.
    EXPECT_EQ(r.valueAt(0, u"Result"), QVariant(u"POS"_qs));
    EXPECT_EQ(r.valueAt(0, u"CalcRatio"), QVariant(u"73.6%"_qs));
    for (const QString &field : plates.fieldNames())
        EXPECT_EQ(plates.valueAt(0, field), before.valueAt(0, field)) << field.toStdString();
}

TEST_F(RowsFixture, AGroupOrAPlateNameNarrowsTheRows)
{
    EXPECT_EQ(column(rows({fixtures::orvexaPlate()}, 0, u"Herd A"_qs), "PlatePosition"),
              (QStringList{"E1", "F1", "G1"}));
    const RecordSet r = report.buildResultRows(fixtures::springRun(), kRun, 0, u"Plate #2"_qs, QString());
    EXPECT_EQ(column(r, "PlateName"), (QStringList{"Plate #2"}));
    EXPECT_THROW(report.buildResultRows(fixtures::springRun(), kRun, 0, u"Nope"_qs, QString()), ReportError);
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

TEST(ReportText, LegacyNumberTextHasFifteenSignificantDigits)
{
    const std::pair<double, const char *> cases[] = {{0.7 / 3, "0.233333333333333"},
                                                     {0.2, "0.2"},
                                                     {-0.05, "-0.05"},
                                                     {2.0, "2"},
                                                     {-0.0, "0"},
                                                     {0.0001, "0.0001"},
                                                     {0.00001, "1E-05"},
                                                     {123456789012345.0, "123456789012345"},
                                                     {1e15, "1E+15"}};
    for (const auto &[value, text] : cases)
        EXPECT_EQ(ReportText::legacyNumberText(value), QString::fromLatin1(text)) << text;
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
