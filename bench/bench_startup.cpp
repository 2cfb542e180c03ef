// Start-up of the main window and the carrying of a plate between record and screen.
#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeRunDialogs.h"
#include "PlateRecordBuilder.h"
#include "SavedPlates.h"
#include "TempProgramFolder.h"

#include "core/Wells.h"
#include "platform/Browser.h"
#include "store/StartUp.h"
#include "ui/frmMain.h"
#include "worksheet/Workbench.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class NoBrowser : public Browser {
public:
    bool openFile(const QString &) override { return true; }
};

// From the start-up checks of the database to the main window painted on the screen.
void BM_StartUpToMainWindowShown(benchmark::State &state)
{
    TempProgramFolder folder;
    FakePrompt prompt;
    FakeClock clock;
    FakeRunDialogs dialogs;
    NoBrowser browser;
    for (auto _ : state) {
        if (!startProgram(folder.folder(), prompt))
            state.SkipWithError("start-up refused");
        Workbench wb(folder.folder(), prompt, clock, dialogs);
        wb.load();
        frmMain window(wb, prompt, browser);
        window.show();
        QApplication::processEvents();
        benchmark::DoNotOptimize(window.isVisible());
    }
}
BENCHMARK(BM_StartUpToMainWindowShown)->Unit(benchmark::kMillisecond);

// The start-up checks (recovery, both validations, the renamed kit) on a database that
// holds saved plates: they read every plate, so they grow with the lab's history.
void BM_StartUpChecksOnSavedPlates(benchmark::State &state)
{
    SavedPlates saved;
    for (int first = 0; first < state.range(0); first += 20) {
        QList<TestPlate> run;
        for (int n = first; n < first + 20; ++n) {
            TestPlate p;
            p.plateID = n % 20 + 1;
            p.plateName = QStringLiteral("Plate #%1").arg(p.plateID);
            p.testName = QStringLiteral("Orvexa 412");
            for (int k = 0; k < wells::kCount; ++k)
                p.wells.insert(wells::name(k),
                               TestWell{QStringLiteral("S%1").arg(k), QStringLiteral("Herd %1").arg(k / 12),
                                        QStringLiteral("0.123"), QStringLiteral("NEG"), 1});
            run.append(p);
        }
        saved.saveRun(QStringLiteral("Run %1").arg(first / 20 + 1), run);
    }
    FakePrompt prompt;
    for (auto _ : state)
        if (!startProgram(saved.folder(), prompt))
            state.SkipWithError("start-up refused");
}
BENCHMARK(BM_StartUpChecksOnSavedPlates)->Arg(5000)->Unit(benchmark::kMillisecond);

// A store of the plate on screen into its record and a load back, on a laid-out plate.
void BM_StorePlusLoadPlateRecord(benchmark::State &state)
{
    TempProgramFolder folder;
    FakePrompt prompt;
    FakeClock clock;
    FakeRunDialogs dialogs;
    Workbench wb(folder.folder(), prompt, clock, dialogs);
    wb.load();
    for (int k = 0; k < 96; ++k) {
        wb.sheet().setTextAt(PlateSheet::Samples, k, QStringLiteral("Sample %1").arg(k));
        wb.sheet().setTextAt(PlateSheet::Groups, k, QStringLiteral("Group"));
        wb.sheet().setTextAt(PlateSheet::ODs, k, QStringLiteral("0.%1").arg(k + 100));
        wb.sheet().setRawODAt(k, 0.1 + k / 97.0);
    }
    for (auto _ : state) {
        wb.storePlateRecord();
        wb.loadPlateRecord();
    }
}
BENCHMARK(BM_StorePlusLoadPlateRecord)->Unit(benchmark::kMicrosecond);

} // namespace

namespace {

// The whole program started as a user starts it (offscreen), timed from the start of the
// process to its word that the main window has been shown (TAVIMETRA_QUIT_WHEN_SHOWN); its
// end after that is not counted. The data folder is a temporary one of the bench's own.
class ShownProcess {
public:
    explicit ShownProcess(const QString &dataHome) : mDataHome(dataHome) {}

