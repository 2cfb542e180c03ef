// The value-axis scale a spreadsheet program chooses by itself, which the tracking charts'
// major unit is a fifth of.
#include "tracking/ValueAxisScale.h"

#include <gtest/gtest.h>

#include <limits>

TEST(ValueAxisScale, AsASpreadsheetProgramChoosesIt)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char *rule;
        std::vector<double> values;
        double minimum, maximum, unit;
    } cases[] = {
        {"a wide span starts at zero; 0.9 + 5% of 0.8 rounds up to 1.0", {0.1, 0.5, 0.9}, 0, 1.0, 0.1},
        {"104.95: 110 would take 11 steps of 10", {1, 50, 100}, 0, 120, 20},
        {"a value on the top line gets room above it", {0.0, 1.0}, 0, 1.2, 0.2},
        {"5% of the span above: 0.97 + 0.0485 passes 1.0", {0.0, 0.97}, 0, 1.2, 0.2},
        {"close together: 0.95 - half the span, rounded down", {0.95, 1.05}, 0.9, 1.06, 0.02},
        {"negative values are mirrored", {-5, -1}, -6, 0, 1},
        {"negative and close together", {-1.05, -0.95}, -1.06, -0.9, 0.02},
        {"both sides of zero: 5% each way", {-1, 0.5}, -1.2, 0.6, 0.2},
        {"one value counts from zero", {0.5, 0.5}, 0, 0.6, 0.1},
        {"one negative value", {-2}, -2.5, 0, 0.5},
        {"nothing to plot", {}, 0, 1, 0.2},
        {"zeros alone", {0, 0}, 0, 1, 0.2},
        {"what is no number is left out", {nan, 0.5}, 0, 0.6, 0.1},
    };
    for (const auto &c : cases) {
        const ValueAxisScale scale = ValueAxisScale::automatic(c.values);
        EXPECT_DOUBLE_EQ(scale.minimum, c.minimum) << c.rule;
        EXPECT_DOUBLE_EQ(scale.maximum, c.maximum) << c.rule;
        EXPECT_DOUBLE_EQ(scale.majorUnit, c.unit) << c.rule;
    }
    // A fifth of the span is written as it reads.
    EXPECT_EQ((ValueAxisScale{0.9, 1.06, 0.02}.fifthOfSpan()), 0.032);
}
