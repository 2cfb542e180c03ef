// The quality-control rules on series of z values: each rule on its limits, patterns that
// almost fire, runs without a value, one to three quantities, the order of the flags, and a
// long random series against a plain second reading of the rules.

#include "tracking/QcSeries.h"
#include "tracking/WestgardCheck.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// Quantities of z values, one row each; kNone for a run without a value.
QcZTable table(const std::vector<std::vector<double>> &rows)
{
    QcZTable t;
    for (const auto &row : rows) {
        std::vector<std::optional<double>> z;
        for (double v : row)
            z.push_back(std::isnan(v) ? std::nullopt : std::optional<double>(v));
        t.z.push_back(z);
    }
    return t;
}

// Flags as "run.quantity rule" texts, runs and quantities counted from 1, warnings with "?".
QStringList texts(const std::vector<QcFlag> &flags)
{
    QStringList list;
    for (const QcFlag &f : flags)
        list << QStringLiteral("%1.%2 %3%4")
                    .arg(f.run + 1)
                    .arg(f.quantity + 1)
                    .arg(westgard::name(f.rule), f.reject ? "" : "?");
    return list;
}

QList<WestgardRule> rules(const QStringList &names)
{
    return *westgard::fromNames(names, nullptr);
}

std::vector<double> repeat(double z, int n)
{
    return std::vector<double>(size_t(n), z);
}

struct Case {
    const char *what;
    QStringList rules;
    std::vector<std::vector<double>> z;
    QStringList flags;
};

class EachRule : public testing::TestWithParam<Case> {};

TEST_P(EachRule, FiresOnTheValueThatCompletesItsPattern)
{
    const Case &c = GetParam();
    EXPECT_EQ(texts(WestgardCheck::judge(table(c.z), rules(c.rules))), c.flags) << c.what;
}

INSTANTIATE_TEST_SUITE_P(
    Westgard, EachRule,
    testing::Values(
        Case{"1-2s warns at 2.0 on either side, not below",
             {"1-2s"},
             {{2.0, 1.999, -2.0, 0}},
             {"1.1 1-2s?", "3.1 1-2s?"}},
        Case{"1-3s rejects at 3.0, not just under", {"1-3s"}, {{-3.0, 2.999, 3.5}}, {"1.1 1-3s", "3.1 1-3s"}},
        Case{"2-2s: two in a row beyond the same 2 SD", {"2-2s"}, {{2.0, 2.0, -2.0, -2.1}}, {"2.1 2-2s", "4.1 2-2s"}},
        Case{"2-2s: a run without a value doesn't break the pair", {"2-2s"}, {{2.0, kNone, 2.2}}, {"3.1 2-2s"}},
        Case{"2-2s: a value just inside breaks it", {"2-2s"}, {{2.0, 1.99, 2.0}}, {}},
        Case{"2-2s within a run flags both quantities", {"2-2s"}, {{2.0, 1.99}, {2.0, 1.5}}, {"1.1 2-2s", "1.2 2-2s"}},
        Case{"2-2s: opposite sides are no pair", {"2-2s"}, {{2.0}, {-2.0}}, {}},
        Case{"R-4s: +2 and -2 in one run", {"R-4s"}, {{2.0, 0}, {-2.0, 0}, {0.5, 0}}, {"1.1 R-4s", "1.2 R-4s"}},
        Case{"R-4s never across runs", {"R-4s"}, {{2.0, -2.0, 2.5, -3}}, {}},
        Case{"R-4s: a range just under 4 SD", {"R-4s"}, {{2.0}, {-1.99}}, {}},
        Case{"4-1s: the fourth beyond +1", {"4-1s"}, {{1.0, 1.2, kNone, 1.0, 1.0, 1.3}}, {"5.1 4-1s", "6.1 4-1s"}},
        Case{"4-1s: three and one inside", {"4-1s"}, {{-1.0, -1.0, -1.0, -0.99, -1, -1, -1}}, {}},
        Case{"4-1s: sides don't mix", {"4-1s"}, {{1.0, 1.0, -1.0, 1.0}}, {}},
        Case{"10x: the tenth on one side, and each after", {"10x"}, {repeat(0.1, 11)}, {"10.1 10x", "11.1 10x"}},
        Case{
            "10x: a value on the mean breaks it", {"10x"}, {{-.1, -.1, -.1, -.1, -.1, 0, -.1, -.1, -.1, -.1, -.1}}, {}},
        Case{"8x, 10x and 12x together",
             {"12x", "8x", "10x"},
             {repeat(-0.5, 12)},
             {"8.1 8x", "9.1 8x", "10.1 8x", "10.1 10x", "11.1 8x", "11.1 10x", "12.1 12x", "12.1 8x", "12.1 10x"}},
        Case{"6x and 9x", {"6x", "9x"}, {repeat(0.3, 9)}, {"6.1 6x", "7.1 6x", "8.1 6x", "9.1 6x", "9.1 9x"}},
        Case{"2of3-2s: two of three beyond the same 2 SD",
             {"2of3-2s"},
             {{2.0, 2.0}, {0, -2.0}, {2.1, 1.99}},
             {"1.1 2of3-2s", "1.3 2of3-2s"}},
        Case{"3-1s: three quantities of a run beyond +1",
             {"3-1s"},
             {{1.0, 1.0}, {1.0, -1.0}, {1.5, 1.0}},
             {"1.1 3-1s", "1.2 3-1s", "1.3 3-1s"}},
        Case{"3-1s: three runs of one quantity", {"3-1s"}, {{-1.0, -1.0, -1.0}, {0, 0, 0}}, {"3.1 3-1s"}},
        Case{"one quantity: no rule within a run", {"R-4s", "2of3-2s"}, {{3.0, -3.0}}, {}},
        Case{"flags in run, quantity, then given rule order",
             {"1-2s", "1-3s"},
             {{0, 3.0}, {-3.0, 0}},
             {"1.2 1-2s?", "1.2 1-3s", "2.1 1-2s?", "2.1 1-3s"}}));

