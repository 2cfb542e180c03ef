// Clipboard text pasted into the groups and samples sheets, as Ctrl+V does. Whatever the
// clipboard holds, every cell ends without the well-list delimiter and within its length,
// and the plate's record reads back as 96 wells.
#include "FuzzInput.h"

#include "FakeClipboard.h"
#include "FakeWorksheetDialogs.h"
#include "WorkbenchFixture.h"

#include "core/WellList.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/SheetClipboard.h"

#include <QCoreApplication>

namespace {

struct Bench {
    WorkbenchFixture fixture;
    FakeWorksheetDialogs dialogs;
    FakeClipboard clipboard;
    Bench()
    {
        Workbench &wb = fixture.start();
        wb.setWorksheetDialogs(dialogs);
        wb.setClipboard(clipboard);
    }
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Bench bench;
    if (size < 2)
        return 0;
    Workbench &wb = bench.fixture.wb.operator*();
    // The groups sheet asks the database for every name: one input in four goes there.
    const int sheet = (data[0] & 3) == 0 ? PlateSheet::Groups : PlateSheet::Samples;
    wb.sheet().setCursor(1 + data[1] % wells::kRows, 1 + (data[1] / wells::kRows) % wells::kCols);
    bench.fixture.prompt.clearBoxes();
    bench.clipboard.contents = fuzz::utf8(data + 2, size - 2);
    SheetClipboard(wb).paste(sheet);

    for (int s : {int(PlateSheet::Groups), int(PlateSheet::Samples)}) {
        for (int k = 0; k < wells::kCount; ++k) {
            const QString &cell = wb.sheet().textAt(s, k);
            fuzz::check(!cell.contains(kWellDelimiter), "no delimiter in a cell");
            fuzz::check(cell.size() <= LayoutEditor::kMaxCellText, "a cell within its length");
        }
    }
    wb.storePlateRecord();
    fuzz::check(splitWellList(wb.plates().text(u"Samples")).size() == 96, "the record reads back");
    fuzz::check(splitWellList(wb.plates().text(u"Groups")).size() == 96, "the record reads back");
    return 0;
}
