// Time of a safe file replacement (temporary file, checked writes, fsync, rename, folder
// fsync) for a report-sized and a database-sized file, and of opening a read-write
// connection (with its use lock) for one piece of work.

#include "TempProgramFolder.h"

#include "platform/SafeFile.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void BM_SafeFileReplace(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString target = dir.filePath(QStringLiteral("TempHTML.htm"));
    const QByteArray contents(state.range(0), 'r');
    for (auto _ : state) {
        if (!SafeFile::writeWhole(target, contents))
            state.SkipWithError("the file could not be replaced");
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_SafeFileReplace)->Arg(64 << 10)->Arg(1 << 20)->Arg(16 << 20)->Unit(benchmark::kMillisecond);

void BM_OpenReadWriteConnection(benchmark::State &state)
{
    TempProgramFolder temp;
    for (auto _ : state) {
        const DbConnection db = temp.open();
        benchmark::DoNotOptimize(db.isOpen());
    }
}
BENCHMARK(BM_OpenReadWriteConnection)->Unit(benchmark::kMicrosecond);

} // namespace
