// Saving and opening a run of 20 plates, as the run dialogs do it (a connection opened
// for the work, one transaction per save, every value bound). Aim: under 50 ms each.
// Each runs on the SQLite file (/0) and on a PostgreSQL server (/1) side by side, the
// server given by TAVIMETRA_TEST_SERVER (its socket folder, as scripts/test-server starts
// one); aim on the server: within 3 times the file's figure.
//
// The file is kept in WAL mode as the running program keeps it (SqliteWal). A save is I/O
// bound, so the save and its floor are timed by the clock on the wall: the floor is bare
// SQLite writing the same rows (the plates and their audit rows) with statements prepared
// once, in one transaction, WAL and synchronous FULL. Aim: the save within 1.5 times it.
#include "FakePrompt.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/PlateChanges.h"
#include "store/PlateRows.h"
#include "store/RunOpenLogic.h"
#include "store/RunSaveAsLogic.h"
#include "store/SqliteWal.h"
#include "store/clsPlates.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

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
        if (!temp.onServer())
            SqliteWal::keepWhileRunning(temp.databasePath());
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

    // The run's plates with every well of every plate changed, two ways: saved in turn,
    // each save writes all 20 rows.
    QList<RecordSet> twoWays() const
    {
        QList<RecordSet> plates;
        for (const char *tag : {"a", "b"}) {
            plates.append(saveAs.getPlatesRecord());
            RunPlates::retag(plates.last(), QString::fromLatin1(tag));
        }
        return plates;
    }
};

// Save of a run in the database whose every plate changed since the last save.
void BM_SaveRunOf20Plates(benchmark::State &state)
{
    SavedRun run(state);
    if (!run.ok)
        return;
    const QList<RecordSet> plates = run.twoWays();
    int n = 0;
    for (auto _ : state) {
        run.saveAs.setPlatesRecord(plates[++n % 2]);
        if (!run.saveAs.simpleSave())
            state.SkipWithError("save failed");
    }
    state.SetItemsProcessed(state.iterations() * kPlates);
}
BENCHMARK(BM_SaveRunOf20Plates)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

// One statement prepared once on a bare SQLite connection, run with texts bound.
class BareStatement {
public:
    BareStatement(sqlite3 *db, const char *sql) { sqlite3_prepare_v2(db, sql, -1, &mStatement, nullptr); }
    ~BareStatement() { sqlite3_finalize(mStatement); }
    bool run(const QList<QByteArray> &values, const QList<bool> &nulls = {})
    {
        for (int i = 0; i < values.size(); ++i) {
            if (i < nulls.size() && nulls[i])
                sqlite3_bind_null(mStatement, i + 1);
            else
                sqlite3_bind_text(mStatement, i + 1, values[i].constData(), int(values[i].size()), SQLITE_STATIC);
        }
        const bool done = sqlite3_step(mStatement) == SQLITE_DONE;
        sqlite3_reset(mStatement);
        return done;
    }

private:
    sqlite3_stmt *mStatement = nullptr;
};

// The rows a save writes, as texts: the plates and the audit rows of the change.
struct SaveRows {
    QList<QList<QByteArray>> plates;
    QList<QList<bool>> plateNulls;
    QList<QList<QByteArray>> audit;
};

SaveRows rowsOfSave(const RecordSet &before, const RecordSet &after)
{
    static const QStringList written = {"PlateID",
                                        "PlateName",
                                        "RunID",
                                        "TestName",
                                        "LotNumber",
                                        "ExpDate",
                                        "TimeRead",
                                        "DateRead",
                                        "FilterUsed",
                                        "ReaderUsed",
                                        "LastVersionValidated",
                                        "Groups",
                                        "Samples",
                                        "ODs",
                                        "RawODs",
                                        "Results",
                                        "IncludeExcludeFlags",
                                        "TechName"};
    SaveRows rows;
    for (int row = 0; row < after.recordCount(); ++row) {
        QList<QByteArray> values;
        QList<bool> nulls;
        for (const QString &field : written) {
            const QVariant value = PlateRows::toColumn(field, after.valueAt(row, field));
            values.append(value.toString().toUtf8());
            nulls.append(value.isNull());
        }
        rows.plates.append(values);
        rows.plateNulls.append(nulls);
    }
    for (const AuditEntry &e : PlateChanges::between(before, after, 1))
        rows.audit.append({AuditTrail::osUser().toUtf8(), AuditTrail::technician().toUtf8(),
                           AuditTrail::hostName().toUtf8(), e.action.toUtf8(), e.table.toUtf8(), e.recordID.toUtf8(),
                           QByteArray::number(*e.runID), QByteArray::number(*e.plateID), e.field.toUtf8(),
                           e.oldValue.toUtf8(), e.newValue.toUtf8(), QByteArray()});
    return rows;
}

// The floor of a save on the file: bare SQLite, a connection open all along, the same rows
// written in one transaction.
void BM_SaveRunOf20Plates_Floor(benchmark::State &state)
{
    SavedRun run(state);
    if (!run.ok)
        return;
    const QList<RecordSet> plates = run.twoWays();
    const QList<SaveRows> saves = {rowsOfSave(plates[1], plates[0]), rowsOfSave(plates[0], plates[1])};
    SqliteWal::settle(run.temp.databasePath());
    sqlite3 *db = nullptr;
    sqlite3_open_v2(QFile::encodeName(run.temp.databasePath()).constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
    {
        BareStatement begin(db, "BEGIN IMMEDIATE");
        BareStatement commit(db, "COMMIT");
        BareStatement remove(db, "DELETE FROM Plates WHERE RunID = 1");
        BareStatement insertPlate(db, "INSERT INTO Plates (PlateID, PlateName, RunID, TestName, LotNumber, ExpDate, "
                                      "TimeRead, DateRead, FilterUsed, ReaderUsed, LastVersionValidated, Groups, "
                                      "Samples, ODs, RawODs, Results, IncludeExcludeFlags, TechName) VALUES (?, ?, "
                                      "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        BareStatement insertAudit(db, "INSERT INTO AuditTrail (EntryTime, OsUser, Technician, Host, Action, "
                                      "TableName, RecordID, RunID, PlateID, FieldName, OldValue, NewValue, Reason) "
                                      "VALUES (strftime('%Y-%m-%dT%H:%M:%fZ', 'now'), ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                                      "?, ?, ?)");
        int n = 0;
        for (auto _ : state) {
            const SaveRows &save = saves[++n % 2];
            bool done = begin.run({}) && remove.run({});
            for (int row = 0; row < save.plates.size(); ++row)
                done = done && insertPlate.run(save.plates[row], save.plateNulls[row]);
            for (const QList<QByteArray> &entry : save.audit)
                done = done && insertAudit.run(entry);
            if (!(done && commit.run({})))
                state.SkipWithError(sqlite3_errmsg(db));
        }
    }
    sqlite3_close(db);
    state.SetItemsProcessed(state.iterations() * kPlates);
}
BENCHMARK(BM_SaveRunOf20Plates_Floor)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime();

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
