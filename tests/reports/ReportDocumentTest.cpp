#include "ExpectedReport.h"
#include "FakePrompt.h"
#include "QtPrinters.h"
#include "ReportFixtures.h"

#include "reports/clsReport.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace {

const QString kRun = QStringLiteral("Spring Run");

struct ReportFixture : ::testing::Test {
    QTemporaryDir dir;
    FakePrompt prompt;
    QString path = dir.filePath(QStringLiteral("TempHTML.htm"));
    clsReport report{prompt, path};

    QByteArray file() const
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<no file>");
    }
};

using M = QMap<QString, QString>;

// The plate sections of the Spring Run's two read plates.
QStringList orvexaSection()
{
    return expected::plateSection(
        {QStringLiteral("Orvexa 412"), kRun, QStringLiteral("Plate #1"), QStringLiteral("L-77"), QStringLiteral("1/31/2027"),
         QStringLiteral("11/23/2026"), QStringLiteral("9:30:00 AM")},
        M{{"D1", "Herd B"}, {"E1", "Herd A"}, {"F1", "Herd A"}, {"G1", "Herd A"}},
        M{{"A1", "NC"}, {"B1", "NC"}, {"C1", "PC"}, {"D1", "S10"}, {"E1", "S2"}, {"F1", "S1"}, {"G1", "S2"}, {"A2", "S3"}},
        M{{"A1", "1.000"}, {"B1", "0.900"}, {"C1", "0.200"}, {"D1", "0.500"}, {"E1", "0.800"}, {"F1", "0.300"},
          {"G1", "0.700"}, {"A2", "0.100"}},
        M{{"D1", "POS"}, {"E1", "NEG"}, {"F1", "POS"}, {"G1", "NEG"}, {"A2", "POS"}});
}

QStringList genericSection()
{
    return expected::plateSection({QStringLiteral("Generic"), kRun, QStringLiteral("Plate #2"), QStringLiteral("None"),
                                   QStringLiteral("None"), QStringLiteral("11/24/2026"), QStringLiteral("2:05:07 PM")},
                                  M{{"C1", "Herd A"}}, M{{"A1", "PC"}, {"B1", "PC"}, {"C1", "S1"}},
                                  M{{"A1", "0.400"}, {"B1", "0.600"}, {"C1", "0.250"}}, M{});
}

const QStringList kOrvexaHead = expected::testHeading(QStringLiteral("Orvexa 412"), QStringLiteral("Mean NC"), QStringLiteral("%I"));
const QStringList kGenericHead = expected::testHeading(QStringLiteral("Generic"), QString(), QString());

QStringList orvexaRow(const char *sample, const char *od, const char *ratio, const char *result, const char *position)
{
    return expected::row({QString::fromUtf8(sample), QString::fromUtf8(od), QStringLiteral("0.950"), QString::fromUtf8(ratio),
                          QString::fromUtf8(result), QStringLiteral("11/23/2026 9:30:00 AM"), kRun,
                          QStringLiteral("Plate #1"), QString::fromUtf8(position)});
}

const QStringList kGenericRow = expected::row({QStringLiteral("S1"), QStringLiteral("0.250"), QStringLiteral("0.500"), QString(),
                                               QString(), QStringLiteral("11/24/2026 2:05:07 PM"), kRun,
                                               QStringLiteral("Plate #2"), QStringLiteral("C1")});

QStringList clientRow(const char *sample, const char *test, const char *result, const char *date)
{
    return expected::row({QString::fromUtf8(sample), QString::fromUtf8(test), QString::fromUtf8(result), QString::fromUtf8(date)});
}

} // namespace

// Client report --------------------------------------------------------------------------

