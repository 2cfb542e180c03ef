// The message area of the main window's status bar tells what was written where.
#include "MainWindowFixture.h"
#include "PlateRecordBuilder.h"

#include "ui/frmPrint.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

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
    const QString expected = QDir(f.folder.documentsPath()).filePath(
        QStringLiteral("OD values - Generic - No Name - Plate #1 - 2026-11-23 14-05-09.xlsx"));
    EXPECT_TRUE(QFileInfo::exists(expected));
    EXPECT_EQ(f.browser.opened, QStringList{expected});
    EXPECT_EQ(f.notice(), QStringLiteral("Workbook written to ") + QDir::toNativeSeparators(expected));
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(StatusNotice, AReportIsNamedWhereItWasWritten)
{
    NoticeFixture f;
    TestPlate read;
    read.testName = QStringLiteral("Generic");
    read.dateRead = QDate(2026, 11, 23);
    read.timeRead = QTime(9, 30);
    read.wells = {{QStringLiteral("B1"), {QStringLiteral("Cow 1"), QStringLiteral("Herd A"), QStringLiteral("0.250"), QString()}}};
    f.wb->plates() = plateRecordSet({read});
    f.wb->loadPlateRecord();
    bool clicked = false;
    QTimer::singleShot(0, f.window.get(), [&clicked] {
        for (QWidget *w : QApplication::topLevelWidgets()) {
            if (auto *dialog = qobject_cast<frmPrint *>(w); dialog && dialog->isVisible()) {
                dialog->findChild<QPushButton *>(QStringLiteral("cmdOK"))->click();
                clicked = true;
                if (dialog->isVisible())
                    dialog->reject();
            }
        }
    });
    f.trigger("mnuFileGenerateReport");
    ASSERT_TRUE(clicked);
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

TEST(StatusNotice, NothingWrittenNothingSaid)
{
    NoticeFixture f;
    f.browser.canOpen = false;
    f.trigger("mnuToolsExportToExcel");
    EXPECT_TRUE(f.notice().isEmpty());
    EXPECT_EQ(f.prompt.count(), 1);
}

} // namespace
