// The main window's File commands with the real run logic behind the dialogs: the one flow
// that proves the wiring (the commands' rules are shown on a Workbench with fake dialogs).
#include "FakeClock.h"
#include "FakePrompt.h"
#include "LogicRunDialogs.h"
#include "QtPrinters.h"
#include "TempProgramFolder.h"

#include "worksheet/Workbench.h"

#include <gtest/gtest.h>

namespace {

struct Desk {
    TempProgramFolder temp;
    FakePrompt prompt;
    FakeClock clock;
    LogicRunDialogs dialogs{temp.folder(), prompt};
    Workbench wb{temp.folder(), prompt, clock, dialogs};

    Desk() { wb.load(); }

    // Types a sample name into a well of the plate on screen, as the grid would.
    void type(int well, const QString &text)
    {
        wb.sheet().setTextAt(PlateSheet::Samples, well, text);
        wb.setDirty(true);
    }
};

TEST(RunsThroughTheWorkbench, SaveAsThenOpenGivesBackThePlates)
{
    Desk d;
    d.type(0, QStringLiteral("Cow 'Bella'"));
    d.type(95, QStringLiteral("PC"));
    d.wb.sheet().setRawODAt(3, 0.125);
    d.dialogs.saveAsName = QStringLiteral("Monday's run");
    d.wb.fileSaveAs();
    ASSERT_TRUE(d.dialogs.saveAsUserOk()) << d.prompt.texts().join('\n').toStdString();
    EXPECT_EQ(d.wb.statusPanel(4), "Run: Monday's run");
    EXPECT_FALSE(d.wb.isDirty());
    const qint64 runID = d.wb.plates().value(u"RunID").toLongLong();

    d.wb.fileNew();
    EXPECT_EQ(d.wb.sheet().textAt(PlateSheet::Samples, 0), "");
    EXPECT_NE(d.wb.plates().value(u"RunID").toLongLong(), runID);

    d.dialogs.openName = QStringLiteral("Monday's run");
    d.wb.fileOpen();
    ASSERT_TRUE(d.dialogs.openUserOk());
    EXPECT_EQ(d.wb.statusPanel(4), "Run: Monday's run");
    EXPECT_EQ(d.wb.plates().value(u"RunID").toLongLong(), runID);
    EXPECT_EQ(d.wb.plates().recordCount(), 1);
    EXPECT_EQ(d.wb.sheet().textAt(PlateSheet::Samples, 0), "Cow 'Bella'");
    EXPECT_EQ(d.wb.sheet().textAt(PlateSheet::Samples, 95), "PC");
    EXPECT_EQ(d.wb.sheet().rawODAt(3), 0.125);
    EXPECT_FALSE(d.wb.isDirty());
}

} // namespace