TEST_F(ReportFixture, ClientReportHasOneTablePerGroupInNameOrder)
{
    const QStringList herdAByName = clientRow("S1", "Generic", "", "11/24/2026") + clientRow("S1", "Orvexa 412", "POS", "11/23/2026") +
                                    clientRow("S2", "Orvexa 412", "NEG", "11/23/2026") + clientRow("S2", "Orvexa 412", "NEG", "11/23/2026");
    const QStringList herdAByPosition = clientRow("S1", "Generic", "", "11/24/2026") + clientRow("S2", "Orvexa 412", "NEG", "11/23/2026") +
                                        clientRow("S1", "Orvexa 412", "POS", "11/23/2026") + clientRow("S2", "Orvexa 412", "NEG", "11/23/2026");
    const QStringList herdB = clientRow("S10", "Orvexa 412", "POS", "11/23/2026");
    const QStringList noGroup = clientRow("S3", "Orvexa 412", "POS", "11/23/2026");
    const QString brk = QStringLiteral("<P CLASS = \"breakhere\">");
    const struct {
        bool separate, byName;
        const char *group;
        QList<std::pair<QString, QStringList>> tables; // opening line, rows
    } cases[] = {
        {false, true, "", {{u"Herd A"_qs, herdAByName}, {u"Herd B"_qs, herdB}, {u"No Group"_qs, noGroup}}},
        {true, true, "", {{u"Herd A"_qs, herdAByName}, {u"Herd B"_qs, herdB}, {u"No Group"_qs, noGroup}}},
        {false, false, "", {{u"Herd A"_qs, herdAByPosition}, {u"Herd B"_qs, herdB}, {u"No Group"_qs, noGroup}}},
        {false, true, "Herd B", {{u"Herd B"_qs, herdB}}},
    };
    for (const auto &c : cases) {
        ASSERT_TRUE(report.makeCustomerReport(fixtures::springRun(), c.separate, kRun, 0, c.byName, QString(),
                                              QString::fromUtf8(c.group)));
        QStringList lines = expected::head();
        for (const auto &[group, rows] : c.tables) {
            lines << (c.separate && group != c.tables.first().first ? brk : u"<P>"_qs)
                  << expected::clientHeading(group) << rows << QStringLiteral("</table>");
        }
        lines << expected::tail();
        EXPECT_EQ(file(), expected::bytes(lines)) << c.separate << c.byName << c.group;
    }
}

// Analytical report ----------------------------------------------------------------------

TEST_F(ReportFixture, AnalyticalReportHasPlateSectionsThenTablesWithTwoTestsInOneGroup)
{
    ASSERT_TRUE(report.makeAnalyticalReport(fixtures::springRun(), true, kRun, 0, true, QString(), QString()));

    QStringList lines = expected::head();
    lines << orvexaSection() << genericSection(); // the unread Plate #3 has no section
    lines << QStringLiteral("<P>") << expected::analyticalHeading(QStringLiteral("Herd A")) << kGenericHead
          << kGenericRow << kOrvexaHead << orvexaRow("S1", "0.300", "68.4%", "POS", "F1")
          << orvexaRow("S2", "0.800", "15.7%", "NEG", "E1") << orvexaRow("S2", "0.700", "26.3%", "NEG", "G1");
    lines << QStringLiteral("</TABLE>") << QStringLiteral("<P CLASS = \"breakhere\">")
          << expected::analyticalHeading(QStringLiteral("Herd B")) << kOrvexaHead
          << orvexaRow("S10", "0.500", "47.3%", "POS", "D1");
    lines << QStringLiteral("</TABLE>") << QStringLiteral("<P CLASS = \"breakhere\">")
          << expected::analyticalHeading(QStringLiteral("No Group")) << kOrvexaHead
          << orvexaRow("S3", "0.100", "89.4%", "POS", "A2");
    lines << expected::tail(); // the last table is left open
    EXPECT_EQ(file(), expected::bytes(lines));
}

