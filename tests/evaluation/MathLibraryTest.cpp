#include "evaluation/MathLibrary.h"

#include "FakePrompt.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

using Values = std::vector<double>;

// --- calculateMean ------------------------------------------------------------------

TEST(CalculateMean, AveragesAllValues)
{
    FakePrompt prompt;
    EXPECT_DOUBLE_EQ(MathLibrary::calculateMean({1.0, 2.0, 4.0, 5.0}, prompt), 3.0);
    EXPECT_DOUBLE_EQ(MathLibrary::calculateMean({-0.5, 0.25}, prompt), -0.125);
    EXPECT_EQ(prompt.count(), 0);
}

TEST(CalculateMean, SumsInOrderInDoublePrecisionThenDivides)
{
    // Three wells showing 0.123 read back through 32-bit floats: the mean keeps the
    // single-precision error of the wells, and is the plain double sum over three.
    FakePrompt prompt;
    const double well = static_cast<double>(0.123f);
    const double expected = (well + well + well) / 3.0;
    EXPECT_EQ(MathLibrary::calculateMean({well, well, well}, prompt), expected);
    EXPECT_NE(MathLibrary::calculateMean({well, well, well}, prompt), 0.123);
}

TEST(CalculateMean, NoValuesShowsTheCriticalBoxThenRaises522)
{
    FakePrompt prompt;
    try {
        MathLibrary::calculateMean({}, prompt);
        FAIL() << "no error raised";
    } catch (const MathLibraryError &error) {
        EXPECT_EQ(error.number(), 522);
    }
    ASSERT_EQ(prompt.count(), 1);
    EXPECT_EQ(prompt.last().title, QStringLiteral("Critical Error"));
    EXPECT_EQ(prompt.last().text, QStringLiteral("Cannot calculate mean.  Please contact Qorn."));
    EXPECT_EQ(prompt.last().icon, MsgIcon::Critical);
    EXPECT_FALSE(prompt.last().question);
}

// --- calculateStdDev ----------------------------------------------------------------

TEST(CalculateStdDev, UsesTheSampleFormWithNMinusOne)
{
    // Mean 5; squared deviations 9+1+1+1+0+0+4+16 = 32; 32 / 7, not 32 / 8.
    const Values values{2, 4, 4, 4, 5, 5, 7, 9};
    EXPECT_DOUBLE_EQ(MathLibrary::calculateStdDev(values), std::sqrt(32.0 / 7.0));
}

TEST(CalculateStdDev, FewerThanTwoValuesGiveZero)
{
    EXPECT_EQ(MathLibrary::calculateStdDev({0.7}), 0.0);
    EXPECT_EQ(MathLibrary::calculateStdDev({}), 0.0);
}

// --- calculateCV --------------------------------------------------------------------

TEST(CalculateCV, IsStdDevOverMeanInPercent)
{
    FakePrompt prompt;
    // Four PC wells 1.0, 1.0, 1.0, 3.0: mean 1.5, StdDev 1, CV 66.67.
    EXPECT_NEAR(MathLibrary::calculateCV({1.0, 1.0, 1.0, 3.0}, prompt), 66.6667, 1e-4);
    EXPECT_DOUBLE_EQ(MathLibrary::calculateCV({1.0, 3.0}, prompt), std::sqrt(2.0) / 2.0 * 100.0);
}

TEST(CalculateCV, DividesBeforeMultiplyingByHundred)
{
    FakePrompt prompt;
    const Values values{0.1, 0.2, 0.4};
    const double sd = MathLibrary::calculateStdDev(values);
    const double mean = (0.1 + 0.2 + 0.4) / 3.0;
    EXPECT_EQ(MathLibrary::calculateCV(values, prompt), sd / mean * 100.0);
    // For these values the other order differs in the last digit.
    EXPECT_NE(MathLibrary::calculateCV(values, prompt), sd * 100.0 / mean);
}

TEST(CalculateCV, MeanOfExactlyZeroGivesZeroWithoutDividing)
{
    FakePrompt prompt;
    EXPECT_EQ(MathLibrary::calculateCV({0.0, 0.0, 0.0}, prompt), 0.0);
    // A spread around zero: the StdDev is not 0, but the mean is, so the CV is 0.
    EXPECT_EQ(MathLibrary::calculateCV({-0.5, 0.5}, prompt), 0.0);
}

TEST(CalculateCV, NegativeMeanStillGivesAPositiveCV)
{
    FakePrompt prompt;
    const double cv = MathLibrary::calculateCV({-1.0, -3.0}, prompt);
    EXPECT_GT(cv, 0.0);
    EXPECT_DOUBLE_EQ(cv, std::sqrt(2.0) / 2.0 * 100.0);
}

// --- sortIntegers -------------------------------------------------------------------

TEST(SortIntegers, SortsAscendingAndReturnsACopy)
{
    std::vector<qint16> values{5, -2, 9, 0, 5, 1};
    const std::vector<qint16> expected{-2, 0, 1, 5, 5, 9};
    const std::vector<qint16> result = MathLibrary::sortIntegers(values);
    EXPECT_EQ(result, expected);
    // The argument is sorted too.
    EXPECT_EQ(values, expected);
    values[0] = 100;
    EXPECT_EQ(result.front(), -2);
}

// --- removeElement ------------------------------------------------------------------

TEST(RemoveElement, DropsOnlyTheElementAtTheIndexKeepingOrder)
{
    const Values values{0.1, 0.2, 0.3, 0.4};
    EXPECT_EQ(MathLibrary::removeElement(values, 0), (Values{0.2, 0.3, 0.4}));
    EXPECT_EQ(MathLibrary::removeElement(values, 2), (Values{0.1, 0.2, 0.4}));
    EXPECT_EQ(MathLibrary::removeElement(values, 3), (Values{0.1, 0.2, 0.3}));
    EXPECT_EQ(values.size(), 4u);
}

TEST(RemoveElement, IndexOutsideTheArrayIsABoundsFailure)
{
    EXPECT_THROW(MathLibrary::removeElement({1.0, 2.0}, 2), std::out_of_range);
    EXPECT_THROW(MathLibrary::removeElement({1.0, 2.0}, -1), std::out_of_range);
    EXPECT_THROW(MathLibrary::removeElement({}, 0), std::out_of_range);
}

} // namespace
