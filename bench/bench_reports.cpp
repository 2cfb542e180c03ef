// Reports over many read plates, and the ranking of sample names behind "sort by name".
// Aim: an analytical report over 1,000 read plates (about 91,000 result rows) in 150 ms,
// growing linearly with the plates and in memory flat in them (under 100 MB at 4,000). The ranking as the report has always done it is an exchange sort: quadratic, so
// it is timed on small sets only, against the exact fast ranking on the same sets.
#include "FakePrompt.h"
#include "PlateRecordBuilder.h"

#include "core/Wells.h"
#include "reports/SampleRanking.h"
#include "reports/clsReport.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <ctime>

#include <fcntl.h>
#include <unistd.h>

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

// Peak memory of the process in kB (VmHWM); resetPeak() starts it again from what is in use.
long statusKb(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.mid(qstrlen(field)).trimmed().split(' ').value(0).toLong();
    }
    return 0;
}

long resetPeak()
{
    QFile refs(QStringLiteral("/proc/self/clear_refs"));
    if (refs.open(QIODevice::WriteOnly))
        refs.write("5");
    return statusKb("VmRSS:");
}

// CPU seconds per report at 250 plates, for the growth exponent printed at the larger sizes
// (CPU time: the wall time of a busy machine and of the disk would hide how the work grows).
double gSecondsAt250 = 0;

double cpuSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

// The whole analytical report, file written and put in place. Counters: the memory the
// report took on top of its input (peakMB), and the growth exponent of its CPU time from
// 250 plates (growth: 1.0 is linear). TAVIMETRA_BENCH_REPORTS=<folder> keeps each report there,
// to compare with an earlier build.
void analyticalReport(benchmark::State &state)
{
    const int count = int(state.range(0));
    const RecordSet plates = readPlates(count);
    QTemporaryDir dir;
    FakePrompt prompt;
    const QString path = dir.filePath(QStringLiteral("TempHTML.htm"));
    clsReport report(prompt, path);
    const long before = resetPeak();
    const double start = cpuSeconds();
    for (auto _ : state) {
        const bool ok =
            report.makeAnalyticalReport(plates, true, QStringLiteral("Bench"), 0, true, QString(), QString());
        benchmark::DoNotOptimize(ok);
    }
    const double seconds = (cpuSeconds() - start) / double(state.iterations());
    state.counters["peakMB"] = double(statusKb("VmHWM:") - before) / 1024;
    state.counters["fileMB"] = double(QFileInfo(path).size()) / 1e6;
    state.counters["rows"] = double(count) * 91;
    if (count == 250)
        gSecondsAt250 = seconds;
    else if (gSecondsAt250 > 0)
        state.counters["growth"] = std::log(seconds / gSecondsAt250) / std::log(count / 250.0);
    const QString keep = qEnvironmentVariable("TAVIMETRA_BENCH_REPORTS");
    if (!keep.isEmpty())
        QFile::copy(path, QDir(keep).filePath(QStringLiteral("analytical-%1.htm").arg(count)));
}
BENCHMARK(analyticalReport)
    ->Arg(250)
    ->Arg(1000)
    ->Arg(4000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime();

// The floor: the same bytes written to a file and put on the disk (fdatasync).
void analyticalReport_Floor(benchmark::State &state)
{
    const RecordSet plates = readPlates(int(state.range(0)));
    QTemporaryDir dir;
    FakePrompt prompt;
    const QString path = dir.filePath(QStringLiteral("TempHTML.htm"));
    clsReport(prompt, path).makeAnalyticalReport(plates, true, QStringLiteral("Bench"), 0, true, QString(), QString());
    QFile made(path);
    made.open(QIODevice::ReadOnly);
    const QByteArray bytes = made.readAll();
    const QByteArray target = dir.filePath(QStringLiteral("floor.htm")).toLocal8Bit();
    for (auto _ : state) {
        const int fd = ::open(target.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        for (qsizetype at = 0; at < bytes.size(); at += 1 << 20) {
            const qsizetype n = std::min<qsizetype>(1 << 20, bytes.size() - at);
            if (::write(fd, bytes.constData() + at, size_t(n)) != n)
                state.SkipWithError("the floor file could not be written");
        }
        ::fdatasync(fd);
        ::close(fd);
    }
    state.counters["fileMB"] = double(bytes.size()) / 1e6;
}
BENCHMARK(analyticalReport_Floor)
    ->Arg(250)
    ->Arg(1000)
    ->Arg(4000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime();

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