TEST_F(ReportFixture, AnalyticalReportWithoutPageSeparationOpensEachGroupWithAParagraph)
{
    ASSERT_TRUE(report.makeAnalyticalReport(fixtures::springRun(), false, kRun, 0, false, QStringLiteral("Plate #1"), QString()));

    QStringList lines = expected::head();
    lines << orvexaSection();
    lines << QStringLiteral("<P>") << expected::analyticalHeading(QStringLiteral("Herd A")) << kOrvexaHead
          << orvexaRow("S2", "0.800", "15.7%", "NEG", "E1") << orvexaRow("S1", "0.300", "68.4%", "POS", "F1")
          << orvexaRow("S2", "0.700", "26.3%", "NEG", "G1");
    lines << QStringLiteral("</TABLE>") << QStringLiteral("<P>") << expected::analyticalHeading(QStringLiteral("Herd B"))
          << kOrvexaHead << orvexaRow("S10", "0.500", "47.3%", "POS", "D1");
    lines << QStringLiteral("</TABLE>") << QStringLiteral("<P>") << expected::analyticalHeading(QStringLiteral("No Group"))
          << kOrvexaHead << orvexaRow("S3", "0.100", "89.4%", "POS", "A2");
    lines << expected::tail();
    EXPECT_EQ(file(), expected::bytes(lines));
}

// Replicates -----------------------------------------------------------------------------

namespace {

// NC 1.000 twice, PC 0.200; R1 three times (0.200, 0.200, 0.300), R2 once (0.200), all
// in "Herd A"; the stored results say otherwise, to show that they are not used.
TestPlate replicatePlate()
{
    TestPlate p = fixtures::orvexaPlate();
    p.plateName = QStringLiteral("Plate R");
    p.wells = {
        {QStringLiteral("A1"), {QStringLiteral("NC"), QString(), QStringLiteral("1.000"), QString()}},
        {QStringLiteral("B1"), {QStringLiteral("NC"), QString(), QStringLiteral("1.000"), QString()}},
        {QStringLiteral("C1"), {QStringLiteral("PC"), QString(), QStringLiteral("0.200"), QString()}},
        {QStringLiteral("D1"), {QStringLiteral("R1"), QStringLiteral("Herd A"), QStringLiteral("0.200"), QStringLiteral("NEG")}},
        {QStringLiteral("E1"), {QStringLiteral("R2"), QStringLiteral("Herd A"), QStringLiteral("0.200"), QStringLiteral("NEG")}},
        {QStringLiteral("F1"), {QStringLiteral("R1"), QStringLiteral("Herd A"), QStringLiteral("0.200"), QStringLiteral("NEG")}},
        {QStringLiteral("A2"), {QStringLiteral("R1"), QStringLiteral("Herd A"), QStringLiteral("0.300"), QStringLiteral("NEG")}},
    };
    return p;
}

} // namespace

TEST_F(ReportFixture, ReplicatesReportOneRowAtTheFirstWellWithTheMeanInFullPrecision)
{
    ASSERT_TRUE(report.makeAnalyticalReport(plateRecordSet({replicatePlate()}), false, kRun, 1, true,
                                            QStringLiteral("Plate R"), QString()));

    auto row = [](const char *sample, const char *od, const char *ratio, const char *position) {
        return expected::row({QString::fromUtf8(sample), QString::fromUtf8(od), QStringLiteral("1.000"),
                              QString::fromUtf8(ratio), QStringLiteral("POS"), QStringLiteral("11/23/2026 9:30:00 AM"),
                              kRun, QStringLiteral("Plate R"), QString::fromUtf8(position)});
    };
    QStringList lines = expected::head();
    lines << expected::plateSection(
        {QStringLiteral("Orvexa 412"), kRun, QStringLiteral("Plate R"), QStringLiteral("L-77"), QStringLiteral("1/31/2027"),
         QStringLiteral("11/23/2026"), QStringLiteral("9:30:00 AM")},
        M{{"D1", "Herd A"}, {"E1", "Herd A"}, {"F1", "Herd A"}, {"A2", "Herd A"}},
        M{{"A1", "NC"}, {"B1", "NC"}, {"C1", "PC"}, {"D1", "R1"}, {"E1", "R2"}, {"F1", "R1"}, {"A2", "R1"}},
        M{{"A1", "1.000"}, {"B1", "1.000"}, {"C1", "0.200"}, {"D1", "0.200"}, {"E1", "0.200"}, {"F1", "0.200"},
          {"A2", "0.300"}},
        M{{"D1", "NEG"}, {"E1", "NEG"}, {"F1", "NEG"}, {"A2", "NEG"}});
    lines << QStringLiteral("<P>") << expected::analyticalHeading(QStringLiteral("Herd A")) << kOrvexaHead
          << row("R1", "0.233333333333333", "76.6%", "D1") << row("R2", "0.2", "80.0%", "E1");
    lines << expected::tail();
    EXPECT_EQ(file(), expected::bytes(lines));
}

