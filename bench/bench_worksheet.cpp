// A typed cell edit on a read plate, end to end: snapshot, change, panel, evaluation.
#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeRunDialogs.h"
#include "TempProgramFolder.h"

#include "worksheet/LayoutEditor.h"
#include "worksheet/Workbench.h"

#include <benchmark/benchmark.h>

namespace {

void BM_TypedCellEditOnAReadPlate(benchmark::State &state)
{
    TempProgramFolder folder;
    FakePrompt prompt(MsgAnswer::Yes);
    FakeClock clock;
    FakeRunDialogs dialogs;
    Workbench wb(folder.folder(), prompt, clock, dialogs);
    wb.load();
    wb.selectComboIndex(Workbench::Tests, wb.combo(Workbench::Tests).findText(QStringLiteral("Orvexa 412")));
    PlateSheet &s = wb.sheet();
    for (int k = 0; k < 96; ++k) {
        const QString sample = k < 2   ? QStringLiteral("PC")
                               : k < 5 ? QStringLiteral("NC")
                                       : QStringLiteral("S%1").arg(k);
        s.setTextAt(PlateSheet::Samples, k, sample);
        s.setTextAt(PlateSheet::Groups, k, k < 5 ? sample : QString());
        s.setRawODAt(k, k < 2 ? 0.15 : k < 5 ? 1.2 : 0.2 + (k % 10) / 10.0);
    }
    wb.plates().setValue(u"LastVersionValidated", QStringLiteral("1.5.4"));
    wb.plates().setValue(u"FilterUsed", QStringLiteral("630"));
    wb.plates().setValue(u"DateRead", clock.now().date());
    wb.refreshEvaluation();
    LayoutEditor editor(wb);
    int n = 0;
    for (auto _ : state) {
        s.setCursor(4, 6);
        editor.beginEdit();
        editor.afterEdit(PlateSheet::Samples, 4, 6, QStringLiteral("Calf %1").arg(++n % 7));
    }
    if (wb.validationText(0).isEmpty())
        state.SkipWithError("the plate was not evaluated");
}
BENCHMARK(BM_TypedCellEditOnAReadPlate)->Unit(benchmark::kMicrosecond);

} // namespace
