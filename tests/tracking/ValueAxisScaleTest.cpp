// The value-axis scale a spreadsheet program chooses by itself, which the tracking charts'
// major unit is a fifth of.
#include "QtPrinters.h"

#include "tracking/ValueAxisScale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

void expectScale(const std::vector<double> &values, double minimum, double maximum, double unit)
{
    const ValueAxisScale scale = ValueAxisScale::automatic(values);
    EXPECT_DOUBLE_EQ(scale.minimum, minimum);
    EXPECT_DOUBLE_EQ(scale.maximum, maximum);
    EXPECT_DOUBLE_EQ(scale.majorUnit, unit);
}

} // namespace

TEST(ValueAxisScale, PositiveValuesOfAWideSpanStartAtZero)
{
    expectScale({0.1, 0.5, 0.9}, 0, 1.0, 0.1);  // 0.9 + 5 % of 0.8 rounds up to 1.0
    expectScale({1, 50, 100}, 0, 120, 20);      // 104.95: 110 would take 11 steps of 10
    expectScale({0.6, 1.4, 0.8}, 0, 1.6, 0.2);
    expectScale({0.0, 1.0}, 0, 1.2, 0.2);       // a value on the top line gets room above it
}

TEST(ValueAxisScale, PositiveValuesCloseTogetherStartBelowThem)
{
    // The span 0.1 is under a sixth of 1.05: the minimum is 0.95 - 0.05, rounded down.
    expectScale({0.95, 1.05}, 0.9, 1.06, 0.02);
}

TEST(ValueAxisScale, NegativeValuesAreMirrored)
{
    expectScale({-5, -1}, -6, 0, 1);
    expectScale({-1.05, -0.95}, -1.06, -0.9, 0.02);
}

TEST(ValueAxisScale, ValuesOnBothSidesOfZeroGetFivePercentEachWay)
{
    // A plate without the control plots -1.
    expectScale({-1, 0.5}, -1.2, 0.6, 0.2);
}

TEST(ValueAxisScale, OneValueCountsFromZero)
{
    expectScale({0.5}, 0, 0.6, 0.1);
    expectScale({0.5, 0.5, 0.5}, 0, 0.6, 0.1);
    expectScale({-2}, -2.5, 0, 0.5);
}

TEST(ValueAxisScale, NothingToPlotIsZeroToOne)
{
    expectScale({}, 0, 1, 0.2);
    expectScale({0, 0}, 0, 1, 0.2);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    expectScale({nan, 0.5}, 0, 0.6, 0.1);
}

TEST(ValueAxisScale, AFifthOfTheSpanIsWrittenAsItReads)
{
    EXPECT_EQ((ValueAxisScale{0, 1.2, 0.2}.fifthOfSpan()), 0.24);
    EXPECT_EQ((ValueAxisScale{0, 1.6, 0.2}.fifthOfSpan()), 0.32);
    EXPECT_EQ((ValueAxisScale{0.9, 1.06, 0.02}.fifthOfSpan()), 0.032);
}