TEST(WestgardLimits, AreMetByValuesExactlyThatManySDsAwayInDecimals)
{
    // 1.3 - 1.2 is 0.0999... in binary; 1.3 is still at +2 SD of 1.2 +- 0.05.
    QString error;
    const auto series = QcSeries::fromJson(
        R"({"rules": ["1-2s", "1-3s", "4-1s"], "quantities": [{"name": "NC", "mean": 1.2, "sd": 0.05,
            "values": [1.3, 1.1, 1.35, 1.05, 1.15, 1.25, 1.25, 1.25, 1.25, 1.2499]}]})",
        &error);
    ASSERT_TRUE(series) << error.toStdString();
    EXPECT_EQ(texts(WestgardCheck::judge(series->zTable(), series->rules)),
              QStringList({"1.1 1-2s?", "2.1 1-2s?", "3.1 1-2s?", "3.1 1-3s", "4.1 1-2s?", "4.1 1-3s", "9.1 4-1s"}));
}

// A second reading of the rules, as plain as it gets: for every value look back over the
// values of that quantity so far, and across the values of its run.
std::vector<QcFlag> plainJudge(const QcZTable &t, const QList<WestgardRule> &ruleList)
{
    const double m = WestgardCheck::kMargin;
    auto lastN = [&](int q, int run, int n) {
        std::vector<double> seen;
        for (int r = run; r >= 0 && int(seen.size()) < n; --r) {
            if (t.z[q][r])
                seen.push_back(*t.z[q][r]);
        }
        return int(seen.size()) == n ? seen : std::vector<double>();
    };
    auto all = [](const std::vector<double> &v, auto pred) {
        if (v.empty())
            return false;
        for (double x : v) {
            if (!pred(x))
                return false;
        }
        return true;
    };
    auto streak = [&](int q, int run, int n, double limit) { // n values beyond the same +-limit (0: side)
        const std::vector<double> v = lastN(q, run, n);
        if (limit == 0)
            return all(v, [](double x) { return x > 0; }) || all(v, [](double x) { return x < 0; });
        return all(v, [&](double x) { return x >= limit - m; }) || all(v, [&](double x) { return x <= -limit + m; });
    };
    auto othersInRun = [&](int q, int run, auto pred) {
        int n = 0;
        for (int o = 0; o < t.quantityCount(); ++o)
            n += o != q && t.z[o][run] && pred(*t.z[o][run]);
        return n;
    };
    std::vector<QcFlag> flags;
    for (int run = 0; run < t.runCount(); ++run) {
        for (int q = 0; q < t.quantityCount(); ++q) {
            if (!t.z[q][run])
                continue;
            const double z = *t.z[q][run];
            const bool hi2 = z >= 2 - m, lo2 = z <= -2 + m, hi1 = z >= 1 - m, lo1 = z <= -1 + m;
            const bool pair2 = (hi2 && othersInRun(q, run, [&](double x) { return x >= 2 - m; }) >= 1) ||
                               (lo2 && othersInRun(q, run, [&](double x) { return x <= -2 + m; }) >= 1);
            for (WestgardRule rule : ruleList) {
                const QString n = westgard::name(rule);
                bool fires = false;
                if (n == "1-2s")
                    fires = hi2 || lo2;
                else if (n == "1-3s")
                    fires = std::abs(z) >= 3 - m;
                else if (n == "2-2s")
                    fires = streak(q, run, 2, 2) || pair2;
                else if (n == "2of3-2s")
                    fires = pair2;
                else if (n == "R-4s")
                    fires = (hi2 && othersInRun(q, run, [&](double x) { return x <= -2 + m; }) > 0) ||
                            (lo2 && othersInRun(q, run, [&](double x) { return x >= 2 - m; }) > 0);
                else if (n == "4-1s")
                    fires = streak(q, run, 4, 1);
                else if (n == "3-1s")
                    fires = streak(q, run, 3, 1) ||
                            (hi1 && othersInRun(q, run, [&](double x) { return x >= 1 - m; }) >= 2) ||
                            (lo1 && othersInRun(q, run, [&](double x) { return x <= -1 + m; }) >= 2);
                else
                    fires = streak(q, run, n.chopped(1).toInt(), 0);
                if (fires)
                    flags.push_back(QcFlag{run, q, rule, n != "1-2s"});
            }
        }
    }
    return flags;
}

