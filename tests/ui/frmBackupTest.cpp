// The compaction form: on the screen with a busy cursor before the work starts, closed
// when it ends.
#include "FakePrompt.h"
#include "QtPrinters.h"
#include "TempProgramFolder.h"

#include "store/CompactDB.h"
#include "store/DatabaseError.h"
#include "store/MiscSettings.h"
#include "ui/frmBackup.h"

#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace {

TEST(frmBackup, CompactsOnceItIsOnTheScreenWithABusyCursorAndThenCloses)
{
    TempProgramFolder temp;
    FakePrompt prompt;
    MiscSettings(temp.open()).setChangesSinceLastCompact(250);
    frmBackup form(temp.folder(), prompt);
    bool visibleDuringWork = false;
    Qt::CursorShape cursorDuringWork = Qt::ArrowCursor;
    form.compactDB().setStepDone([&](CompactDB::Step step, const QString &) {
        if (step != CompactDB::Step::CopyWritten)
            return;
        visibleDuringWork = form.isVisible();
        if (QApplication::overrideCursor())
            cursorDuringWork = QApplication::overrideCursor()->shape();
    });

    form.exec();

    EXPECT_TRUE(form.succeeded());
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(visibleDuringWork);
    EXPECT_EQ(cursorDuringWork, Qt::WaitCursor);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(MiscSettings(temp.open()).changesSinceLastCompact(), 0.0);
    EXPECT_TRUE(QFileInfo(QDir(temp.path()).filePath(QStringLiteral("TavimetraBackup/backup.db"))).isFile());
    EXPECT_EQ(prompt.count(), 0);
}

TEST(frmBackup, TheCommandReportsAFailureAndLeavesTheCursorAsItWas)
{
    TempProgramFolder temp;
    FakePrompt prompt;
    TempProgramFolder::writeFile(QDir(temp.path()).filePath(QStringLiteral("TavimetraBackup")), "in the way");
    EXPECT_FALSE(frmBackup::runCompaction(nullptr, temp.folder(), prompt));
    ASSERT_EQ(prompt.count(), 1);
    EXPECT_EQ(prompt.last().title, "Compact Database");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::topLevelWidgets().count(), 0);
}

} // namespace
