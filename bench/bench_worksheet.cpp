// A typed cell edit on a read plate: the whole user step through the real main window
// (click a well, type, Enter, the repaint that follows), and its floor, the same edit
// through the logic alone (snapshot, change, panel, evaluation; no widgets).
#include "FakeBrowser.h"
#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeRunDialogs.h"
#include "TempProgramFolder.h"

#include "ui/frmMain.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/Workbench.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTableView>
#include <QTest>
#include <QWindow>

namespace {

// A run whose one plate was read with a kit that has controls: every edit evaluates it.
struct ReadPlate {
    TempProgramFolder folder;
    FakePrompt prompt{MsgAnswer::Yes};
    FakeClock clock;
    FakeRunDialogs dialogs;
    Workbench wb{folder.folder(), prompt, clock, dialogs};

    ReadPlate()
    {
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
    }
};

// Counts the paints of a widget, so the benchmark can tell that its step did repaint.
struct PaintCounter : QObject {
    int paints = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

// Click, type, Enter, and the repaint that follows (kept out of line for profiling).
[[gnu::noinline]] void typeIntoWell(QTableView *grid, const QPoint &well, const QString &text)
{
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, well);
    QCoreApplication::processEvents();
    QTest::keyClick(grid, text.at(0).toLatin1());
    QWidget *editor = QApplication::focusWidget();
    QTest::keyClicks(editor, text.mid(1));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the closed editor
    QCoreApplication::processEvents();                                   // the repaint
}

void BM_TypedCellEditOnAReadPlate(benchmark::State &state)
{
    ReadPlate plate;
    FakeBrowser browser;
    frmMain window(plate.wb, plate.prompt, browser);
    window.show();
    QApplication::setActiveWindow(&window);
    if (!QTest::qWaitForWindowExposed(&window)) {
        state.SkipWithError("the main window was not exposed");
        return;
    }
    QTableView *grid = window.grid(PlateSheet::Samples);
    PaintCounter counter;
    grid->viewport()->installEventFilter(&counter);
    const QPoint well = grid->visualRect(grid->model()->index(3, 5)).center();
    int n = 0;
    for (auto _ : state)
        typeIntoWell(grid, well, QStringLiteral("Calf %1").arg(++n % 7));
    if (counter.paints < int(state.iterations()))
        state.SkipWithError("the grid did not repaint after each edit");
    if (plate.wb.validationText(0).isEmpty() ||
        plate.wb.sheet().text(PlateSheet::Samples, 4, 6) != QStringLiteral("Calf %1").arg(n % 7))
        state.SkipWithError("the edit did not reach the evaluated plate");
}
BENCHMARK(BM_TypedCellEditOnAReadPlate)->Unit(benchmark::kMicrosecond);

void BM_TypedCellEditOnAReadPlate_Floor(benchmark::State &state)
{
    ReadPlate plate;
    PlateSheet &s = plate.wb.sheet();
    LayoutEditor editor(plate.wb);
    int n = 0;
    for (auto _ : state) {
        s.setCursor(4, 6);
        editor.beginEdit();
        editor.afterEdit(PlateSheet::Samples, 4, 6, QStringLiteral("Calf %1").arg(++n % 7));
    }
    if (plate.wb.validationText(0).isEmpty())
        state.SkipWithError("the plate was not evaluated");
}
BENCHMARK(BM_TypedCellEditOnAReadPlate_Floor)->Unit(benchmark::kMicrosecond);

} // namespace
