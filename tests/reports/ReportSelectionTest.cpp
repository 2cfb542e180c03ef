#include "FakeBrowser.h"
#include "FakePrompt.h"
#include "QtPrinters.h"
#include "ReportFixtures.h"
#include "TempProgramFolder.h"

#include "reports/ReportSelection.h"
#include "store/PlateRows.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace {

struct SelectionFixture : ::testing::Test {
    TempProgramFolder folder;
    FakePrompt prompt;
    FakeBrowser browser;
    ReportSelection selection{folder.folder(), prompt, browser};

    void saveRun(qint64 runID, const QString &name, QList<TestPlate> plates)
    {
        DbConnection db = folder.open();
        db.execute(QStringLiteral("INSERT INTO Runs (RunID, RunName, FolderID) VALUES (?, ?, 1)"), {runID, name});
        for (TestPlate &p : plates)
            p.runID = runID;
        RecordSet set = plateRecordSet(plates);
        PlateRows::insert(db, set);
    }
    QString reportPath() const { return folder.folder().filePath(QStringLiteral("TempHTML.htm")); }
    QByteArray reportFile() const
    {
        QFile f(reportPath());
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    void open(const RecordSet &plates, const QString &runName = QStringLiteral("Spring Run"))
    {
        selection.setRunName(runName);
        selection.setPlatesRecord(plates);
        selection.load();
    }
    // The one box told, and no report shown.
    void expectOnly(const PromptBox &box)
    {
        ASSERT_EQ(prompt.count(), 1);
        EXPECT_EQ(prompt.last(), box);
        EXPECT_TRUE(browser.opened.isEmpty());
    }
    void expectNoData()
    {
        expectOnly({QStringLiteral("Requested Data Not Available"),
                    QStringLiteral("There is no completed test data to report that fits this specification."),
                    MsgIcon::None});
    }
    void expectBadDates()
    {
        expectOnly({QStringLiteral("Date range is invalid."), QStringLiteral("The date range is invalid"),
                    MsgIcon::Exclamation});
    }
};

TestPlate autumnPlate(int id, const QString &name, const QDate &read, const QString &sample, const QString &group)
{
    TestPlate p = fixtures::orvexaPlate();
    p.plateID = id;
    p.plateName = name;
    p.dateRead = read;
    p.wells = {
        {QStringLiteral("A1"), {QStringLiteral("NC"), QString(), QStringLiteral("1.000"), QString()}},
        {QStringLiteral("B1"), {QStringLiteral("PC"), QString(), QStringLiteral("0.200"), QString()}},
        {QStringLiteral("C1"), {sample, group, QStringLiteral("0.500"), QStringLiteral("POS")}},
    };
    return p;
}

} // namespace

TEST_F(SelectionFixture, LoadFillsTheListsAndStartsOnThePlateChoice)
{
    folder.addGroup(QStringLiteral("herd b"));
    folder.addGroup(QStringLiteral("Herd A"));
    folder.addGroup(QStringLiteral("Cattle"));
    saveRun(7, QStringLiteral("Winter"), {autumnPlate(1, QStringLiteral("W1"), QDate(2026, 11, 24), "X", "G")});
    open(fixtures::springRun());
    EXPECT_EQ(selection.monthRange, (std::array<QString, 2>{})); // one read plate: no range
    EXPECT_EQ(selection.yearRange, (std::array<QString, 2>{}));

    saveRun(8, QStringLiteral("autumn"),
            {autumnPlate(1, QStringLiteral("A1"), QDate(2026, 3, 5), "X", "G"),
             autumnPlate(2, QStringLiteral("A2"), QDate(), "X", "G")});
    open(fixtures::springRun());

    EXPECT_EQ(selection.plates.items, (QStringList{"Plate #1", "Plate #2", "Plate #3"}));
    EXPECT_EQ(selection.groups.items, (QStringList{"Cattle", "Herd A", "herd b"}));
    EXPECT_EQ(selection.runs.items, (QStringList{"autumn", "Winter"}));
    // The earliest and the latest read date, without leading zeros.
    EXPECT_EQ(selection.monthRange, (std::array<QString, 2>{"3", "11"}));
    EXPECT_EQ(selection.dayRange, (std::array<QString, 2>{"5", "24"}));
    EXPECT_EQ(selection.yearRange, (std::array<QString, 2>{"2026", "2026"}));
    EXPECT_EQ(selection.report, 0);
}

