// Saving and opening a run of 20 plates, as the run dialogs do it (a connection opened
// for the work, one transaction per save, every value bound). Aim: under 50 ms each.
// Each runs on the SQLite file (/0) and on a PostgreSQL server (/1) side by side, the
// server given by TAVIMETRA_TEST_SERVER (its socket folder, as scripts/test-server starts
// one); aim on the server: within 3 times the file's figure.
#include "FakePrompt.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/RunOpenLogic.h"
#include "store/RunSaveAsLogic.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kPlates = 20;

// The program folder on the file, or on a new database of the server.
struct Backend {
    explicit Backend(bool server) { qputenv("TAVIMETRA_TEST_BACKEND", server ? "postgresql" : "sqlite"); }
};

// A program folder with run "Bench" of 20 plates saved in the delivered folder.
struct SavedRun {
    explicit SavedRun(benchmark::State &state) : backend(state.range(0) == 1), ok(false)
    {
        if (state.range(0) == 1 && !temp.onServer()) {
            state.SkipWithError("no server: set TAVIMETRA_TEST_SERVER to a PostgreSQL socket folder");
            return;
        }
        state.SetLabel(temp.onServer() ? "server" : "file");
        saveAs.setPlatesRecord(RunPlates::make(kPlates, 1));
        saveAs.load();
        saveAs.setRunNameText(QStringLiteral("Bench"));
        ok = saveAs.save() == RunBrowser::CommandEnd::Close;
        if (!ok)
            state.SkipWithError("the run could not be saved");
    }

    Backend backend;
    TempProgramFolder temp;
    FakePrompt prompt{MsgAnswer::Yes};
    RunSaveAsLogic saveAs{temp.folder(), prompt};
    bool ok;
};

// Save of a run in the database: its 20 rows deleted and written again.
void BM_SaveRunOf20Plates(benchmark::State &state)
{
    SavedRun run(state);
    if (!run.ok)
        return;
    for (auto _ : state) {
        if (!run.saveAs.simpleSave())
            state.SkipWithError("save failed");
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}
BENCHMARK(BM_SaveRunOf20Plates)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// Save As over the run of the same name: lists, lookups, the question, the overwrite.
void BM_SaveAsOverARunOf20Plates(benchmark::State &state)
{
    SavedRun run(state);
    if (!run.ok)
        return;
    for (auto _ : state) {
        run.saveAs.load();
        run.saveAs.setRunNameText(QStringLiteral("Bench"));
        if (run.saveAs.save() != RunBrowser::CommandEnd::Close)
            state.SkipWithError("save as failed");
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}
BENCHMARK(BM_SaveAsOverARunOf20Plates)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// Open of the run: the dialog's lists, the lookup, the 20 rows read into a record set.
void BM_OpenRunOf20Plates(benchmark::State &state)
{
    SavedRun run(state);
    RunOpenLogic open(run.temp.folder(), run.prompt);
    if (!run.ok)
        return;
    for (auto _ : state) {
        open.load();
        open.setRunNameText(QStringLiteral("Bench"));
        if (open.open() != RunBrowser::CommandEnd::Close)
            state.SkipWithError("open failed");
        benchmark::DoNotOptimize(open.getPlatesRecord().recordCount());
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}
BENCHMARK(BM_OpenRunOf20Plates)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace
