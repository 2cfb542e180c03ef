// The search for abnormal controls, what it leaves counted, wells kept or excluded by hand,
// on the plate alone.

#include "TestPlate.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

const PromptBox kControlsBox{QStringLiteral("Abnormal Controls Detected"),
                             QStringLiteral("One or more control samples have been detected as abnormal.\r\nThese "
                                            "controls are marked, and have been excluded from possible calculations."),
                             MsgIcon::None};

const char *const kColumn1[] = {"A1", "B1", "C1", "D1", "E1", "F1", "G1", "H1"};

} // namespace

// One control's wells in A1, B1, C1 ... (scan order), with their flags before and after
// the evaluation. The other controls a plate needs stand in column 12.
struct OutlierCase {
    const char *name;
    const char *test;
    const char *control;
    std::vector<double> rawODs;
    std::vector<qint16> flags; // before; 1 when not given
    std::vector<qint16> flagsAfter;
};

TEST(OutlierSearch, ExcludesTheWellsThatSpreadTheControlBeyondTheKitsLimit)
{
    const OutlierCase cases[] = {
        // CV 66.7: the fourth goes, the rest has CV 0.
        OutlierCase{"OneFarOffAmongFour", "JMV v2 6615.01-1", "PC", {1.0, 1.0, 1.0, 3.0}, {}, {1, 1, 1, 0}},
        // Three wells lose at most one; the last two are not tested further.
        OutlierCase{"ThreeLoseOne", "JMV v2 6615.01-1", "PC", {0.1, 1.0, 2.0}, {}, {1, 1, 0}},
        // Two rounds: the fifth, then the second, which sits before it.
        OutlierCase{
            "TwoRemovalsSecondBeforeFirst", "JMV v2 6615.01-1", "PC", {1.0, 0.05, 1.1, 0.9, 3.0}, {}, {1, 0, 1, 1, 0}},
        // Two rounds: the second, then the third of the four left, which is the fourth well.
        OutlierCase{
            "TwoRemovalsSecondAfterFirst", "JMV v2 6615.01-1", "PC", {1.0, 3.0, 1.1, 0.05, 0.9}, {}, {1, 0, 1, 0, 1}},
        // Two rounds at the same index: the second, then the second of the four left, which
        // is the third well.
        OutlierCase{
            "TwoRemovalsAtTheSameIndex", "JMV v2 6615.01-1", "PC", {1.0, 3.0, 0.05, 1.1, 0.9}, {}, {1, 0, 0, 1, 1}},
        // A well kept by hand is neither searched nor excluded; the others are counted
        // without it.
        OutlierCase{"KeptByHandIsLeftAlone",
                    "JMV v2 6615.01-1",
                    "PC",
                    {1.0, 3.0, 3.0, 1.1, 0.05, 0.9},
                    {1, 2, 1, 1, 1, 1},
                    {1, 2, 0, 1, 0, 1}},
        OutlierCase{
            "ExcludedByHandIsNotCounted", "JMV v2 6615.01-1", "PC", {1.0, 3.0, 1.0, 1.0}, {0, 1, 1, 1}, {0, 0, 1, 1}},
        OutlierCase{"TwoWellsAreNeverSearched", "JMV v2 6615.01-1", "PC", {1.0, 3.0}, {}, {1, 1}},
        OutlierCase{"AuxiliaryControls", "JMV v2 6615.01-1", "AUX", {1.0, 1.0, 1.0, 3.0}, {}, {1, 1, 1, 0}},
        // CV 92: above the limit of 50, below the limit of 100 of the WQD kit.
        OutlierCase{"KitWithLimit50", "JMV v2 6615.01-1", "NC", {0.1, 1.0, 2.0}, {}, {1, 1, 0}},
        OutlierCase{"KitWithLimit100", "WQD 6WQ0.20", "NC", {0.1, 1.0, 2.0}, {}, {1, 1, 1}},
        // Blanks are not searched.
        OutlierCase{"BlanksAreNotSearched", "JMV v2 6615.01-1", "BLANK", {0.01, 0.01, 0.09}, {}, {1, 1, 1}}};
    for (const OutlierCase &c : cases) {
        SCOPED_TRACE(c.name);
        TestPlate p(QString::fromLatin1(c.test));
        const QString control = QString::fromLatin1(c.control);
        for (std::size_t i = 0; i < c.rawODs.size(); ++i) {
            p.put(kColumn1[i], control, c.rawODs[i]);
            if (i < c.flags.size())
                p.setFlag(kColumn1[i], c.flags[i]);
        }
        if (control != u"PC")
            p.put({"A12", "B12", "C12"}, QStringLiteral("PC"), {1.0, 1.0, 1.0});
        if (control != u"NC")
            p.put({"D12", "E12", "F12"}, QStringLiteral("NC"), {0.1, 0.1, 0.1});
        p.read();
        p.evaluate();

        bool anyExcluded = false;
        for (std::size_t i = 0; i < c.rawODs.size(); ++i) {
            EXPECT_EQ(p.flag(kColumn1[i]), c.flagsAfter[i]) << kColumn1[i];
            anyExcluded = anyExcluded || (c.flagsAfter[i] == 0 && (i >= c.flags.size() || c.flags[i] != 0));
        }
        if (anyExcluded)
            EXPECT_EQ(p.boxes(), QList<PromptBox>{kControlsBox});
        else
            EXPECT_EQ(p.boxes(), QList<PromptBox>{});
    }
}

