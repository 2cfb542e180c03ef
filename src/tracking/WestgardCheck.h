#pragma once

#include "tracking/WestgardRule.h"

#include <QList>

#include <optional>
#include <vector>

// The z values of a series of runs: for each quantity (a control mean, the ratio) the value
// of each run in SDs from the mean of the guide set in force, or nothing when the run did
// not measure it. Every quantity has one entry per run.
struct QcZTable {
    std::vector<std::vector<std::optional<double>>> z; // [quantity][run]

    int runCount() const { return z.empty() ? 0 : int(z.front().size()); }
    int quantityCount() const { return int(z.size()); }
};

// A rule broken by a quantity's value in one run (both counted from 0).
struct QcFlag {
    int run = 0;
    int quantity = 0;
    WestgardRule rule = WestgardRule::OneThreeS;
    bool reject = true; // false for a warning-only rule

    bool operator==(const QcFlag &) const = default;
};

// Judges a series of runs by the rules given. A rule fires on the value that completes its
// pattern, so the newest run is flagged by what it completes, and a run's flags depend only
// on the runs up to it: a plate checked on its own, the moment it is read, gets the flags it
// gets in any later series. A pattern that goes on fires again on each value that extends it
// (the eleventh value on one side still completes "ten on one side" with the nine before
// it): the shift is still there, and the plate is judged as it would be alone.
//
// "Consecutive" counts the values a quantity has: a run that did not measure it neither
// breaks nor extends a pattern. A value of exactly 0 is on neither side of the mean.
// Limits are met with a margin of 1e-9 SD, so that 1.3 against 1.2 +- 0.05 is at 2 SD
// although its z is 1.99999... in floating point.
//
// Across runs, of one quantity: 1-2s, 1-3s, 2-2s, 4-1s, 3-1s, 6x, 8x, 9x, 10x, 12x.
// Within one run, across quantities: 2-2s (two values beyond the same 2 SD), R-4s, 2of3-2s,
// 3-1s (three values beyond the same 1 SD); such a rule flags every quantity that took part.
//
// Flags come in run order, then quantity order, then the order of the rules given; one flag
// at most per run, quantity and rule.
namespace WestgardCheck {

inline constexpr double kMargin = 1e-9;

std::vector<QcFlag> judge(const QcZTable &table, const QList<WestgardRule> &rules);

} // namespace WestgardCheck