TEST_F(ReportFixture, ReplicatesOnAPlateWithTooFewControlsAreLeftOutWithABoxNamingThePlate)
{
    TestPlate noControls = replicatePlate();
    noControls.plateName = QStringLiteral("Plate X");
    noControls.wells.remove(QStringLiteral("C1")); // no PC
    const RecordSet plates = plateRecordSet({noControls, fixtures::orvexaPlate()});

    ASSERT_TRUE(report.makeCustomerReport(plates, false, kRun, 1, true, QString(), QStringLiteral("Herd B")));
    // Plate X has no well in Herd B: nothing to leave out, no box.
    EXPECT_EQ(prompt.count(), 0);

    ASSERT_TRUE(report.makeCustomerReport(plates, false, kRun, 1, true, QString(), QString()));
    ASSERT_EQ(prompt.count(), 1);
    EXPECT_EQ(prompt.last().title, QStringLiteral("Too Few Controls"));
    EXPECT_EQ(prompt.last().text, QStringLiteral("The plate \"Plate X\" has too few included controls (PC and NC) to work "
                                                 "out the results of its replicates. Its samples are left out of this "
                                                 "report."));
    EXPECT_EQ(prompt.last().icon, MsgIcon::Exclamation);
    EXPECT_FALSE(file().contains("R1"));
    EXPECT_TRUE(file().contains("S10"));
}

// No report ------------------------------------------------------------------------------

TEST_F(ReportFixture, WithNoRowsTheClientReportIsEmptyAndTheAnalyticalEndsAfterTheHead)
{
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("an earlier report");
    old.close();

    EXPECT_FALSE(report.makeCustomerReport(fixtures::springRun(), false, kRun, 0, true, QString(), QStringLiteral("Herd Z")));
    EXPECT_EQ(file(), QByteArray());
    EXPECT_FALSE(report.makeCustomerReport(fixtures::springRun(), false, kRun, 0, true, QStringLiteral("Plate #3"), QString()));
    EXPECT_EQ(file(), QByteArray());
    // The analytical report stops after the head.
    EXPECT_FALSE(report.makeAnalyticalReport(fixtures::springRun(), false, kRun, 0, true, QString(), QStringLiteral("Herd Z")));
    EXPECT_EQ(file(), expected::bytes(expected::head()));
}

TEST_F(ReportFixture, AnalyticalReportOfAPlateWithOnlyControlsStopsAfterItsSection)
{
    TestPlate controls = fixtures::genericPlate();
    controls.wells.remove(QStringLiteral("C1"));
    EXPECT_FALSE(report.makeAnalyticalReport(plateRecordSet({controls}), false, kRun, 0, true, QString(), QString()));

    QStringList lines = expected::head();
    lines << expected::plateSection({QStringLiteral("Generic"), kRun, QStringLiteral("Plate #2"), QStringLiteral("None"),
                                     QStringLiteral("None"), QStringLiteral("11/24/2026"), QStringLiteral("2:05:07 PM")},
                                    M{}, M{{"A1", "PC"}, {"B1", "PC"}}, M{{"A1", "0.400"}, {"B1", "0.600"}}, M{});
    EXPECT_EQ(file(), expected::bytes(lines));
}

TEST_F(ReportFixture, AFileThatCannotBeWrittenIsAnError)
{
    clsReport nowhere(prompt, dir.filePath(QStringLiteral("no such folder/TempHTML.htm")));
    EXPECT_THROW(nowhere.makeCustomerReport(fixtures::springRun(), false, kRun, 0, true, QString(), QString()),
                 std::runtime_error);
}
