// Per-sample figures and verdicts of the inhibition kits: every cut-off at, just above
// and just below its boundary. Boundary inputs are binary fractions chosen so that the
// kit's figure lands exactly on the cut-off; the neighbours move the OD by one step of a
// 32-bit float.

#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/cls402HTV.h"
#include "evaluation/kits/cls403TremalisArda.h"
#include "evaluation/kits/cls404TremalisBosk.h"
#include "evaluation/kits/cls410Sylvenna.h"
#include "evaluation/kits/cls412Orvexa.h"
#include "evaluation/kits/cls413Orvexa.h"
#include "evaluation/kits/cls417Nimbrel.h"
#include "evaluation/kits/cls419PZV.h"
#include "evaluation/kits/cls424VLPV.h"
#include "evaluation/kits/cls6120302Nimbrel.h"
#include "evaluation/kits/cls6WQ020WQD.h"

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

const QString POS = QStringLiteral("POS");
const QString NEG = QStringLiteral("NEG");

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

class InhibitionVerdict : public ::testing::TestWithParam<VerdictRow> {};

TEST_P(InhibitionVerdict, CallsTheSample)
{
    const VerdictRow &row = GetParam();
    EXPECT_EQ(row.make()->mathResults(row.od, row.meanPC, row.meanNC), row.expected);
}

// With a mean NC of 1.25 the inhibition 100 - OD / NC * 100 is exactly 60 at an OD of
// 0.5, 40 at 0.75 and 30 at 0.875; (1 - OD / NC) * 100 is exactly 35 at 0.8125 and 40
// at 0.75.
std::vector<VerdictRow> cutOffRows()
{
    std::vector<VerdictRow> rows;
    auto around = [&rows](const std::string &kit, KitMaker make, float od, double nc) {
        rows.push_back({kit + "_AtCutOff", make, od, 0.2, nc, POS});
        rows.push_back({kit + "_JustBelowCutOff", make, up(od), 0.2, nc, NEG});
        rows.push_back({kit + "_JustAboveCutOff", make, down(od), 0.2, nc, POS});
    };
    around("Nimbrel6120302_60", maker<cls6120302Nimbrel>(), 0.5f, 1.25);
    around("Orvexa412_30", maker<cls412Orvexa>(), 0.875f, 1.25);
    around("Sylvenna410_30", maker<cls410Sylvenna>(), 0.875f, 1.25);
    around("HTV402_35", maker<cls402HTV>(), 0.8125f, 1.25);
    around("TremalisBosk404_40", maker<cls404TremalisBosk>(), 0.75f, 1.25);
    around("WQD6WQ020_40", maker<cls6WQ020WQD>(), 0.75f, 1.25);
    return rows;
}

INSTANTIATE_TEST_SUITE_P(CutOffs, InhibitionVerdict, ::testing::ValuesIn(cutOffRows()),
                         [](const auto &info) { return info.param.name; });

// Far from the cut-off, and the positive mean plays no part.
INSTANTIATE_TEST_SUITE_P(
    Plain, InhibitionVerdict,
    ::testing::Values(
        VerdictRow{"Orvexa412_StrongSample", maker<cls412Orvexa>(), 0.1f, 99.0, 1.0, POS},
        VerdictRow{"Orvexa412_WeakSample", maker<cls412Orvexa>(), 0.9f, 0.0, 1.0, NEG},
        VerdictRow{"Nimbrel6120302_Between30And60", maker<cls6120302Nimbrel>(), 0.5f, 0.1, 1.0, NEG},
        VerdictRow{"HTV402_OdAboveNC", maker<cls402HTV>(), 1.5f, 0.1, 1.0, NEG},
        VerdictRow{"WQD6WQ020_Between30And40", maker<cls6WQ020WQD>(), 0.65f, 0.1, 1.0, NEG},
        VerdictRow{"Sylvenna410_NegativeOd", maker<cls410Sylvenna>(), -0.05f, 0.1, 1.0, POS}),
    [](const auto &info) { return info.param.name; });

// VLPV judges 100 - OD * 100 / NC as a whole number, halves to even. With NC 0.78125
// the figure is 24.5 at an OD of 151/256, 25 at 150/256 and 25.5 at 149/256.
INSTANTIATE_TEST_SUITE_P(
    VLPV424WholeNumber, InhibitionVerdict,
    ::testing::Values(
        VerdictRow{"Exactly25", maker<cls424VLPV>(), 150.0f / 256, 0.1, 0.78125, POS},
        VerdictRow{"Half24RoundsDownTo24", maker<cls424VLPV>(), 151.0f / 256, 0.1, 0.78125, NEG},
        VerdictRow{"JustOverHalfRoundsTo25", maker<cls424VLPV>(), down(151.0f / 256), 0.1, 0.78125, POS},
        VerdictRow{"Half25RoundsUpTo26", maker<cls424VLPV>(), 149.0f / 256, 0.1, 0.78125, POS}),
    [](const auto &info) { return info.param.name; });