TEST(OutlierSearch, OneBoxForAllControlsAndTheMeansOfWhatIsLeft)
{
    TestPlate p(kJmv2);
    p.put({"A1", "B1", "C1", "D1"}, QStringLiteral("PC"), {1.0, 1.0, 1.0, 3.0});
    p.put({"A2", "B2", "C2", "D2"}, QStringLiteral("NC"), {0.1, 0.1, 0.1, 0.5});
    p.read();
    EXPECT_TRUE(p.evaluate());
    EXPECT_EQ(p.boxes(), QList<PromptBox>{kControlsBox});
    EXPECT_TRUE(p.out.controlsExcluded);
    EXPECT_EQ(p.verdict(), kJmv2Passed); // the means of what is left
}

TEST(OutlierSearch, WorksOnTheAdjustedODs)
{
    // The raw ODs 0.15, 0.15, 0.15, 0.27 spread by a CV of 33; less the blank of 0.1 they
    // are 0.05, 0.05, 0.05, 0.17, a CV of 75.
    TestPlate p(kJmv2);
    p.put({"A1", "B1", "C1", "D1"}, QStringLiteral("NC"), {0.15, 0.15, 0.15, 0.27});
    p.put("E1", QStringLiteral("BLANK"), 0.1);
    p.put("F1", QStringLiteral("PC"), 1.0);
    p.read();
    p.evaluate();
    EXPECT_EQ(p.flag("D1"), 0);
}

TEST(RequiredControlsAfterSearch, AnExcludedOutlierCanLeaveTooFewControls)
{
    // The WQD kit needs three NC; one of three is thrown out.
    TestPlate p(QStringLiteral("WQD 6WQ0.20"));
    p.put({"A1", "B1", "C1"}, QStringLiteral("NC"), {0.01, 0.01, 2.0});
    p.put({"A12", "B12"}, QStringLiteral("PC"), {0.5, 0.5});
    p.put("A2", QStringLiteral("S1"), 0.2);
    p.read();
    EXPECT_FALSE(p.evaluate());
    EXPECT_EQ(p.flag("C1"), 0);
    EXPECT_EQ(p.boxes(), QList<PromptBox>{kControlsBox});
    EXPECT_EQ(p.verdict(), QStringLiteral("VALIDATION FAILED:  Required controls missing."));
    EXPECT_TRUE(p.resultSheetEmpty());
}

// --- Wells kept or excluded by hand -----------------------------------------------------------

TEST(KeptByHand, CountsInTheMeanThoughTheSearchWouldThrowItOut)
{
    TestPlate p(kJmv2);
    p.put({"A1", "B1", "C1", "D1"}, QStringLiteral("PC"), {1.0, 1.0, 1.0, 3.0});
    p.put("E1", QStringLiteral("NC"), 0.1);
    p.put("A2", QStringLiteral("S1"), 1.2);
    p.setFlag("D1", 2);
    p.read();
    EXPECT_TRUE(p.evaluate());
    EXPECT_EQ(p.flag("D1"), 2);
    EXPECT_EQ(p.boxes(), QList<PromptBox>{});
    EXPECT_EQ(p.verdict(), crlf({"TEST VALIDATION PASSED", "Neg Control (AVG): 0.100", "Pos Control (AVG): 1.500"}));
    EXPECT_EQ(p.result("A2"), QStringLiteral("NEG")); // 1.2 is below the mean of 1.5
}