TEST_F(SelectionFixture, ThePlateListRunsFromThePlateOnScreenToTheEndAndThePlateChoiceReportsThatPlate)
{
    RecordSet plates = fixtures::springRun();
    plates.setPosition(1);
    open(plates);
    EXPECT_EQ(selection.plates.items, (QStringList{"Plate #2", "Plate #3"}));
    selection.style = 1;
    EXPECT_TRUE(selection.ok()); // that plate alone
    EXPECT_TRUE(reportFile().contains("<B>Plate: </B>Plate #2"));
    EXPECT_FALSE(reportFile().contains("Plate #1"));
}

TEST_F(SelectionFixture, TheChoicesEnableWhatTheyUse)
{
    open(fixtures::springRun());
    selection.clickReport(2);
    EXPECT_EQ(selection.groupReport, 0);
    EXPECT_TRUE(selection.groupReportEnabled);
    EXPECT_FALSE(selection.separateGroupsEnabled);
    EXPECT_TRUE(selection.groups.enabled);
    EXPECT_FALSE(selection.plates.enabled);
    EXPECT_FALSE(selection.runs.enabled);
    EXPECT_FALSE(selection.dateBoxesEnabled);

    selection.clickGroupReport(1);
    EXPECT_TRUE(selection.runs.enabled);
    EXPECT_FALSE(selection.dateBoxesEnabled);
    selection.clickGroupReport(2);
    EXPECT_FALSE(selection.runs.enabled);
    EXPECT_TRUE(selection.dateBoxesEnabled);

    selection.clickReport(1);
    EXPECT_EQ(selection.groupReport, -1);
    EXPECT_FALSE(selection.groupReportEnabled);
    EXPECT_TRUE(selection.plates.enabled); // although it means nothing for the whole run
    EXPECT_FALSE(selection.groups.enabled);
    EXPECT_FALSE(selection.dateBoxesEnabled);

    selection.clickReplicates(1);
    EXPECT_EQ(selection.replicatesMode(), 1);
}

TEST_F(SelectionFixture, OkMakesTheReportOfTheRunAndOpensItBesideTheLogo)
{
    QFile::remove(folder.folder().filePath(QStringLiteral("logo.jpg")));
    open(fixtures::springRun());
    selection.clickReport(1);
    selection.separateGroups = true;
    EXPECT_TRUE(selection.ok());
    EXPECT_EQ(browser.opened, QStringList{reportPath()});
    EXPECT_EQ(prompt.count(), 0);
    const QByteArray html = reportFile();
    EXPECT_TRUE(html.startsWith("<!DOCTYPE HTML PUBLIC"));
    EXPECT_EQ(html.count("<P CLASS = \"breakhere\">"), 2); // three groups
    EXPECT_TRUE(QFile::exists(folder.folder().filePath(QStringLiteral("logo.jpg"))));
}

TEST_F(SelectionFixture, WithNoGroupsTheGroupChoiceReportsTheWholeRunIgnoringTheSeparateGroupsTick)
{
    open(fixtures::springRun());
    selection.separateGroups = true;
    selection.clickReport(2); // no group exists: all three groups of the run are reported
    EXPECT_TRUE(selection.separateGroups);
    EXPECT_TRUE(selection.ok());
    EXPECT_EQ(reportFile().count("<H3 class=\"GroupTitle\">"), 3);
    EXPECT_FALSE(reportFile().contains("<P CLASS = \"breakhere\">"));
}

TEST_F(SelectionFixture, AGroupInASavedRunReportsThatRunUnderTheOpenRunsName)
{
    folder.addGroup(QStringLiteral("Herd A"));
    saveRun(7, QStringLiteral("Autumn"),
            {autumnPlate(1, QStringLiteral("Autumn 1"), QDate(2026, 10, 1), "K9", "Herd A"),
             autumnPlate(2, QStringLiteral("Autumn 2"), QDate(2026, 10, 2), "K7", "Herd Z")});
    open(fixtures::springRun());
    selection.clickReport(2);
    selection.clickGroupReport(1);
    selection.style = 1;
    ASSERT_EQ(selection.runs.text(), QStringLiteral("Autumn"));
    EXPECT_TRUE(selection.ok());
    const QByteArray html = reportFile();
    EXPECT_TRUE(html.contains(">K9</td>"));
    EXPECT_FALSE(html.contains(">K7</td>"));
    EXPECT_FALSE(html.contains(">S1</td>")); // nothing of the open run
    EXPECT_FALSE(html.contains("Notes:"));   // no plate sections with a group
    EXPECT_TRUE(html.contains("<td align=\"center\"><font size=\"-1\">Spring Run</td>"));
}

