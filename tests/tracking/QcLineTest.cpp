// The words of the quality-control line from the flags of a plate's run.
#include "tracking/QcLine.h"

#include <gtest/gtest.h>

TEST(QcLineText, NamesRejectingRulesFirstAndAcrossQuantityRulesAlone)
{
    QcHistory h;
    h.quantities = {"PC", "NC"};
    h.rules = westgard::defaultRules();
    GuideSet set;
    set.mean = 1;
    set.sd = 0.1;
    set.start = QDate(2024, 1, 1);
    for (int run = 0; run < 3; ++run)
        h.runs.push_back(QcRun{TrackedPlate(), {1.2, std::nullopt}, {set, std::nullopt}});
    h.flags = {{1, 1, WestgardRule::OneTwoS, false},   {2, 0, WestgardRule::RangeFourS, true},
               {2, 1, WestgardRule::RangeFourS, true}, {2, 0, WestgardRule::TwoTwoS, true},
               {2, 1, WestgardRule::TwoTwoS, true},    {2, 0, WestgardRule::OneTwoS, false}};
    EXPECT_EQ(QcLine::of(h, 0).text, QStringLiteral("QC: in control"));
    EXPECT_EQ(QcLine::of(h, 1).text, QStringLiteral("QC warning: 1-2s NC"));
    const QcLine rejected = QcLine::of(h, 2);
    EXPECT_EQ(rejected.text, QStringLiteral("QC rejected: 2-2s PC/NC, R-4s"));
    EXPECT_EQ(rejected.toolTip, QStringLiteral("PC 1.200: 2.00 SD from 1.000 \u00b1 0.100 (guide set from 1/1/2024)\n"
                                               "NC: no guide set in force\nWarning: 1-2s PC"));
}
