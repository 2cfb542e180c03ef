// The control report dialog without its widgets: what the load puts in the controls, and
// the check of the chart options.
#include "TrackingFixture.h"

#include "evaluation/clsTests.h"

#include <gtest/gtest.h>

TEST(TrackControlsLoad, TheListsComeFromTheKitsAndTheDatabase)
{
    TrackingBench bench;
    QList<TestPlate> plates = orvexaPlates();
    plates[1].lotNumber = QStringLiteral("A-7");
    plates.append(readPlate(QStringLiteral("No lot"), kOrvexa, QDate(2024, 2, 1), {}, QString()));
    plates.append(readPlate(QStringLiteral("Same lot"), kOrvexa, QDate(2024, 2, 2), {}, QStringLiteral("A-7")));
    bench.saved.saveRun(QStringLiteral("Run"), plates);
    bench.saved.addTechnician(QStringLiteral("Ben Okafor"));
    bench.saved.addTechnician(QStringLiteral("Ana Ruiz"));
    bench.logic.load();

    QStringList kits = clsTests::allTestNames();
    kits.removeAll(QStringLiteral("Generic"));
    EXPECT_EQ(bench.logic.tests.items, kits);
    EXPECT_EQ(bench.logic.tests.index, 0);
    EXPECT_EQ(bench.logic.tests.text(), QStringLiteral("Orvexa 412"));
    EXPECT_EQ(bench.logic.lotNumbers.items, QStringList({"Any Lot Number", "A-7", "L-100"}));
    EXPECT_EQ(bench.logic.lotNumbers.index, 0);
    EXPECT_EQ(bench.logic.technicians.items, QStringList({"Any Technician", "Ana Ruiz", "Ben Okafor"}));
    EXPECT_EQ(bench.logic.technicians.index, 0);
}

TEST(TrackControlsLoad, TheDatesRunFromTheFirstPlateReadToToday)
{
    TrackingBench bench;
    QList<TestPlate> plates = orvexaPlates();
    plates.append(readPlate(QStringLiteral("Never read"), kOrvexa, QDate(), {}));
    bench.saved.saveRun(QStringLiteral("Run"), plates);
    bench.logic.load();
    EXPECT_EQ(bench.logic.monthRange, (std::array<QString, 2>{"1", "3"}));
    EXPECT_EQ(bench.logic.dayRange, (std::array<QString, 2>{"5", "9"}));
    EXPECT_EQ(bench.logic.yearRange, (std::array<QString, 2>{"2024", "2024"}));

    // With no plate read the start is the first of 2003.
    TrackingBench unread;
    unread.saved.saveRun(QStringLiteral("Run"), {readPlate(QStringLiteral("Never read"), kOrvexa, QDate(), {})});
    unread.logic.load();
    EXPECT_EQ(unread.logic.yearRange[0] + u'/' + unread.logic.monthRange[0] + u'/' + unread.logic.dayRange[0],
              u"2003/1/1"_qs);
}

TEST(TrackControlsOptions, OkNeedsAtLeastOneChartableElement)
{
    TrackingBench bench;
    TrackControlsLogic &logic = bench.logic;
    logic.chkPlateName = false;
    logic.chkStdDev = true; // the deviations don't chart on the X axis
    logic.checkChartOptions();
    EXPECT_FALSE(logic.okEnabled);
    EXPECT_TRUE(logic.warningVisible);
    EXPECT_EQ(logic.warningText, QStringLiteral("Please select at least one chartable element."));

    for (bool *box : {&logic.chkRunName, &logic.chkDate, &logic.chkTime, &logic.chkPlateName}) {
        *box = true;
        logic.checkChartOptions();
        EXPECT_TRUE(logic.okEnabled);
        EXPECT_FALSE(logic.warningVisible);
        EXPECT_TRUE(logic.warningText.isEmpty());
        *box = false;
    }
}
