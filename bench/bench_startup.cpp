// Start-up of the main window and the carrying of a plate between record and screen.
#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeRunDialogs.h"
#include "TempProgramFolder.h"

#include "platform/Browser.h"
#include "store/StartUp.h"
#include "ui/frmMain.h"
#include "worksheet/Workbench.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTemporaryDir>

#include <chrono>
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

    // Seconds from the start to the word, or a negative number when it never came.
    double run(const char *program) const
    {
        std::vector<std::string> env;
        for (char **e = environ; *e; ++e)
            env.emplace_back(*e);
        const std::string home = mDataHome.toStdString();
        env.push_back("QT_QPA_PLATFORM=offscreen");
        env.push_back("XDG_DATA_HOME=" + home + "/data");
        env.push_back("XDG_CONFIG_HOME=" + home + "/config");
        env.push_back("TAVIMETRA_QUIT_WHEN_SHOWN=1");
        std::vector<char *> envp;
        for (std::string &e : env)
            envp.push_back(e.data());
        envp.push_back(nullptr);
        char *argv[] = {const_cast<char *>(program), nullptr};

        int out[2];
        if (pipe(out) != 0)
            return -1;
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
        bool shown = false;
        char c = 0;
        while (spawned == 0 && !shown && read(out[0], &c, 1) == 1)
            shown = c == '\n';
        const auto end = std::chrono::steady_clock::now();
        close(out[0]);
        int status = 0;
        if (spawned == 0)
            waitpid(pid, &status, 0);
        if (!shown || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
            return -1;
        return std::chrono::duration<double>(end - start).count();
    }

private:
    QString mDataHome;
};

void runShownProcess(benchmark::State &state, const char *program)
{
    QTemporaryDir home;
    const ShownProcess process(home.path());
    // The first start makes the data folder and its database: not counted here.
    if (process.run(program) < 0) {
        state.SkipWithError("the program did not show its window");
        return;
    }
    for (auto _ : state) {
        const double seconds = process.run(program);
        if (seconds < 0) {
            state.SkipWithError("the program did not show its window");
            return;
        }
        state.SetIterationTime(seconds);
    }
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
        const double seconds = ShownProcess(home.path()).run(TAVIMETRA_PROGRAM);
        if (seconds < 0) {
            state.SkipWithError("the program did not show its window");
            return;
        }
        state.SetIterationTime(seconds);
    }
}
BENCHMARK(BM_ProcessFirstStartToMainWindowShown)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(2.0);

} // namespace