TEST(WestgardLongSeries, AgreesWithAPlainReadingOfTheRules)
{
    std::mt19937 random(20240501);
    std::normal_distribution<double> noise(0, 1);
    std::uniform_real_distribution<double> unit(0, 1);
    const double exact[] = {-3, -2, -1, 0, 1, 2, 3};
    for (int quantities = 1; quantities <= 3; ++quantities) {
        QcZTable t;
        t.z.resize(size_t(quantities));
        double shift = 0;
        for (int run = 0; run < 3000; ++run) {
            if (unit(random) < 0.02) // the system shifts now and then, so that long patterns occur
                shift = (unit(random) - 0.5) * 3;
            for (auto &row : t.z) {
                const double u = unit(random);
                if (u < 0.1)
                    row.emplace_back();
                else if (u < 0.25)
                    row.emplace_back(exact[int(unit(random) * 7) % 7]);
                else
                    row.emplace_back(shift + noise(random));
            }
        }
        const std::vector<QcFlag> flags = WestgardCheck::judge(t, westgard::allRules());
        EXPECT_GT(flags.size(), 500u);
        EXPECT_EQ(texts(flags), texts(plainJudge(t, westgard::allRules()))) << quantities << " quantities";
    }
}

struct BadSeries {
    const char *json;
    const char *message;
};

class ASeriesThatIsRefused : public testing::TestWithParam<BadSeries> {};

TEST_P(ASeriesThatIsRefused, SaysWhy)
{
    QString error;
    EXPECT_FALSE(QcSeries::fromJson(GetParam().json, &error));
    EXPECT_TRUE(error.contains(QString::fromUtf8(GetParam().message))) << error.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Westgard, ASeriesThatIsRefused,
    testing::Values(
        BadSeries{R"({"quantities": [{"name": "NC", "mean": 1, "sd": 0, "values": [1]}]})", "the SD must be above 0"},
        BadSeries{R"({"quantities": [{"name": "NC", "mean": 1, "sd": -0.1, "values": [1]}]})",
                  "the SD must be above 0"},
        BadSeries{R"({"quantities": [{"name": "NC", "mean": 1, "sd": 1, "values": [1, 2]},
                                     {"name": "PC", "mean": 1, "sd": 1, "values": [null]}]})",
                  "unequal lengths: \"NC\" has 2 values, \"PC\" has 1"},
        BadSeries{R"({"rules": ["1-3s", "7x"], "quantities": [{"name": "NC", "mean": 1, "sd": 1, "values": []}]})",
                  "\"7x\" is not a quality-control rule"},
        BadSeries{R"({"quantities": [{"name": "NC", "mean": 1, "sd": 1, "values": [1, "1.2"]}]})",
                  "run 2: a value must be a number or null"},
        BadSeries{R"({"quantities": [)", "not JSON"}));

} // namespace
