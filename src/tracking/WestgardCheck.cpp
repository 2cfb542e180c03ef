#include "tracking/WestgardCheck.h"

#include <cmath>
#include <array>

namespace {

using westgard::isWarningOnly;

// Streaks of one quantity's values so far, each counting consecutive values (runs
// without a value skipped) that lie on one side of a limit.
struct Streaks {
    // index: 0 above 0, 1 below 0, 2 at or above +1, 3 at or below -1, 4 at or above +2,
    // 5 at or below -2
    std::array<int, 6> count{};

    void add(double z)
    {
        const std::array<bool, 6> in = {z > 0,
                                        z < 0,
                                        z >= 1 - WestgardCheck::kMargin,
                                        z <= -1 + WestgardCheck::kMargin,
                                        z >= 2 - WestgardCheck::kMargin,
                                        z <= -2 + WestgardCheck::kMargin};
        for (size_t i = 0; i < count.size(); ++i)
            count[i] = in[i] ? count[i] + 1 : 0;
    }
    bool side(int n) const { return count[0] >= n || count[1] >= n; }
    bool beyondOne(int n) const { return count[2] >= n || count[3] >= n; }
    bool beyondTwo(int n) const { return count[4] >= n || count[5] >= n; }
};

bool atOrBeyond(double z, double limit)
{
    return std::abs(z) >= limit - WestgardCheck::kMargin;
}

// Within one run: how many of its values are at or beyond +limit and at or beyond -limit.
struct RunCounts {
    int high2 = 0, low2 = 0, high1 = 0, low1 = 0;
};

} // namespace

namespace WestgardCheck {

std::vector<QcFlag> judge(const QcZTable &table, const QList<WestgardRule> &rules)
{
    std::vector<QcFlag> flags;
    const int quantities = table.quantityCount();
    const int runs = table.runCount();
    std::vector<Streaks> streaks(static_cast<size_t>(quantities));

    for (int run = 0; run < runs; ++run) {
        RunCounts counts;
        for (int q = 0; q < quantities; ++q) {
            const std::optional<double> &z = table.z[size_t(q)][size_t(run)];
            if (!z)
                continue;
            streaks[size_t(q)].add(*z);
            counts.high2 += *z >= 2 - kMargin;
            counts.low2 += *z <= -2 + kMargin;
            counts.high1 += *z >= 1 - kMargin;
            counts.low1 += *z <= -1 + kMargin;
        }
        for (int q = 0; q < quantities; ++q) {
            const std::optional<double> &z = table.z[size_t(q)][size_t(run)];
            if (!z)
                continue;
            const Streaks &s = streaks[size_t(q)];
            const bool high2 = *z >= 2 - kMargin, low2 = *z <= -2 + kMargin;
            const bool high1 = *z >= 1 - kMargin, low1 = *z <= -1 + kMargin;
            // Another value of this run beyond the same limit as this one.
            const bool pairTwo = (high2 && counts.high2 >= 2) || (low2 && counts.low2 >= 2);
            for (WestgardRule rule : rules) {
                bool fires = false;
                switch (rule) {
                case WestgardRule::OneTwoS: fires = atOrBeyond(*z, 2); break;
                case WestgardRule::OneThreeS: fires = atOrBeyond(*z, 3); break;
                case WestgardRule::TwoTwoS: fires = s.beyondTwo(2) || pairTwo; break;
                case WestgardRule::RangeFourS:
                    fires = (high2 && counts.low2 >= 1) || (low2 && counts.high2 >= 1);
                    break;
                case WestgardRule::FourOneS: fires = s.beyondOne(4); break;
                case WestgardRule::TenX: fires = s.side(10); break;
                case WestgardRule::EightX: fires = s.side(8); break;
                case WestgardRule::TwelveX: fires = s.side(12); break;
                case WestgardRule::TwoOfThreeTwoS: fires = pairTwo; break;
                case WestgardRule::ThreeOneS:
                    fires = s.beyondOne(3) || (high1 && counts.high1 >= 3) || (low1 && counts.low1 >= 3);
                    break;
                case WestgardRule::SixX: fires = s.side(6); break;
                case WestgardRule::NineX: fires = s.side(9); break;
                }
                if (fires)
                    flags.push_back(QcFlag{run, q, rule, !isWarningOnly(rule)});
            }
        }
    }
    return flags;
}

} // namespace WestgardCheck