// PZV works in single precision: the means become 32-bit floats, and OD / NC * 100 is
// rounded to a float at each step. With NC 1.25 an OD one float step above 0.8125 gives
// 34.999995 in double precision but exactly 35 in single, so it is POS; two steps above
// it is NEG in both.
INSTANTIATE_TEST_SUITE_P(
    PZV419SinglePrecision, InhibitionVerdict,
    ::testing::Values(
        VerdictRow{"AtCutOff", maker<cls419PZV>(), 0.8125f, 0.2, 1.25, POS},
        VerdictRow{"OneStepAboveStillPosInSingle", maker<cls419PZV>(), up(0.8125f), 0.2, 1.25, POS},
        VerdictRow{"TwoStepsAboveNeg", maker<cls419PZV>(), up(up(0.8125f)), 0.2, 1.25, NEG},
        VerdictRow{"JustAboveCutOff", maker<cls419PZV>(), down(0.8125f), 0.2, 1.25, POS},
        // 1.249999838 becomes the float 1.24999988; in double the figure is 34.99999,
        // in single it is exactly 35.
        VerdictRow{"MeanNCRoundedToSingle", maker<cls419PZV>(), 0.8125f, 0.2, 1.249999838, POS},
        VerdictRow{"Plain", maker<cls419PZV>(), 0.9f, 0.2, 1.0, NEG}),
    [](const auto &info) { return info.param.name; });

// Nimbrel 417 compares Format(OD, "##,##0.000") with Format(NC / 2, "##,##0.000") as
// texts, character by character: POS when the OD's text sorts first.
INSTANTIATE_TEST_SUITE_P(
    Nimbrel417Text, InhibitionVerdict,
    ::testing::Values(
        VerdictRow{"EqualTextsNeg", maker<cls417Nimbrel>(), 0.400f, 0.1, 0.800, NEG},
        VerdictRow{"JustBelowHalfPos", maker<cls417Nimbrel>(), 0.399f, 0.1, 0.800, POS},
        VerdictRow{"JustAboveHalfNeg", maker<cls417Nimbrel>(), 0.401f, 0.1, 0.800, NEG},
        // 0.3995 shows as 0.400, the same text as half of 0.800.
        VerdictRow{"EqualAfterRoundingNeg", maker<cls417Nimbrel>(), 0.3995f, 0.1, 0.800, NEG},
        // Half of 0.8009 shows as 0.400.
        VerdictRow{"HalfNCRoundedNeg", maker<cls417Nimbrel>(), 0.400f, 0.1, 0.8009, NEG},
        VerdictRow{"NegativeOdPos", maker<cls417Nimbrel>(), -0.010f, 0.1, 0.800, POS},
        // "10.000" sorts before "2.000" though 10 is more than 2.
        VerdictRow{"LongerTextSortsByFirstCharacterPos", maker<cls417Nimbrel>(), 10.0f, 0.1, 4.0, POS},
        VerdictRow{"ShorterButGreaterNeg", maker<cls417Nimbrel>(), 2.5f, 0.1, 4.0, NEG},
        // "1,000.000" against "1.500": the comma sorts before the point.
        VerdictRow{"ThousandsCommaSortsBeforePointPos", maker<cls417Nimbrel>(), 1000.0f, 0.1, 3.0, POS}),
    [](const auto &info) { return info.param.name; });

// --- figures ----------------------------------------------------------------------------

struct FigureRow {
    std::string name;
    KitMaker make;
};

void PrintTo(const FigureRow &row, std::ostream *os)
{
    *os << row.name;
}

class InhibitionFigure : public ::testing::TestWithParam<FigureRow> {};

// The inhibition (1 - value / NC) * 100, one decimal, then "%"; the positive mean is
// not used.
TEST_P(InhibitionFigure, IsTheInhibitionWithOneDecimal)
{
    const auto kit = GetParam().make();
    EXPECT_NEAR(kit->getCalculationRatioValue(0.8764, 5.0, 1.0), 12.36, 1e-9);
    EXPECT_EQ(kit->getCalculationRatioValue(0.8764, 5.0, 1.0),
              kit->getCalculationRatioValue(0.8764, -3.0, 1.0));
    EXPECT_EQ(kit->getCalculationRatio(0.8764, 5.0, 1.0), QStringLiteral("12.4%"));
    EXPECT_EQ(kit->getCalculationRatio(0.75, 0.0, 1.25), QStringLiteral("40.0%"));
    EXPECT_EQ(kit->getCalculationRatio(1.5, 0.0, 1.0), QStringLiteral("-50.0%"));
    EXPECT_EQ(kit->getCalculationRatio(0.0, 0.0, 1.0), QStringLiteral("100.0%"));
}

