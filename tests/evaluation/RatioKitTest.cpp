// Figures, sample verdicts and plate validation of the ratio kits. Kits that share a class
// (the TSC kits, the current JMV kits) run its validation rows once; each cut-off keeps its own rows.

#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/cls405Dalvenia.h"
#include "evaluation/kits/cls414KSV.h"
#include "evaluation/kits/cls420JMV.h"
#include "evaluation/kits/cls420JMV_1_2.h"
#include "evaluation/kits/cls6174020TSCBovineMilk.h"
#include "evaluation/kits/cls6174020TSCCaprine.h"
#include "evaluation/kits/cls617420TSC.h"
#include "evaluation/kits/cls6615011JMV.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>

namespace {

using KitMaker = std::function<std::unique_ptr<TestKit>()>;

template<typename Kit>
KitMaker maker()
{
    return [] { return std::make_unique<Kit>(); };
}

float up(float od) { return std::nextafter(od, std::numeric_limits<float>::infinity()); }
float down(float od) { return std::nextafter(od, -std::numeric_limits<float>::infinity()); }

QString lines(std::initializer_list<const char *> parts)
{
    QStringList list;
    for (const char *part : parts)
        list << QString::fromUtf8(part);
    return list.join(QStringLiteral("\r\n"));
}

const QString POS = QStringLiteral("POS");
const QString NEG = QStringLiteral("NEG");

// --- S/P figure ---------------------------------------------------------------------------

struct KitRow {
    std::string name;
    KitMaker make;
};

void PrintTo(const KitRow &row, std::ostream *os)
{
    *os << row.name;
}

class SpFigure : public ::testing::TestWithParam<KitRow> {};

// (value - NC) / (PC - NC), three decimals, no percent sign.
TEST_P(SpFigure, IsTheSampleToPositiveRatio)
{
    const auto kit = GetParam().make();
    EXPECT_DOUBLE_EQ(kit->getCalculationRatioValue(0.375, 1.125, 0.125), 0.25);
    EXPECT_EQ(kit->getCalculationRatio(0.375, 1.125, 0.125), QStringLiteral("0.250"));
    EXPECT_EQ(kit->getCalculationRatio(2.0, 1.125, 0.125), QStringLiteral("1.875"));
    EXPECT_EQ(kit->getCalculationRatio(0.0, 1.125, 0.125), QStringLiteral("-0.125"));
    EXPECT_EQ(kit->getCalculationRatio(0.05, 1.0, 0.1), QStringLiteral("-0.056"));
    EXPECT_EQ(kit->getCalculationRatio(0.1, 1.1, 0.1), QStringLiteral("0.000"));
}

TEST_P(SpFigure, EqualMeansAreADivisionError)
{
    const auto kit = GetParam().make();
    EXPECT_THROW(kit->getCalculationRatioValue(0.5, 0.3, 0.3), KitDivisionByZero);
    EXPECT_THROW(kit->getCalculationRatio(0.5, 0.3, 0.3), KitDivisionByZero);
    EXPECT_THROW(kit->mathResults(0.5f, 0.3, 0.3), KitDivisionByZero);
}

INSTANTIATE_TEST_SUITE_P(SpKits, SpFigure,
                         ::testing::Values(KitRow{"Dalvenia405", maker<cls405Dalvenia>()},
                                           KitRow{"TSC617420", maker<cls617420TSC>()}),
                         [](const auto &info) { return info.param.name; });

// --- sample verdicts ------------------------------------------------------------------------

struct VerdictRow {
    std::string name;
    KitMaker make;
    float od;
    double meanPC;
    double meanNC;
    QString expected;
};

void PrintTo(const VerdictRow &row, std::ostream *os)
{
    *os << row.name << " OD " << row.od << " PC " << row.meanPC << " NC " << row.meanNC;
}

class RatioVerdict : public ::testing::TestWithParam<VerdictRow> {};

TEST_P(RatioVerdict, CallsTheSample)
{
    const VerdictRow &row = GetParam();
    EXPECT_EQ(row.make()->mathResults(row.od, row.meanPC, row.meanNC), row.expected);
}

// The inputs put (OD - NC) / (PC - NC) * 100 exactly on the cut-off: 25 at OD 0.375 with
// PC 1.125 and NC 0.125; 30 at OD 0.3125 with PC 0.75 and NC 0.125; 13 at OD 0.265625 with
// PC 1.625 and NC 0.0625; 80 at OD 0.625 with PC 0.75 and NC 0.125. Dalvenia counts the
// cut-off itself as POS, the TSC kits don't.
INSTANTIATE_TEST_SUITE_P(
    SpCutOffs, RatioVerdict,
    ::testing::Values(
        VerdictRow{"Dalvenia_At25Pos", maker<cls405Dalvenia>(), 0.375f, 1.125, 0.125, POS},
        VerdictRow{"Dalvenia_JustBelow25Neg", maker<cls405Dalvenia>(), down(0.375f), 1.125, 0.125, NEG},
        VerdictRow{"Dalvenia_JustAbove25Pos", maker<cls405Dalvenia>(), up(0.375f), 1.125, 0.125, POS},
        VerdictRow{"TSC_At30Neg", maker<cls617420TSC>(), 0.3125f, 0.75, 0.125, NEG},
        VerdictRow{"TSC_JustAbove30Pos", maker<cls617420TSC>(), up(0.3125f), 0.75, 0.125, POS},
        VerdictRow{"TSC_JustBelow30Neg", maker<cls617420TSC>(), down(0.3125f), 0.75, 0.125, NEG},
        VerdictRow{"TSCBovineMilk_At13Neg", maker<cls6174020TSCBovineMilk>(), 0.265625f, 1.625, 0.0625, NEG},
        VerdictRow{"TSCBovineMilk_JustAbove13Pos", maker<cls6174020TSCBovineMilk>(), up(0.265625f), 1.625,
                   0.0625, POS},
        VerdictRow{"TSCCaprine_At80Neg", maker<cls6174020TSCCaprine>(), 0.625f, 0.75, 0.125, NEG},
        VerdictRow{"TSCCaprine_JustAbove80Pos", maker<cls6174020TSCCaprine>(), up(0.625f), 0.75, 0.125, POS}),
    [](const auto &info) { return info.param.name; });

// The same samples against the four S/P cut-offs: 43.75% and 18.75% of the span.
INSTANTIATE_TEST_SUITE_P(
    SameSampleOwnCutOff, RatioVerdict,
    ::testing::Values(
        VerdictRow{"Dalvenia_43_75Pos", maker<cls405Dalvenia>(), 0.5625f, 1.125, 0.125, POS},
        VerdictRow{"TSC_43_75Pos", maker<cls617420TSC>(), 0.5625f, 1.125, 0.125, POS},
        VerdictRow{"TSCBovineMilk_43_75Pos", maker<cls6174020TSCBovineMilk>(), 0.5625f, 1.125, 0.125, POS},
        VerdictRow{"TSCCaprine_43_75Neg", maker<cls6174020TSCCaprine>(), 0.5625f, 1.125, 0.125, NEG},
        VerdictRow{"Dalvenia_18_75Neg", maker<cls405Dalvenia>(), 0.3125f, 1.125, 0.125, NEG},
        VerdictRow{"TSC_18_75Neg", maker<cls617420TSC>(), 0.3125f, 1.125, 0.125, NEG},
        VerdictRow{"TSCBovineMilk_18_75Pos", maker<cls6174020TSCBovineMilk>(), 0.3125f, 1.125, 0.125, POS},
        VerdictRow{"TSCCaprine_18_75Neg", maker<cls6174020TSCCaprine>(), 0.3125f, 1.125, 0.125, NEG}),
    [](const auto &info) { return info.param.name; });

// KSV compares Format(OD, "##,##0.000") with Format(PC, "##,##0.000") as texts; POS when
// the OD's text is not below the PC's.
INSTANTIATE_TEST_SUITE_P(
    KSV414Text, RatioVerdict,
    ::testing::Values(
        // Both show as 0.250.
        VerdictRow{"EqualAfterRoundingPos", maker<cls414KSV>(), 0.2504f, 0.2496, 0.05, POS},
        VerdictRow{"EqualPos", maker<cls414KSV>(), 0.3f, 0.3, 0.05, POS},
        VerdictRow{"OneThousandthBelowNeg", maker<cls414KSV>(), 0.2494f, 0.2496, 0.05, NEG},
        VerdictRow{"AbovePos", maker<cls414KSV>(), 0.251f, 0.25, 0.05, POS},
        // "10.000" is below "2.000" as text.
        VerdictRow{"TenBelowTwoAsTextNeg", maker<cls414KSV>(), 10.0f, 2.0, 0.05, NEG},
        VerdictRow{"TwoAboveTenAsTextPos", maker<cls414KSV>(), 2.0f, 10.0, 0.05, POS},
        // "1,000.000" against "1.500": the comma sorts before the point.
        VerdictRow{"ThousandsCommaNeg", maker<cls414KSV>(), 1000.0f, 1.5, 0.05, NEG},
        VerdictRow{"NegativeOdNeg", maker<cls414KSV>(), -0.1f, 0.05, 0.01, NEG},
        // The NC plays no part: equal means are no division here.
        VerdictRow{"EqualMeansNoError", maker<cls414KSV>(), 0.5f, 0.3, 0.3, POS}),
    [](const auto &info) { return info.param.name; });

// The JMV kits compare the OD, widened from its float, with the PC mean as numbers.
std::vector<VerdictRow> jmvVerdictRows(const std::string &kit, KitMaker make)
{
    return {
        {kit + "_EqualPos", make, 0.5f, 0.5, 0.05, POS},
        {kit + "_JustBelowNeg", make, down(0.5f), 0.5, 0.05, NEG},
        {kit + "_JustAbovePos", make, up(0.5f), 0.5, 0.05, POS},
        // Numbers, not texts: both would show 0.500.
        {kit + "_BelowByLessThanRoundingNeg", make, 0.5f, 0.5000001, 0.05, NEG},
        {kit + "_TenAboveTwoPos", make, 10.0f, 2.0, 0.05, POS},
        // 0.7f is 0.69999999; 0.3f is 0.30000001.
        {kit + "_FloatBelowDecimalNeg", make, 0.7f, 0.7, 0.05, NEG},
        {kit + "_FloatAboveDecimalPos", make, 0.3f, 0.3, 0.05, POS},
    };
}

INSTANTIATE_TEST_SUITE_P(JMV420, RatioVerdict, ::testing::ValuesIn(jmvVerdictRows("JMV420", maker<cls420JMV>())),
                         [](const auto &info) { return info.param.name; });
INSTANTIATE_TEST_SUITE_P(JMV420_1_2, RatioVerdict,
                         ::testing::ValuesIn(jmvVerdictRows("JMV420_1_2", maker<cls420JMV_1_2>())),
                         [](const auto &info) { return info.param.name; });

// --- plate validation ------------------------------------------------------------------------

struct ValidationRow {
    std::string name;
    KitMaker make;
    double meanPC;
    double meanNC;
    bool passes;
    QString text;
};

void PrintTo(const ValidationRow &row, std::ostream *os)
{
    *os << row.name << " PC " << row.meanPC << " NC " << row.meanNC;
}

class RatioValidation : public ::testing::TestWithParam<ValidationRow> {};

// No kit of this family looks at the %CVs, and only the old JMV kit at the version.
TEST_P(RatioValidation, JudgesThePlateAndWritesTheText)
{
    const ValidationRow &row = GetParam();
    KitValidationText out;
    out.boxes = QStringLiteral("left from an earlier plate");
    const bool passed = row.make()->validateTest(row.meanPC, row.meanNC, 250.0, 250.0,
                                                 QStringLiteral("1.5.4"), out);
    EXPECT_EQ(passed, row.passes);
    EXPECT_EQ(out.boxes, row.text);
    EXPECT_FALSE(out.infoWritten);
    EXPECT_TRUE(out.info.isEmpty());
}

const char *const kFailedHead = "TEST VALIDATION FAILED: ";
const char *const kPassedHead = "TEST VALIDATION PASSED";

const char *const kDalveniaNC = "The mean of the Negative Controls must be < 0.250";
const char *const kDalveniaPC = "The mean of the Positive Controls must be >= 0.500 and <= 1.800";

INSTANTIATE_TEST_SUITE_P(
    Dalvenia405, RatioValidation,
    ::testing::Values(
        ValidationRow{"NCExactly0_25Fails", maker<cls405Dalvenia>(), 1.0, 0.25, false,
                      lines({kFailedHead, kDalveniaNC, "Neg Control (AVG): 0.250", "Pos Control (AVG): 1.000"})},
        ValidationRow{"NCJustBelow0_25Passes", maker<cls405Dalvenia>(), 1.0, 0.2499, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.250", "Pos Control (AVG): 1.000"})},
        ValidationRow{"PCExactly0_5Passes", maker<cls405Dalvenia>(), 0.5, 0.1, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.100", "Pos Control (AVG): 0.500"})},
        ValidationRow{"PCJustBelow0_5Fails", maker<cls405Dalvenia>(), 0.4999, 0.1, false,
                      lines({kFailedHead, kDalveniaPC, "Neg Control (AVG): 0.100", "Pos Control (AVG): 0.500"})},
        ValidationRow{"PCExactly1_8Passes", maker<cls405Dalvenia>(), 1.8, 0.1, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.100", "Pos Control (AVG): 1.800"})},
        ValidationRow{"PCJustAbove1_8Fails", maker<cls405Dalvenia>(), 1.8001, 0.1, false,
                      lines({kFailedHead, kDalveniaPC, "Neg Control (AVG): 0.100", "Pos Control (AVG): 1.800"})}),
    [](const auto &info) { return info.param.name; });

std::vector<ValidationRow> tscRows(const std::string &kit, KitMaker make)
{
    const char *nc = "The mean of the Negative Controls must be < 0.200";
    const char *pc = "The mean of the Positive Controls must be >= 0.300";
    return {
        {kit + "_NCExactly0_2Fails", make, 1.0, 0.2, false,
         lines({kFailedHead, nc, "Neg Control (AVG): 0.200", "Pos Control (AVG): 1.000"})},
        {kit + "_NCJustBelow0_2Passes", make, 1.0, 0.1999, true,
         lines({kPassedHead, "Neg Control (AVG): 0.200", "Pos Control (AVG): 1.000"})},
        {kit + "_PCExactly0_3Passes", make, 0.3, 0.1, true,
         lines({kPassedHead, "Neg Control (AVG): 0.100", "Pos Control (AVG): 0.300"})},
        {kit + "_PCJustBelow0_3Fails", make, 0.2999, 0.1, false,
         lines({kFailedHead, pc, "Neg Control (AVG): 0.100", "Pos Control (AVG): 0.300"})},
        {kit + "_NoUpperPCLimit", make, 2500.0, 0.1, true,
         lines({kPassedHead, "Neg Control (AVG): 0.100", "Pos Control (AVG): 2,500.000"})},
    };
}

INSTANTIATE_TEST_SUITE_P(TSC617420, RatioValidation, ::testing::ValuesIn(tscRows("TSC", maker<cls617420TSC>())),
                         [](const auto &info) { return info.param.name; });

const char *const kKsvNC = "The mean of the Negative Controls must be < 0.200";
// The message ends in a blank.
const char *const kKsvPC = "The mean of the Positive Controls must be >= 0.250 and < 2.000 ";

INSTANTIATE_TEST_SUITE_P(
    KSV414, RatioValidation,
    ::testing::Values(
        ValidationRow{"NCExactly0_2Fails", maker<cls414KSV>(), 1.0, 0.2, false,
                      lines({kFailedHead, kKsvNC, "Neg Control (AVG): 0.200", "Pos Control (AVG): 1.000"})},
        ValidationRow{"NCJustBelow0_2Passes", maker<cls414KSV>(), 1.0, 0.1999, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.200", "Pos Control (AVG): 1.000"})},
        ValidationRow{"PCExactly0_25Passes", maker<cls414KSV>(), 0.25, 0.1, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.100", "Pos Control (AVG): 0.250"})},
        ValidationRow{"PCJustBelow0_25Fails", maker<cls414KSV>(), 0.2499, 0.1, false,
                      lines({kFailedHead, kKsvPC, "Neg Control (AVG): 0.100", "Pos Control (AVG): 0.250"})},
        ValidationRow{"PCExactly2_0Fails", maker<cls414KSV>(), 2.0, 0.1, false,
                      lines({kFailedHead, kKsvPC, "Neg Control (AVG): 0.100", "Pos Control (AVG): 2.000"})},
        ValidationRow{"PCJustBelow2_0Passes", maker<cls414KSV>(), 1.9999, 0.1, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.100", "Pos Control (AVG): 2.000"})}),
    [](const auto &info) { return info.param.name; });

std::vector<ValidationRow> jmvRows(const std::string &kit, KitMaker make)
{
    const char *first =
        "The mean of the Positive Controls must be >= than 1.5 times the mean of the Negative Controls,";
    const char *second = "and the mean of the Negative Controls must be <= 0.15.";
    return {
        // PC exactly 1.5 times an NC of exactly 0.15.
        {kit + "_BothEdgesPass", make, 0.225, 0.15, true,
         lines({kPassedHead, "Neg Control (AVG): 0.150", "Pos Control (AVG): 0.225"})},
        {kit + "_NCJustAbove0_15Fails", make, 1.0, 0.1501, false,
         lines({kFailedHead, first, second, "Neg Control (AVG): 0.150", "Pos Control (AVG): 1.000"})},
        {kit + "_PCExactly1_5TimesPasses", make, 0.1875, 0.125, true,
         lines({kPassedHead, "Neg Control (AVG): 0.125", "Pos Control (AVG): 0.188"})},
        {kit + "_PCJustBelow1_5TimesFails", make, std::nextafter(0.1875, 0.0), 0.125, false,
         lines({kFailedHead, first, second, "Neg Control (AVG): 0.125", "Pos Control (AVG): 0.188"})},
    };
}

INSTANTIATE_TEST_SUITE_P(JMV420, RatioValidation, ::testing::ValuesIn(jmvRows("JMV420", maker<cls420JMV>())),
                         [](const auto &info) { return info.param.name; });

// --- the JMV rules kept for old plates --------------------------------------------------------

const char *const kOldJmvRule =
    "The mean of the Positive Controls must be >= than 2 times the mean of the Negative Controls.";

QString oldJmvInfo(const QString &boxes, const QString &version)
{
    return boxes + QStringLiteral("\r\nValidation and Specification from\r\nversion ") + version
        + QStringLiteral(" is being used because this plate was read in Tavimetra version ") + version
        + QStringLiteral(".");
}

struct OldJmvRow {
    std::string name;
    double meanPC;
    double meanNC;
    QString version;
    bool passes;
    QString boxes;
};

void PrintTo(const OldJmvRow &row, std::ostream *os)
{
    *os << row.name;
}

class OldJmvValidation : public ::testing::TestWithParam<OldJmvRow> {};

TEST_P(OldJmvValidation, JudgesWritesTheBoxesAndTheInfoView)
{
    const OldJmvRow &row = GetParam();
    KitValidationText out;
    const bool passed = cls420JMV_1_2().validateTest(row.meanPC, row.meanNC, 250.0, 250.0, row.version, out);
    EXPECT_EQ(passed, row.passes);
    EXPECT_EQ(out.boxes, row.boxes);
    EXPECT_TRUE(out.infoWritten);
    EXPECT_EQ(out.info, oldJmvInfo(row.boxes, row.version));
}

INSTANTIATE_TEST_SUITE_P(
    JMV420_1_2, OldJmvValidation,
    ::testing::Values(
        // Exactly twice fails, though the message allows it.
        OldJmvRow{"ExactlyTwiceFails", 0.25, 0.125, QStringLiteral("1.2.0"), false,
                  lines({kFailedHead, kOldJmvRule, "Neg Control (AVG): 0.125", "Pos Control (AVG): 0.250"})},
        OldJmvRow{"JustOverTwicePasses", std::nextafter(0.25, 1.0), 0.125, QStringLiteral("1.2.0"), true,
                  lines({kPassedHead, "Neg Control (AVG): 0.125", "Pos Control (AVG): 0.250"})},
        // No NC limit in the old rule.
        OldJmvRow{"HighNCPasses", 1.1, 0.5, QStringLiteral("1.1.7"), true,
                  lines({kPassedHead, "Neg Control (AVG): 0.500", "Pos Control (AVG): 1.100"})},
        OldJmvRow{"WeakPCFails", 0.15, 0.1, QStringLiteral("2.1"), false,
                  lines({kFailedHead, kOldJmvRule, "Neg Control (AVG): 0.100", "Pos Control (AVG): 0.150"})},
        OldJmvRow{"EmptyVersionStillNoted", 1.0, 0.1, QString(), true,
                  lines({kPassedHead, "Neg Control (AVG): 0.100", "Pos Control (AVG): 1.000"})}),
    [](const auto &info) { return info.param.name; });

// A kit with no figure answers -1.0 and an empty text, whatever it is given, so that
// reports leave out the figure column and tracking knows it has none.
class KitWithoutFigure : public ::testing::TestWithParam<KitMaker> {};

TEST_P(KitWithoutFigure, AnswersMinusOneAndEmptyText)
{
    const auto kit = GetParam()();
    EXPECT_EQ(kit->getCalculationRatioValue(0.8, 1.0, 0.1), -1.0);
    EXPECT_EQ(kit->getCalculationRatio(0.8, 1.0, 0.1), QString());
}

INSTANTIATE_TEST_SUITE_P(RatioKits, KitWithoutFigure,
                         ::testing::Values(maker<cls414KSV>(), maker<cls420JMV>(), maker<cls420JMV_1_2>(),
                                           maker<cls6615011JMV>()));

} // namespace
