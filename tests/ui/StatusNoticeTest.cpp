// The message area of the main window's status bar tells what was written where.
#include "FakeBrowser.h"
#include "WorkbenchFixture.h"

#include "ui/frmMain.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLabel>

namespace {

struct NoticeFixture : WorkbenchFixture {
    FakeBrowser browser;
    std::unique_ptr<frmMain> window;

    NoticeFixture()
    {
        clock.set(QDateTime(QDate(2026, 11, 23), QTime(14, 5, 9)));
        start();
        window = std::make_unique<frmMain>(*wb, prompt, browser);
        window->show();
    }
    void trigger(const char *action) const { window->findChild<QAction *>(QString::fromLatin1(action))->trigger(); }
    QString notice() const { return window->findChild<QLabel *>(QStringLiteral("sbNotice"))->text(); }
};

TEST(StatusNotice, TheOdWorkbookIsNamedWhereItWasWritten)
{
    NoticeFixture f;
    EXPECT_TRUE(f.notice().isEmpty());
    f.trigger("mnuToolsExportToExcel");
    const QString expected = QDir(f.folder.documentsPath()).filePath(
        QStringLiteral("OD values - Generic - No Name - Plate #1 - 2026-11-23 14-05-09.xlsx"));
    EXPECT_TRUE(QFileInfo::exists(expected));
    EXPECT_EQ(f.browser.opened, QStringList{expected});
    EXPECT_EQ(f.notice(), QStringLiteral("Workbook written to ") + QDir::toNativeSeparators(expected));
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(StatusNotice, ACompactionNamesItsBackup)
{
    NoticeFixture f;
    f.trigger("mnuToolsCompactDatabase");
    const QString backup = QDir(f.folder.path()).filePath(QStringLiteral("TavimetraBackup/backup.db"));
    EXPECT_TRUE(QFileInfo::exists(backup));
    EXPECT_EQ(f.notice(), QStringLiteral("Database compacted; its backup is ") + QDir::toNativeSeparators(backup));
}

TEST(StatusNotice, NothingWrittenNothingSaid)
{
    NoticeFixture f;
    f.browser.canOpen = false;
    f.trigger("mnuToolsExportToExcel");
    EXPECT_TRUE(f.notice().isEmpty());
    EXPECT_EQ(f.prompt.count(), 1);
}

} // namespace
