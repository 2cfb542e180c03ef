// The main window's File commands with the real run logic behind the dialogs.
#include "FakeClock.h"
#include "FakePrompt.h"
#include "LogicRunDialogs.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/DatabaseSchema.h"
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

TEST(RunsThroughTheWorkbench, SaveOfAKnownRunRewritesItsRowsAndCountsAChange)
{
    Desk d;
    d.type(0, QStringLiteral("first"));
    d.dialogs.saveAsName = QStringLiteral("R");
    d.wb.fileSave(); // never saved: goes to Save As
    ASSERT_TRUE(d.dialogs.saveAsUserOk());
    d.type(0, QStringLiteral("second"));
    d.wb.fileSave();
    EXPECT_FALSE(d.wb.isDirty());

    const DbConnection db = d.temp.open();
    const qint64 runID = RunPlates::runID(db, kDeliveryFolderName, QStringLiteral("R"));
    EXPECT_EQ(RunPlates::rowCount(db, runID), 1);
    EXPECT_TRUE(db.scalar(QStringLiteral("SELECT Samples FROM Plates WHERE RunID = ?"), {runID})
                    .toString()
                    .startsWith(QStringLiteral("second")));
    if (!d.temp.onServer()) { // a server keeps its own storage and counts nothing
        EXPECT_EQ(db.scalar(QStringLiteral("SELECT ChangesSinceLastCompact FROM MiscSettings")).toDouble(), 2.0);
    }
}

TEST(RunsThroughTheWorkbench, CancelInTheSaveDialogAtNewKeepsTheWork)
{
    Desk d;
    d.type(0, QStringLiteral("unsaved"));
    d.prompt.queueAnswer(MsgAnswer::Yes); // "Save changes to 'No Name'?"
    d.dialogs.saveAsCancels = true;
    d.wb.fileNew();
    EXPECT_TRUE(d.wb.isDirty());
    EXPECT_EQ(d.wb.sheet().textAt(PlateSheet::Samples, 0), "unsaved");
}

} // namespace
