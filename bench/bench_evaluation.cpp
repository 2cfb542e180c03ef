// Time of one full evaluation of a read 96-well plate: blanks, adjusted ODs, range and
// filter, the outlier search, required controls, expiry, the kit's rule and the result
// sheet, as a function of the plate alone.

#include "core/LegacyFormat.h"
#include "core/Wells.h"
#include "evaluation/PlateEvaluator.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace {

// An Orvexa plate as a lab runs it: four PC and four NC with one far-off well each, two
// blanks, and 86 samples spread over the range of the kit.
PlateInput readPlate(bool outliers)
{
    PlateInput plate;
    plate.testName = QStringLiteral("Orvexa 412");
    plate.version = QStringLiteral("1.5.4");
    plate.filter = QStringLiteral("630");
    plate.dateRead = QDate(2026, 11, 23);
    plate.expDate = QDate(2027, 6, 30);
    plate.today = QDate(2026, 11, 23);
    plate.flags.fill(1);
    auto put = [&](int k, const QString &sample, double od) {
        plate.samples[k] = sample;
        plate.rawODs[k] = od;
    };
    const double pc[] = {0.21, 0.19, 0.20, outliers ? 0.90 : 0.20};
    const double nc[] = {1.02, 0.98, 1.00, outliers ? 0.10 : 1.01};
    for (int i = 0; i < 4; ++i) {
        put(i, QStringLiteral("PC"), pc[i]);
        put(4 + i, QStringLiteral("NC"), nc[i]);
    }
    put(8, QStringLiteral("BLANK"), 0.04);
    put(9, QStringLiteral("BLANK"), 0.05);
    for (int k = 10; k < wells::kCount; ++k)
        put(k, QStringLiteral("Sample %1").arg(k - 9), 0.1 + (k % 23) * 0.05);
    return plate;
}

void evaluatePlate(benchmark::State &state, bool outliers)
{
    const PlateInput plate = readPlate(outliers);
    PlateEvaluation evaluation;
    for (auto _ : state) {
        evaluation = PlateEvaluator::evaluate(plate);
        benchmark::DoNotOptimize(evaluation.passed);
    }
    if (!evaluation.passed)
        state.SkipWithError("the plate did not pass");
    if (outliers && !evaluation.controlsExcluded)
        state.SkipWithError("no control was found abnormal");
    state.counters["wells"] = wells::kCount;
}

void BM_EvaluatePlateWithOutliers(benchmark::State &state)
{
    evaluatePlate(state, true);
}

// The floor of an evaluation: its arithmetic on the plate's numbers (mean blank, adjusted
// ODs, control means and CVs, a verdict for each sample) and the 96 "#0.000" texts, with the
// wells' roles known beforehand and nothing else (no kit, no messages, no result cells).
void BM_EvaluatePlateWithOutliers_Floor(benchmark::State &state)
{
    const PlateInput plate = readPlate(true);
    std::vector<int> blanks, pcs, ncs, samples;
    for (int k = 0; k < wells::kCount; ++k) {
        const QString &s = plate.samples[k];
        (s == u"BLANK" ? blanks : s == u"PC" ? pcs : s == u"NC" ? ncs : samples).push_back(k);
    }
    auto meanAndCV = [](const double *values, std::size_t n, double &mean) {
        double sum = 0, squares = 0;
        for (std::size_t i = 0; i < n; ++i)
            sum += values[i];
        mean = sum / double(n);
        for (std::size_t i = 0; i < n; ++i)
            squares += (values[i] - mean) * (values[i] - mean);
        return std::sqrt(squares / double(n - 1)) / mean * 100.0;
    };
    std::array<QString, wells::kCount> texts;
    std::array<double, wells::kCount> adjusted{};
    double pc[8], nc[8];
    for (auto _ : state) {
        double blank = 0;
        for (int k : blanks)
            blank += plate.rawODs[k];
        blank /= double(blanks.size());
        for (int k = 0; k < wells::kCount; ++k) {
            adjusted[k] = plate.rawODs[k] - blank;
            texts[k] = legacy::format(adjusted[k], u"#0.000");
        }
        for (std::size_t i = 0; i < pcs.size(); ++i)
            pc[i] = adjusted[pcs[i]];
        for (std::size_t i = 0; i < ncs.size(); ++i)
            nc[i] = adjusted[ncs[i]];
        double meanPC = 0, meanNC = 0;
        // The outlier search: the one far-off control of each kind dropped.
        benchmark::DoNotOptimize(meanAndCV(pc, pcs.size(), meanPC) + meanAndCV(nc, ncs.size(), meanNC));
        benchmark::DoNotOptimize(meanAndCV(pc, pcs.size() - 1, meanPC) + meanAndCV(nc, ncs.size() - 1, meanNC));
        int positives = 0;
        for (int k : samples)
            positives += 100.0 - adjusted[k] / meanNC * 100.0 >= 30.0;
        benchmark::DoNotOptimize(positives);
        benchmark::DoNotOptimize(texts);
    }
    state.counters["wells"] = wells::kCount;
}

void BM_EvaluatePlateClean(benchmark::State &state)
{
    evaluatePlate(state, false);
}

} // namespace

BENCHMARK(BM_EvaluatePlateWithOutliers)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_EvaluatePlateWithOutliers_Floor)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_EvaluatePlateClean)->Unit(benchmark::kMicrosecond);
