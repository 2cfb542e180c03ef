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
