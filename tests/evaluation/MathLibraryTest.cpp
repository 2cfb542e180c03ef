#include "evaluation/MathLibrary.h"

#include "FakePrompt.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

using Values = std::vector<double>;

// --- calculateMean ------------------------------------------------------------------

TEST(CalculateMean, SumsInOrderInDoublePrecisionThenDivides)
{
    // Three wells showing 0.123 read back through 32-bit floats: the mean keeps the
    // single-precision error of the wells, and is the plain double sum over three.
    FakePrompt prompt;
    const double well = static_cast<double>(0.123f);
    EXPECT_EQ(MathLibrary::calculateMean({well, well, well}, prompt), (well + well + well) / 3.0);
    EXPECT_DOUBLE_EQ(MathLibrary::calculateMean({-0.5, 0.25}, prompt), -0.125);
    EXPECT_EQ(prompt.count(), 0);
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
    EXPECT_EQ(prompt.last().icon, MsgIcon::Critical);
}

// --- calculateStdDev ----------------------------------------------------------------

TEST(CalculateStdDev, UsesTheSampleFormWithNMinusOne)
{
    // Mean 5; squared deviations 9+1+1+1+0+0+4+16 = 32; 32 / 7, not 32 / 8.
    EXPECT_DOUBLE_EQ(MathLibrary::calculateStdDev({2, 4, 4, 4, 5, 5, 7, 9}), std::sqrt(32.0 / 7.0));
    // Fewer than two values give zero.
    EXPECT_EQ(MathLibrary::calculateStdDev({0.7}), 0.0);
    EXPECT_EQ(MathLibrary::calculateStdDev({}), 0.0);
}

// --- calculateCV --------------------------------------------------------------------

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

// A mean of exactly zero gives zero without dividing, even with a spread; a negative mean
// still gives a positive CV.
TEST(CalculateCV, ZeroAndNegativeMeans)
{
    FakePrompt prompt;
    EXPECT_EQ(MathLibrary::calculateCV({0.0, 0.0, 0.0}, prompt), 0.0);
    EXPECT_EQ(MathLibrary::calculateCV({-0.5, 0.5}, prompt), 0.0);
    EXPECT_DOUBLE_EQ(MathLibrary::calculateCV({-1.0, -3.0}, prompt), std::sqrt(2.0) / 2.0 * 100.0);
    EXPECT_DOUBLE_EQ(MathLibrary::calculateCV({1.0, 3.0}, prompt), std::sqrt(2.0) / 2.0 * 100.0);
}

// --- removeElement (the rest of it is shown by the outlier search) ----------------------

TEST(RemoveElement, IndexOutsideTheArrayIsABoundsFailure)
{
    EXPECT_THROW(MathLibrary::removeElement({1.0, 2.0}, 2), std::out_of_range);
    EXPECT_THROW(MathLibrary::removeElement({1.0, 2.0}, -1), std::out_of_range);
    EXPECT_THROW(MathLibrary::removeElement({}, 0), std::out_of_range);
}

} // namespace
