// Gathering the tracking data of a kit over 1,000 and 5,000 saved plates, as OK of the
// control report dialog does it: the query, the well lists of every plate, the super and
// per-plate statistics, the tracking table. Aim: 5,000 plates in under half a second.
#include "FakeBrowser.h"
#include "FakeClock.h"
#include "FakePrompt.h"
#include "PlateRecordBuilder.h"
#include "SavedPlates.h"

#include "core/Wells.h"
#include "store/DbConnection.h"
#include "tracking/GuideSetStore.h"
#include "tracking/QcWindowLogic.h"
#include "tracking/TrackControlsLogic.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QSqlQuery>

#include <memory>

namespace {

constexpr int kPlatesPerRun = 20;

// A read Orvexa plate as a lab lays one out: NC in A1 to C1, PC in D1 and E1, a blank in
// F1, samples in every other well, all of them with an OD.
TestPlate benchPlate(int n)
{
    TestPlate p;
    p.plateID = n % kPlatesPerRun + 1;
    p.plateName = QStringLiteral("Plate #%1").arg(p.plateID);
    p.testName = QStringLiteral("Orvexa 412");
    p.lotNumber = QStringLiteral("L-%1").arg(n / 500);
    p.techName = n % 3 ? QStringLiteral("Ana Ruiz") : QStringLiteral("Ben Okafor");
    p.dateRead = QDate(2020, 1, 1).addDays(n / 4);
    p.timeRead = QTime(8, 0).addSecs(900 * (n % 4));
    for (int k = 0; k < wells::kCount; ++k) {
        const QString od = QString::number(0.05 + 0.01 * ((k * 7 + n) % 90), 'f', 3);
        QString sample = QStringLiteral("S%1").arg(k);
        if (k < 3)
            sample = QStringLiteral("NC");
        else if (k < 5)
            sample = QStringLiteral("PC");
        else if (k == 5)
            sample = QStringLiteral("BLANK");
        p.wells.insert(wells::name(k), TestWell{sample, QStringLiteral("Herd %1").arg(k / 12), od,
                                                QStringLiteral("NEG"), k == 4 && n % 10 == 0 ? 0 : 1});
    }
    return p;
}

struct SavedKit {
    SavedPlates saved;
    FakePrompt prompt;
    FakeBrowser browser;
    FakeClock clock{QDateTime(QDate(2024, 3, 9), QTime(10, 0))};
    TrackControlsLogic logic{saved.folder(), prompt, browser, clock};

    explicit SavedKit(int plates)
    {
        for (int first = 0; first < plates; first += kPlatesPerRun) {
            QList<TestPlate> run;
            for (int n = first; n < first + kPlatesPerRun && n < plates; ++n)
                run.append(benchPlate(n));
            saved.saveRun(QStringLiteral("Run %1").arg(first / kPlatesPerRun + 1), run);
        }
        logic.load();
        logic.monthRange = {QStringLiteral("1"), QStringLiteral("12")};
        logic.dayRange = {QStringLiteral("1"), QStringLiteral("31")};
        logic.yearRange = {QStringLiteral("2020"), QStringLiteral("2030")};
    }
};

void BM_GatherTrackingData(benchmark::State &state)
{
    const int plates = int(state.range(0));
    SavedKit kit(plates);
    for (auto _ : state) {
        const TrackingData data = kit.logic.gatherTrackingData();
        if (!data.ok || data.rows.recordCount() != plates)
            state.SkipWithError("the plates were not all gathered");
        benchmark::DoNotOptimize(data.rows.recordCount());
    }
    state.SetItemsProcessed(state.iterations() * plates);
    state.counters["plates"] = plates;
}
BENCHMARK(BM_GatherTrackingData)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond);