TEST_P(InhibitionFigure, ZeroMeanNCIsADivisionError)
{
    const auto kit = GetParam().make();
    EXPECT_THROW(kit->getCalculationRatioValue(0.5, 1.0, 0.0), KitDivisionByZero);
    EXPECT_THROW(kit->getCalculationRatio(0.5, 1.0, 0.0), KitDivisionByZero);
    EXPECT_THROW(kit->mathResults(0.5f, 1.0, 0.0), KitDivisionByZero);
}

INSTANTIATE_TEST_SUITE_P(
    OneDecimalKits, InhibitionFigure,
    ::testing::Values(FigureRow{"Nimbrel6120302", maker<cls6120302Nimbrel>()},
                      FigureRow{"PZV419", maker<cls419PZV>()},
                      FigureRow{"Sylvenna410", maker<cls410Sylvenna>()},
                      FigureRow{"HTV402", maker<cls402HTV>()},
                      FigureRow{"TremalisBosk404", maker<cls404TremalisBosk>()},
                      FigureRow{"VLPV424", maker<cls424VLPV>()},
                      FigureRow{"WQD6WQ020", maker<cls6WQ020WQD>()}),
    [](const auto &info) { return info.param.name; });

class OrvexaFigure : public ::testing::TestWithParam<FigureRow> {};

// Formatted with two decimals, then the last character cut: the first decimal is the
// one the two-decimal rounding left, not a rounding to one decimal.
TEST_P(OrvexaFigure, IsTheInhibitionWithTwoDecimalsCutToOne)
{
    const auto kit = GetParam().make();
    EXPECT_NEAR(kit->getCalculationRatioValue(0.8764, 5.0, 1.0), 12.36, 1e-9);
    EXPECT_EQ(kit->getCalculationRatio(0.8764, 5.0, 1.0), QStringLiteral("12.3%"));
    // 12.396 -> "12.40" -> "12.4"
    EXPECT_EQ(kit->getCalculationRatio(0.87604, 5.0, 1.0), QStringLiteral("12.4%"));
    // 12.399 -> "12.40" -> "12.4"
    EXPECT_EQ(kit->getCalculationRatio(0.87601, 5.0, 1.0), QStringLiteral("12.4%"));
    // An exact 5 (to the last digit or so) shows 5.0%.
    EXPECT_EQ(kit->getCalculationRatio(0.95, 5.0, 1.0), QStringLiteral("5.0%"));
    EXPECT_EQ(kit->getCalculationRatio(1.1236, 5.0, 1.0), QStringLiteral("-12.3%"));
    EXPECT_EQ(kit->getCalculationRatio(0.875, 5.0, 1.25), QStringLiteral("30.0%"));
}

TEST_P(OrvexaFigure, ZeroMeanNCIsADivisionError)
{
    const auto kit = GetParam().make();
    EXPECT_THROW(kit->getCalculationRatio(0.5, 1.0, 0.0), KitDivisionByZero);
    EXPECT_THROW(kit->mathResults(0.5f, 1.0, 0.0), KitDivisionByZero);
}

INSTANTIATE_TEST_SUITE_P(Orvexa, OrvexaFigure,
                         ::testing::Values(FigureRow{"Orvexa412", maker<cls412Orvexa>()}),
                         [](const auto &info) { return info.param.name; });

// Nimbrel 417 reports the S/N: the number is the fraction value / NC, the text shows it
// as a percent with one decimal.
TEST(Nimbrel417Figure, NumberIsTheFractionTextIsThePercent)
{
    const cls417Nimbrel kit;
    EXPECT_DOUBLE_EQ(kit.getCalculationRatioValue(0.3, 9.0, 0.8), 0.375);
    EXPECT_EQ(kit.getCalculationRatio(0.3, 9.0, 0.8), QStringLiteral("37.5%"));
    // 31.25 rounds half away from zero.
    EXPECT_EQ(kit.getCalculationRatioValue(0.25, 9.0, 0.8), 0.3125);
    EXPECT_EQ(kit.getCalculationRatio(0.25, 9.0, 0.8), QStringLiteral("31.3%"));
    EXPECT_EQ(kit.getCalculationRatio(1.2, 9.0, 0.8), QStringLiteral("150.0%"));
    EXPECT_THROW(kit.getCalculationRatioValue(0.3, 9.0, 0.0), KitDivisionByZero);
    EXPECT_THROW(kit.getCalculationRatio(0.3, 9.0, 0.0), KitDivisionByZero);
}

} // namespace
