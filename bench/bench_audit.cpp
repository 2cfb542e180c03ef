// The cost of the audit trail on a save of a run of 20 plates: the program's save with the
// trail beside the same save without it (..._Floor: the same connection, checks, change
// count and rows written, without the comparison and the trail's rows). Aim: the trail adds
// at most 25 %. Three saves: every well of every plate changed (lot and four well lists,
// the worst a save can do: the trail then holds more bytes than the rows), one plate read
// anew (the common save), and nothing changed. Timed by the clock on the wall (a save
// waits for the disk), on the file kept in WAL mode as the running program keeps it.
// /0 on the SQLite file, /1 on a PostgreSQL server (TAVIMETRA_TEST_SERVER).
#include "FakePrompt.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/PlateRows.h"
#include "store/RunChangeCounter.h"
#include "store/RunSaveAsLogic.h"
#include "store/SqliteWal.h"
#include "store/TransactionRetry.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kPlates = 20;

struct AuditedRun {
    explicit AuditedRun(benchmark::State &state) : ok(false)
    {
        qputenv("TAVIMETRA_TEST_BACKEND", state.range(0) == 1 ? "postgresql" : "sqlite");
        temp = std::make_unique<TempProgramFolder>();
        if (state.range(0) == 1 && !temp->onServer()) {
            state.SkipWithError("no server: set TAVIMETRA_TEST_SERVER to a PostgreSQL socket folder");
            return;
        }
        state.SetLabel(temp->onServer() ? "server" : "file");
        if (!temp->onServer())
            SqliteWal::keepWhileRunning(temp->databasePath());
        dialog = std::make_unique<RunSaveAsLogic>(temp->folder(), prompt);
        dialog->setPlatesRecord(RunPlates::make(kPlates, 1, QStringLiteral("a")));
        dialog->load();
        dialog->setRunNameText(QStringLiteral("Bench"));
        ok = dialog->save() == RunBrowser::CommandEnd::Close;
        if (!ok)
            state.SkipWithError("the run could not be saved");
        for (const char *tag : {"a", "b"}) {
            RecordSet plates = dialog->getPlatesRecord();
            RunPlates::retag(plates, QString::fromLatin1(tag));
            tagged.append(plates);
        }
    }

    FakePrompt prompt{MsgAnswer::Yes};
    std::unique_ptr<TempProgramFolder> temp;
    std::unique_ptr<RunSaveAsLogic> dialog;
    QList<RecordSet> tagged; // the plates with every field changed, two ways
    bool ok;
};

// The saves of a bench, one after the other: plates[0], plates[1], plates[0]...
void saveWithTheTrail(benchmark::State &state, AuditedRun &run, const QList<RecordSet> &plates)
{
    int n = 0;
    for (auto _ : state) {
        run.dialog->setPlatesRecord(plates[++n % 2]);
        if (!run.dialog->simpleSave())
            state.SkipWithError("save failed");
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}

// The same saves as RunSaveAsLogic::simpleSave makes them, without the trail.
void saveWithoutTheTrail(benchmark::State &state, AuditedRun &run, QList<RecordSet> plates)
{
    int n = 0;
    for (auto _ : state) {
        RecordSet &saved = plates[++n % 2];
        const DbConnection db = run.temp->open();
        if (RunChangeCounter::changedElsewhere(db, 1))
            state.SkipWithError("changed elsewhere");
        int count = 0;
        runTransaction(db, [&] {
            count = RunChangeCounter::countSave(db, 1).value_or(0);
            const PlateRows::StoredRows stored = PlateRows::readStored(db, 1);
            const QList<QVariantList> columns = PlateRows::columns(saved);
            if (db.dialect().isServer()) {
                PlateRows::deleteRun(db, 1);
                PlateRows::insert(db, saved);
            } else {
                PlateRows::rewriteChanged(db, stored, columns, saved);
            }
        });
        RunChangeCounter::noteSaved(db, 1, count);
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}

QList<RecordSet> oneReadAnew(const AuditedRun &run)
{
    QList<RecordSet> plates = {run.tagged[0], copyRecordset(run.tagged[0])};
    for (const char *field : {"ODs", "RawODs", "Results"})
        plates[1].setValueAt(0, QString::fromLatin1(field), run.tagged[1].valueAt(0, QString::fromLatin1(field)));
    return plates;
}

#define TRAIL_BENCH(name, plates)                                                                                      \
    void name(benchmark::State &state)                                                                                 \
    {                                                                                                                  \
        AuditedRun run(state);                                                                                         \
        if (run.ok)                                                                                                    \
            saveWithTheTrail(state, run, plates);                                                                      \
    }                                                                                                                  \
    BENCHMARK(name)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();                                     \
    void name##_Floor(benchmark::State &state)                                                                         \
    {                                                                                                                  \
        AuditedRun run(state);                                                                                         \
        if (run.ok)                                                                                                    \
            saveWithoutTheTrail(state, run, plates);                                                                   \
    }                                                                                                                  \
    BENCHMARK(name##_Floor)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

TRAIL_BENCH(BM_SaveOf20ChangedPlatesWithTheTrail, run.tagged)
TRAIL_BENCH(BM_SaveOf20PlatesOneReadAnewWithTheTrail, oneReadAnew(run))
TRAIL_BENCH(BM_SaveOf20UnchangedPlatesWithTheTrail, (QList<RecordSet>{run.tagged[0], run.tagged[0]}))

} // namespace