// OK of the control report dialog over 5,000 plates: the tracking data gathered and the
// workbook written (a real .xlsx file). Aim: 120 ms. TAVIMETRA_BENCH_REPORTS=<folder> keeps
// the workbook there, to compare its sheets with an earlier build.
void BM_TrackingOf5000Plates(benchmark::State &state)
{
    SavedKit kit(int(state.range(0)));
    QString written;
    for (auto _ : state) {
        written = kit.logic.ok();
        if (written.isEmpty())
            state.SkipWithError("no workbook was written");
        benchmark::DoNotOptimize(written);
    }
    const QString keep = qEnvironmentVariable("TAVIMETRA_BENCH_REPORTS");
    if (!keep.isEmpty())
        QFile::copy(written, QDir(keep).filePath(QStringLiteral("tracking-%1.xlsx").arg(state.range(0))));
}
BENCHMARK(BM_TrackingOf5000Plates)->Arg(5000)->Unit(benchmark::kMillisecond);

// The floor: the query of the same plates alone, every column of every row read.
void BM_TrackingOf5000Plates_Floor(benchmark::State &state)
{
    SavedKit kit(int(state.range(0)));
    DbConnection db(kit.saved.temp().databaseLocation());
    const QString sql = QStringLiteral(
        "SELECT Plates.PlateName, Plates.TestName, Plates.LotNumber, Plates.TimeRead, Plates.DateRead, "
        "Plates.LastVersionValidated, Plates.Samples, Plates.ODs, Plates.IncludeExcludeFlags, Plates.TechName, "
        "Runs.RunName, Plates.RunID, Plates.PlateID FROM Plates INNER JOIN Runs ON Runs.RunID = Plates.RunID "
        "WHERE Plates.TestName = ? AND Plates.DateRead >= ? AND Plates.DateRead <= ? "
        "ORDER BY Plates.DateRead, Plates.TimeRead, Plates.RunID, Plates.PlateID");
    for (auto _ : state) {
        QSqlQuery rows =
            db.query(sql, {QStringLiteral("Orvexa 412"), QStringLiteral("2020-01-01"), QStringLiteral("2030-12-31")});
        qint64 size = 0;
        int count = 0;
        while (rows.next()) {
            for (int c = 0; c < 13; ++c)
                size += rows.value(c).toString().size();
            ++count;
        }
        if (count != state.range(0))
            state.SkipWithError("the plates were not all read");
        benchmark::DoNotOptimize(size);
    }
}
BENCHMARK(BM_TrackingOf5000Plates_Floor)->Arg(5000)->Unit(benchmark::kMillisecond);

// The data of the QC window over the same plates with guide sets for the three quantities:
// the history judged by the default rules, the charts' points and the violations table.
// Aim: 5,000 plates in under half a second.
void BM_OpenQcWindowData(benchmark::State &state)
{
    const int plates = int(state.range(0));
    SavedKit kit(plates);
    {
        DbConnection db(kit.saved.temp().databaseLocation());
        const struct {
            const char *quantity;
            double mean, sd;
        } sets[] = {{"PC", 0.4, 0.1}, {"NC", 0.45, 0.1}, {"%I", 10, 30}};
        for (const auto &s : sets) {
            GuideSet set;
            set.testName = QStringLiteral("Orvexa 412");
            set.quantity = QString::fromLatin1(s.quantity);
            set.mean = s.mean;
            set.sd = s.sd;
            set.start = QDate(2019, 1, 1);
            GuideSetStore::add(db, set);
        }
    }
    QcWindowLogic window(kit.saved.folder(), kit.prompt, kit.clock);
    window.load();
    window.testName = QStringLiteral("Orvexa 412");
    window.from = QDate(2020, 1, 1);
    window.to = QDate(2030, 12, 31);
    size_t violations = 0;
    for (auto _ : state) {
        const std::optional<QcWindowLogic::View> view = window.gather();
        if (!view || view->history.runs.size() != size_t(plates))
            state.SkipWithError("the plates were not all gathered");
        else
            violations = view->violations.size();
        benchmark::DoNotOptimize(violations);
    }
    state.counters["plates"] = plates;
    state.counters["violations"] = double(violations);
}
BENCHMARK(BM_OpenQcWindowData)->Arg(5000)->Unit(benchmark::kMillisecond);

} // namespace
