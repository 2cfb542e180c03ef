// The cost of the audit trail on a save of a run of 20 plates: the same save with the
// trail (the former rows read, compared, and the changes written beside the new rows) and
// without it (the delete and the inserts alone, in one transaction). Every save changes
// every plate (lot and four well lists, all 96 wells), the worst a save can do; a save
// that changes nothing is shown as well. Aim: the trail adds at most 25 %: the save without
// the trail is the floor of the save with it (..._Floor). Timed by the clock on the wall
// (a save waits for the disk), on the file kept in WAL mode as the running program keeps it.
// /0 on the SQLite file, /1 on a PostgreSQL server (TAVIMETRA_TEST_SERVER).
#include "FakePrompt.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/PlateRows.h"
#include "store/SqliteWal.h"
#include "store/RunSaveAsLogic.h"
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

void BM_SaveOf20ChangedPlatesWithTheTrail(benchmark::State &state)
{
    AuditedRun run(state);
    if (!run.ok)
        return;
    int n = 0;
    for (auto _ : state) {
        run.dialog->setPlatesRecord(run.tagged[++n % 2]);
        if (!run.dialog->simpleSave())
            state.SkipWithError("save failed");
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}
BENCHMARK(BM_SaveOf20ChangedPlatesWithTheTrail)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SaveOf20ChangedPlatesWithTheTrail_Floor(benchmark::State &state)
{
    AuditedRun run(state);
    if (!run.ok)
        return;
    int n = 0;
    for (auto _ : state) {
        RecordSet plates = copyRecordset(run.tagged[++n % 2]);
        const DbConnection db = run.temp->open();
        runTransaction(db, [&] {
            PlateRows::deleteRun(db, 1);
            PlateRows::insert(db, plates);
        });
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}
BENCHMARK(BM_SaveOf20ChangedPlatesWithTheTrail_Floor)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

// The common save: one plate of the 20 read anew (its ODs, raw ODs and results change).
void BM_SaveOf20PlatesOneReadAnewWithTheTrail(benchmark::State &state)
{
    AuditedRun run(state);
    if (!run.ok)
        return;
    QList<RecordSet> oneChanged = {run.tagged[0], copyRecordset(run.tagged[0])};
    for (const char *field : {"ODs", "RawODs", "Results"})
        oneChanged[1].setValueAt(0, QString::fromLatin1(field), run.tagged[1].valueAt(0, QString::fromLatin1(field)));
    int n = 0;
    for (auto _ : state) {
        run.dialog->setPlatesRecord(oneChanged[++n % 2]);
        if (!run.dialog->simpleSave())
            state.SkipWithError("save failed");
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}
BENCHMARK(BM_SaveOf20PlatesOneReadAnewWithTheTrail)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SaveOf20UnchangedPlatesWithTheTrail(benchmark::State &state)
{
    AuditedRun run(state);
    if (!run.ok)
        return;
    run.dialog->setPlatesRecord(run.tagged[0]);
    for (auto _ : state) {
        if (!run.dialog->simpleSave())
            state.SkipWithError("save failed");
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}
BENCHMARK(BM_SaveOf20UnchangedPlatesWithTheTrail)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
