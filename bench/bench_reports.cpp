// Reports over many read plates, and the ranking of sample names behind "sort by name".
// Aim: an analytical report over 1,000 read plates (about 91,000 result rows) under one
// second. The ranking as the report has always done it is an exchange sort: quadratic, so
// it is timed on small sets only, against the exact fast ranking on the same sets.
#include "FakePrompt.h"
#include "PlateRecordBuilder.h"

#include "core/Wells.h"
#include "reports/SampleRanking.h"
#include "reports/clsReport.h"

#include <benchmark/benchmark.h>

#include <QRandomGenerator>
#include <QTemporaryDir>

namespace {

// A run of read Orvexa plates: three NCs and two PCs, then 91 samples with accession-like
// names in 20 herds; ODs and results as a reader would leave them.
RecordSet readPlates(int count)
{
    QRandomGenerator random(412);
    QList<TestPlate> plates;
    int accession = 10000;
    for (int p = 0; p < count; ++p) {
        TestPlate plate;
        plate.plateID = p + 1;
        plate.plateName = QStringLiteral("Plate #%1").arg(p + 1);
        plate.testName = QStringLiteral("Orvexa 412");
        plate.lotNumber = QStringLiteral("L-77");
        plate.expDate = QDate(2027, 1, 31);
        plate.dateRead = QDate(2026, 1, 1).addDays(p / 8);
        plate.timeRead = QTime(8, 0).addSecs(600 * (p % 8));
        for (int k = 0; k < wells::kCount; ++k) {
            TestWell well;
            if (k < 3) {
                well.sample = QStringLiteral("NC");
                well.od = QStringLiteral("1.0%1").arg(k * 2);
            } else if (k < 5) {
                well.sample = QStringLiteral("PC");
                well.od = QStringLiteral("0.2%1").arg(k);
            } else {
                well.sample = QStringLiteral("A-%1").arg(accession++);
                well.group = QStringLiteral("Herd %1").arg(random.bounded(20));
                const double od = random.bounded(1.2);
                well.od = QString::number(od, 'f', 3);
                well.result = od <= 0.7 ? QStringLiteral("POS") : QStringLiteral("NEG");
            }
            plate.wells.insert(wells::name(k), well);
        }
        plates << plate;
    }
    return plateRecordSet(plates);
}

void analyticalReport(benchmark::State &state)
{
    const RecordSet plates = readPlates(int(state.range(0)));
    QTemporaryDir dir;
    FakePrompt prompt;
    clsReport report(prompt, dir.filePath(QStringLiteral("TempHTML.htm")));
    for (auto _ : state) {
        const bool ok =
            report.makeAnalyticalReport(plates, true, QStringLiteral("Bench"), 0, true, QString(), QString());
        benchmark::DoNotOptimize(ok);
    }
    state.counters["rows"] = double(state.range(0)) * 91;
}
BENCHMARK(analyticalReport)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);

void clientReport(benchmark::State &state)
{
    const RecordSet plates = readPlates(int(state.range(0)));
    QTemporaryDir dir;
    FakePrompt prompt;
    clsReport report(prompt, dir.filePath(QStringLiteral("TempHTML.htm")));
    for (auto _ : state) {
        const bool ok = report.makeCustomerReport(plates, true, QStringLiteral("Bench"), 0, true, QString(), QString());
        benchmark::DoNotOptimize(ok);
    }
}
BENCHMARK(clientReport)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);

// The result rows alone, with and without replicates.
void resultRows(benchmark::State &state)
{
    const RecordSet plates = readPlates(1000);
    FakePrompt prompt;
    clsReport report(prompt, QString());
    for (auto _ : state) {
        const RecordSet rows =
            report.buildResultRows(plates, QStringLiteral("Bench"), qint16(state.range(0)), QString(), QString());
        benchmark::DoNotOptimize(rows.recordCount());
    }
}
BENCHMARK(resultRows)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(3);

// Names as the report gives them to the ranking: one entry per row.
QVector<SampleRank> names(int count, bool awkward)
{
    QRandomGenerator random(7);
    QVector<SampleRank> entries;
    for (int i = 0; i < count; ++i) {
        QString name = QStringLiteral("A-%1").arg(10000 + i);
        if (awkward) {
            // Case variants, repeats and letter-ended prefixes ("Cow" against "Cow 12").
            switch (random.bounded(4)) {
            case 0: name = QStringLiteral("Cow %1").arg(random.bounded(90)); break;
            case 1: name = QStringLiteral("cow"); break;
            case 2: name = QStringLiteral("%1%2").arg(random.bounded(2) ? u's' : u'S').arg(random.bounded(50)); break;
            default: break;
            }
        }
        entries.append({name, 0});
    }
    return entries;
}

void rankFast(benchmark::State &state)
{
    const QVector<SampleRank> entries = names(int(state.range(0)), state.range(1) != 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(SampleRanking::rankSampleNames(entries));
}
BENCHMARK(rankFast)
    ->Args({2000, 0})
    ->Args({2000, 1})
    ->Args({18200, 0})
    ->Args({91000, 0})
    ->Args({91000, 1})
    ->Unit(benchmark::kMillisecond);

void rankByExchange(benchmark::State &state)
{
    const QVector<SampleRank> entries = names(int(state.range(0)), state.range(1) != 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(SampleRanking::rankByExchange(entries));
}
BENCHMARK(rankByExchange)
    ->Args({2000, 0})
    ->Args({2000, 1})
    ->Args({8000, 0})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

} // namespace
