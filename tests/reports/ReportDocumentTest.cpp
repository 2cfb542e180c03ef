#include "FakePrompt.h"
#include "QtPrinters.h"
#include "ReportFixtures.h"

#include "reports/clsReport.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace {

const QString kRun = QStringLiteral("Spring Run");

// A report as the labs have it from the program they used before, byte for byte
// (windows-1252, CR LF), in tests/data/reports.
QByteArray golden(const char *name)
{
    if (!*name)
        return QByteArray();
    QFile f(QStringLiteral(TESTS_DATA_DIR "/reports/") + QLatin1String(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<no such golden file>");
}

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
        {QStringLiteral("D1"),
         {QStringLiteral("R1"), QStringLiteral("Herd A"), QStringLiteral("0.200"), QStringLiteral("NEG")}},
        {QStringLiteral("E1"),
         {QStringLiteral("R2"), QStringLiteral("Herd A"), QStringLiteral("0.200"), QStringLiteral("NEG")}},
        {QStringLiteral("F1"),
         {QStringLiteral("R1"), QStringLiteral("Herd A"), QStringLiteral("0.200"), QStringLiteral("NEG")}},
        {QStringLiteral("A2"),
         {QStringLiteral("R1"), QStringLiteral("Herd A"), QStringLiteral("0.300"), QStringLiteral("NEG")}},
    };
    return p;
}

TestPlate controlsOnly()
{
    TestPlate p = fixtures::genericPlate();
    p.wells.remove(QStringLiteral("C1"));
    return p;
}

} // namespace

// Client reports: one table per group in name order (No Group last). Analytical reports:
// the section of each read plate (the unread Plate #3 has none), then per group a table
// per test; replicates give one row at the first well with the mean in full precision.
// With no rows the client report leaves an empty file, the analytical report stops after
// the head or the plate sections.
TEST_F(ReportFixture, TheReportsOfTheSpringRunMatchTheLegacyFilesByteForByte)
{
    using Make =
        bool (clsReport::*)(const RecordSet &, bool, const QString &, qint16, bool, const QString &, const QString &);
    const Make client = &clsReport::makeCustomerReport, analytical = &clsReport::makeAnalyticalReport;
    const struct {
        const char *golden;
        Make make;
        RecordSet plates;
        bool separateGroups;
        qint16 replicates;
        bool byName;
        const char *plate, *group;
        bool made;
    } cases[] = {
        {"client-by-name.htm", client, fixtures::springRun(), false, 0, true, "", "", true},
        {"client-separate-groups.htm", client, fixtures::springRun(), true, 0, true, "", "", true},
        {"client-by-position.htm", client, fixtures::springRun(), false, 0, false, "", "", true},
        {"client-herd-b.htm", client, fixtures::springRun(), false, 0, true, "", "Herd B", true},
        {"analytical-separate-groups.htm", analytical, fixtures::springRun(), true, 0, true, "", "", true},
        {"analytical-plate-1-by-position.htm", analytical, fixtures::springRun(), false, 0, false, "Plate #1", "",
         true},
        {"analytical-replicates.htm", analytical, plateRecordSet({replicatePlate()}), false, 1, true, "Plate R", "",
         true},
        {"", client, fixtures::springRun(), false, 0, true, "", "Herd Z", false},
        {"", client, fixtures::springRun(), false, 0, true, "Plate #3", "", false},
        {"analytical-no-rows.htm", analytical, fixtures::springRun(), false, 0, true, "", "Herd Z", false},
        {"analytical-controls-only.htm", analytical, plateRecordSet({controlsOnly()}), false, 0, true, "", "", false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(*c.golden ? c.golden : "an empty file");
        EXPECT_EQ((report.*c.make)(c.plates, c.separateGroups, kRun, c.replicates, c.byName, QString::fromUtf8(c.plate),
                                   QString::fromUtf8(c.group)),
                  c.made);
        EXPECT_EQ(file(), golden(c.golden));
    }
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
    EXPECT_EQ(prompt.last().text,
              QStringLiteral("The plate \"Plate X\" has too few included controls (PC and NC) to work "
                             "out the results of its replicates. Its samples are left out of this "
                             "report."));
    EXPECT_EQ(prompt.last().icon, MsgIcon::Exclamation);
    EXPECT_FALSE(file().contains("R1"));
    EXPECT_TRUE(file().contains("S10"));
}

TEST_F(ReportFixture, AFileThatCannotBeWrittenIsAnError)
{
    clsReport nowhere(prompt, dir.filePath(QStringLiteral("no such folder/TempHTML.htm")));
    EXPECT_THROW(nowhere.makeCustomerReport(fixtures::springRun(), false, kRun, 0, true, QString(), QString()),
                 std::runtime_error);
}