TEST_F(SelectionFixture, AGroupOverADateRangeTakesPlatesOfEveryRun)
{
    folder.addGroup(QStringLiteral("Herd A"));
    saveRun(7, QStringLiteral("Autumn"),
            {autumnPlate(1, QStringLiteral("Autumn 1"), QDate(2026, 10, 1), "K1", "Herd A"),
             autumnPlate(2, QStringLiteral("Autumn 2"), QDate(2026, 10, 9), "K2", "Herd A")});
    saveRun(8, QStringLiteral("Winter"),
            {autumnPlate(1, QStringLiteral("Winter 1"), QDate(2026, 10, 5), "K3", "Herd A")});
    open(fixtures::springRun());
    selection.clickReport(2);
    selection.clickGroupReport(2);
    selection.monthRange = {QStringLiteral("10"), QStringLiteral("10")};
    selection.dayRange = {QStringLiteral("1"), QStringLiteral("5")};
    selection.yearRange = {QStringLiteral("26"), QStringLiteral("2026")}; // a two-digit year passes
    EXPECT_TRUE(selection.ok());
    const QByteArray html = reportFile();
    EXPECT_TRUE(html.contains(">K1</td>"));
    EXPECT_TRUE(html.contains(">K3</td>"));
    EXPECT_FALSE(html.contains(">K2</td>"));
}

TEST_F(SelectionFixture, ADateRangeThatIsNoDateOrRunsBackwardsIsRefusedAndAnEmptyOneHasNoData)
{
    open(fixtures::springRun());
    selection.clickReport(2);
    selection.clickGroupReport(2);
    selection.monthRange = {QStringLiteral("2"), QStringLiteral("3")};
    selection.dayRange = {QStringLiteral("30"), QStringLiteral("1")};
    selection.yearRange = {QStringLiteral("2026"), QStringLiteral("2026")};
    EXPECT_FALSE(selection.ok());
    expectBadDates();

    prompt.clearBoxes();
    selection.dayRange = {QStringLiteral("2"), QStringLiteral("1")};
    selection.monthRange = {QStringLiteral("3"), QStringLiteral("3")};
    EXPECT_FALSE(selection.ok());
    expectBadDates();

    // Equal dates pass, but no plate was read that day.
    prompt.clearBoxes();
    selection.dayRange = {QStringLiteral("1"), QStringLiteral("1")};
    EXPECT_FALSE(selection.ok());
    expectNoData();
}

TEST_F(SelectionFixture, ASavedRunThatIsGoneIsAnError)
{
    open(fixtures::springRun());
    selection.clickReport(2);
    selection.clickGroupReport(1);
    selection.runs.items = {QStringLiteral("Deleted meanwhile")};
    selection.runs.index = 0;
    EXPECT_THROW(selection.ok(), std::runtime_error);
}

TEST(ReportDates, TypedAsMonthDayAndYear)
{
    const struct {
        const char *month, *day, *year;
        QDate date; // invalid: no date
    } cases[] = {{"2", "28", "2026", QDate(2026, 2, 28)},
                 {"2", "30", "2026", {}},
                 {"13", "1", "2026", {}},
                 {"1", "2", "26", QDate(2026, 1, 2)},
                 {"1", "2", "45", QDate(1945, 1, 2)},
                 {" 01", "02 ", "2026", QDate(2026, 1, 2)},
                 {"", "2", "2026", {}},
                 {"a", "2", "2026", {}}};
    for (const auto &c : cases) {
        const std::optional<QDate> date = ReportSelection::dateFromParts(
            QString::fromLatin1(c.month), QString::fromLatin1(c.day), QString::fromLatin1(c.year));
        EXPECT_EQ(date.value_or(QDate()), c.date) << c.month << "/" << c.day << "/" << c.year;
        EXPECT_EQ(date.has_value(), c.date.isValid());
    }
}

TEST_F(SelectionFixture, WithNoBrowserTheUserIsToldWhereTheReportIs)
{
    browser.canOpen = false;
    open(fixtures::springRun());
    selection.clickReport(1);
    EXPECT_TRUE(selection.ok());
    ASSERT_EQ(prompt.count(), 1);
    EXPECT_EQ(prompt.last().title, QStringLiteral("Generate Report"));
    EXPECT_EQ(prompt.last().text,
              QStringLiteral("The report was written to %1, but no program could be started to show it.")
                  .arg(QDir::toNativeSeparators(reportPath())));
    EXPECT_EQ(prompt.last().icon, MsgIcon::Exclamation);
}
