// Tools > Audit Trail...: the list with its filters, a bad filter told, the CSV export.
#include "FakePrompt.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/NamedRunStore.h"
#include "ui/frmAuditTrail.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <gtest/gtest.h>

TEST(AuditTrailWindow, ListsFiltersAndExportsTheTrail)
{
    const TempProgramFolder temp;
    {
        const DbConnection db = temp.open();
        NamedRunStore(db).save("F", "A", RunPlates::make(1, 1), false);
        NamedRunStore(db).save("F", "B", RunPlates::make(1, 1), false);
    }
    FakePrompt prompt;
    frmAuditTrail window(temp.folder(), prompt);
    auto *table = window.findChild<QTableWidget *>("lstEntries");
    auto *runID = window.findChild<QLineEdit *>("txtRunID");
    auto *show = window.findChild<QPushButton *>("cmdShow");
    ASSERT_TRUE(table && runID && show);
    EXPECT_EQ(table->rowCount(), 5); // the folder, and each run with its plate
    EXPECT_EQ(table->item(1, 4)->text(), "Run saved as");
    EXPECT_EQ(table->item(1, 9)->text(), "A");

    QTest::keyClicks(runID, "two");
    QTest::mouseClick(show, Qt::LeftButton);
    EXPECT_EQ(prompt.last().text, "The run id must be a whole number from 1 up.");
    EXPECT_EQ(table->rowCount(), 5); // the list stays as it was

    runID->clear();
    QTest::keyClicks(runID, "2");
    QTest::mouseClick(show, Qt::LeftButton);
    ASSERT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->item(0, 9)->text(), "B");

    const QString path = QDir(temp.documentsPath()).filePath("trail.csv");
    QDir().mkpath(temp.documentsPath());
    window.chooseExportPath = [&] { return path; };
    QTest::mouseClick(window.findChild<QPushButton *>("cmdExport"), Qt::LeftButton);
    const QStringList lines = QString::fromUtf8(TempProgramFolder::readFile(path)).split("\r\n");
    ASSERT_EQ(lines.size(), 4) << lines.join('|').toStdString(); // heading, two rows, the last line's end
    EXPECT_TRUE(lines[0].startsWith("Time (UTC),User,Technician,Host,Action,Table,Record,Run,Plate,Field,Old value,"));
    EXPECT_TRUE(lines[1].contains(",Run saved as,Runs,2,2,,RunName,,B,")) << lines[1].toStdString();
}
