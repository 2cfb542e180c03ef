// The quality-control rules over 5,000 plates with three quantities (both control means and
// the ratio), with the default rules and with every rule. Aim: under 20 ms.

#include "tracking/QcSeries.h"
#include "tracking/WestgardCheck.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

QcSeries threeQuantities(int plates)
{
    std::mt19937 random(7);
    std::normal_distribution<double> noise(0, 1);
    QcSeries series;
    const char *names[] = {"PC", "NC", "%I"};
    const double means[] = {0.3, 1.2, 75};
    const double sds[] = {0.03, 0.08, 5};
    for (int q = 0; q < 3; ++q) {
        QcQuantity quantity{QString::fromLatin1(names[q]), means[q], sds[q], {}};
        double shift = 0;
        for (int n = 0; n < plates; ++n) {
            if (n % 250 == 0)
                shift = noise(random);
            quantity.values.emplace_back(means[q] + sds[q] * (shift + noise(random)));
        }
        series.quantities.push_back(std::move(quantity));
    }
    return series;
}

void BM_QcRules(benchmark::State &state)
{
    const QcSeries series = threeQuantities(int(state.range(0)));
    const QList<WestgardRule> rules = state.range(1) ? westgard::allRules() : westgard::defaultRules();
    size_t flags = 0;
    for (auto _ : state) {
        const std::vector<QcFlag> found = WestgardCheck::judge(series.zTable(), rules);
        flags = found.size();
        benchmark::DoNotOptimize(found.data());
    }
    state.counters["flags"] = double(flags);
    state.SetLabel(state.range(1) ? "every rule" : "default rules");
}
BENCHMARK(BM_QcRules)->Args({5000, 0})->Args({5000, 1})->Unit(benchmark::kMillisecond);

} // namespace
