// The message area of the main window's status bar tells what was written where.
#include "MainWindowFixture.h"
#include "ModalForm.h"
#include "PlateRecordBuilder.h"

#include "ui/frmPrint.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>

namespace {

struct NoticeFixture : MainWindowFixture {
    NoticeFixture()
    {
        clock.set(QDateTime(QDate(2026, 11, 23), QTime(14, 5, 9)));
        show(false);
    }
    void trigger(const char *action) const { window->findChild<QAction *>(QString::fromLatin1(action))->trigger(); }
    QString notice() const { return window->findChild<QLabel *>(QStringLiteral("sbNotice"))->text(); }
};

TEST(StatusNotice, TheOdWorkbookIsNamedWhereItWasWritten)
{
    NoticeFixture f;
    EXPECT_TRUE(f.notice().isEmpty());
    f.trigger("mnuToolsExportToExcel");
    ASSERT_EQ(f.browser.opened.size(), 1);
    const QString written = f.browser.opened.first();
    EXPECT_TRUE(QFileInfo::exists(written));
    EXPECT_EQ(QFileInfo(written).absolutePath(), QFileInfo(f.folder.documentsPath()).absoluteFilePath());
    EXPECT_EQ(f.notice(), QStringLiteral("Workbook written to ") + QDir::toNativeSeparators(written));
    EXPECT_EQ(f.prompt.count(), 0);

    // Nothing written, nothing new said.
    const QString before = f.notice();
    f.browser.canOpen = false;
    f.trigger("mnuToolsExportToExcel");
    EXPECT_EQ(f.notice(), before);
    EXPECT_EQ(f.prompt.count(), 1);
}

TEST(StatusNotice, AReportIsNamedWhereItWasWritten)
{
    NoticeFixture f;
    TestPlate read;
    read.testName = QStringLiteral("Generic");
    read.dateRead = QDate(2026, 11, 23);
    read.timeRead = QTime(9, 30);
    read.wells = {{QStringLiteral("B1"),
                   {QStringLiteral("Cow 1"), QStringLiteral("Herd A"), QStringLiteral("0.250"), QString()}}};
    f.wb->plates() = plateRecordSet({read});
    f.wb->loadPlateRecord();
    const auto opened = whenFormOpens<frmPrint>(
        f.window.get(), [](frmPrint *dialog) { dialog->findChild<QPushButton *>(QStringLiteral("cmdOK"))->click(); });
    f.trigger("mnuFileGenerateReport");
    ASSERT_TRUE(*opened);
    const QString report = QDir(f.folder.path()).filePath(QStringLiteral("TempHTML.htm"));
    EXPECT_EQ(f.browser.opened, QStringList{report});
    EXPECT_EQ(f.notice(), QStringLiteral("Report written to ") + QDir::toNativeSeparators(report));
}

TEST(StatusNotice, ACompactionNamesItsBackup)
{
    NoticeFixture f;
    f.trigger("mnuToolsCompactDatabase");
    const QString backup = QDir(f.folder.path()).filePath(QStringLiteral("TavimetraBackup/backup.db"));
    EXPECT_TRUE(QFileInfo::exists(backup));
    EXPECT_EQ(f.notice(), QStringLiteral("Database compacted; its backup is ") + QDir::toNativeSeparators(backup));
}

} // namespace