    struct Times {
        double real = -1; // seconds from the start to the word; negative when it never came
        double cpu = 0;   // the processor time the program says it had spent by then
    };

    Times run(const char *program) const
    {
        const std::string home = mDataHome.toStdString();
        const std::vector<std::string> own = {"QT_QPA_PLATFORM=offscreen", "XDG_DATA_HOME=" + home + "/data",
                                              "XDG_CONFIG_HOME=" + home + "/config", "TAVIMETRA_QUIT_WHEN_SHOWN=1"};
        std::vector<std::string> env = own;
        for (char **e = environ; *e; ++e) {
            const std::string entry(*e);
            const auto named = [&entry](const std::string &o) {
                return entry.compare(0, o.find('=') + 1, o, 0, o.find('=') + 1) == 0;
            };
            if (std::none_of(own.begin(), own.end(), named))
                env.push_back(entry);
        }
        std::vector<char *> envp;
        for (std::string &e : env)
            envp.push_back(e.data());
        envp.push_back(nullptr);
        char *argv[] = {const_cast<char *>(program), nullptr};

        Times times;
        int out[2];
        if (pipe(out) != 0)
            return times;
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, out[0]);
        // Qt's notes on the offscreen platform would fill the bench's own output.
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        const auto start = std::chrono::steady_clock::now();
        pid_t pid = 0;
        const int spawned = posix_spawn(&pid, program, &actions, nullptr, argv, envp.data());
        posix_spawn_file_actions_destroy(&actions);
        close(out[1]);
        std::string line;
        char c = 0;
        while (spawned == 0 && read(out[0], &c, 1) == 1 && c != '\n')
            line += c;
        const auto end = std::chrono::steady_clock::now();
        close(out[0]);
        int status = 0;
        if (spawned == 0)
            waitpid(pid, &status, 0);
        const std::string mark = "main window shown ";
        if (c != '\n' || line.compare(0, mark.size(), mark) != 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
            return times;
        times.real = std::chrono::duration<double>(end - start).count();
        times.cpu = std::atof(line.c_str() + mark.size());
        return times;
    }

private:
    QString mDataHome;
};

// Real time from the process's start to its window shown; "cpu_ms" is the processor time
// the program had spent by then, steadier than the real time on a busy machine.
void runShownProcess(benchmark::State &state, const char *program)
{
    QTemporaryDir home;
    const ShownProcess process(home.path());
    // The first start makes the data folder and its database: not counted here.
    if (process.run(program).real < 0) {
        state.SkipWithError("the program did not show its window");
        return;
    }
    double cpu = 0;
    for (auto _ : state) {
        const ShownProcess::Times times = process.run(program);
        if (times.real < 0) {
            state.SkipWithError("the program did not show its window");
            return;
        }
        state.SetIterationTime(times.real);
        cpu += times.cpu;
    }
    state.counters["cpu_ms"] = benchmark::Counter(cpu * 1e3, benchmark::Counter::kAvgIterations);
}

void BM_ProcessStartToMainWindowShown(benchmark::State &state)
{
    runShownProcess(state, TAVIMETRA_PROGRAM);
}
BENCHMARK(BM_ProcessStartToMainWindowShown)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(2.0);

// An empty QMainWindow in a program of its own: what any Qt program pays to show a window.
void BM_ProcessStartToMainWindowShown_Floor(benchmark::State &state)
{
    runShownProcess(state, TAVIMETRA_EMPTY_WINDOW_PROGRAM);
}
BENCHMARK(BM_ProcessStartToMainWindowShown_Floor)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(2.0);

// The very first start: the data folder made and seeded, the database created.
void BM_ProcessFirstStartToMainWindowShown(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir home;
        state.ResumeTiming();
        const double seconds = ShownProcess(home.path()).run(TAVIMETRA_PROGRAM).real;
        if (seconds < 0) {
            state.SkipWithError("the program did not show its window");
            return;
        }
        state.SetIterationTime(seconds);
    }
}
BENCHMARK(BM_ProcessFirstStartToMainWindowShown)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(2.0);

} // namespace
