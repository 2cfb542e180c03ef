#include "FakeBrowser.h"
#include "FakePrompt.h"
#include "QtPrinters.h"
#include "XlsxReadBack.h"

#include "platform/XlsxWorkbook.h"
#include "reports/OdExport.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>

namespace {

// The OD sheet of a plate: 96 texts in well order (A1, B1, ... H12).
QStringList odSheet(const QMap<QString, QString> &cells)
{
    QStringList texts;
    for (int col = 1; col <= 12; ++col) {
        for (const char row : QByteArray("ABCDEFGH"))
            texts << cells.value(QChar::fromLatin1(row) + QString::number(col));
    }
    return texts;
}

// The sheet reference of a plate well: row letter A to H is sheet row 1 to 8, column 1 to
// 12 is sheet column A to L.
QString sheetCell(const char *well)
{
    const int row = well[0] - 'A' + 1;
    const int col = QByteArray(well + 1).toInt();
    return QChar::fromLatin1(char('A' + col - 1)) + QString::number(row);
}

} // namespace

TEST(XlsxWorkbook, CellsBoldAndWidthsReadBack)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("book.xlsx"));
    XlsxWorkbook book;
    book.setText(1, 1, QStringLiteral("Technician"));
    book.setBold(1, 1);
    book.setBold(1, 2); // bold with no value yet
    book.setNumber(2, 7, 0.4235);
    book.setNumber(2, 8, 0.125, QStringLiteral("0.000"));
    book.setText(3, 1, QStringLiteral("Ana \u00C9lan"));
    book.setText(4, 1, QString()); // stays empty
    book.setColumnWidth(1, 24);
    book.setColumnWidth(7, 9);
    ASSERT_TRUE(book.save(path));

    const XlsxReadBack back(path);
    ASSERT_TRUE(back.isValid()) << back.error().toStdString();
    const auto &cells = back.cells();
    EXPECT_EQ(cells.value(QStringLiteral("A1")).text, QStringLiteral("Technician"));
    EXPECT_TRUE(cells.value(QStringLiteral("A1")).bold);
    EXPECT_TRUE(cells.value(QStringLiteral("B1")).bold);
    EXPECT_TRUE(cells.value(QStringLiteral("G2")).isNumber);
    EXPECT_EQ(cells.value(QStringLiteral("G2")).text.toDouble(), 0.4235);
    EXPECT_EQ(cells.value(QStringLiteral("H2")).numberFormat, QStringLiteral("0.000"));
    EXPECT_FALSE(cells.value(QStringLiteral("H2")).bold);
    EXPECT_EQ(cells.value(QStringLiteral("A3")).text, QStringLiteral("Ana \u00C9lan"));
    EXPECT_FALSE(cells.contains(QStringLiteral("A4")));
    EXPECT_DOUBLE_EQ(back.columnWidths().value(1), 24.7109375); // Excel stores the width with its padding
    EXPECT_TRUE(back.columnWidths().contains(7));
}

TEST(OdExport, TheOdSheetLandsInTheSameCellsAndOpens)
{
    QTemporaryDir dir;
    FakePrompt prompt;
    FakeBrowser browser;
    OdExport exporter(prompt, browser, dir.path());
    const QStringList texts = odSheet({{"A1", "1.000"}, {"B1", "-0.005"}, {"H1", "0.100"}, {"A2", "2.5"},
                                       {"C3", "OVER"}, {"H12", "0.042"}, {"D4", "7"}});
    const QString path = exporter.exportODs(texts);

    EXPECT_EQ(browser.opened, QStringList{path});
    EXPECT_EQ(prompt.count(), 0);

    const XlsxReadBack back(path);
    ASSERT_TRUE(back.isValid()) << back.error().toStdString();
    const auto &cells = back.cells();
    EXPECT_EQ(cells.size(), 7);
    // Numbers go in as numbers, shown with the decimals of the grid's text.
    const struct {
        const char *well;
        double value;
        const char *format;
    } numbers[] = {{"A1", 1.0, "0.000"}, {"B1", -0.005, "0.000"}, {"H1", 0.1, "0.000"},
                   {"A2", 2.5, "0.0"},   {"H12", 0.042, "0.000"}, {"D4", 7.0, ""}};
    for (const auto &n : numbers) {
        const XlsxCell cell = cells.value(sheetCell(n.well));
        EXPECT_TRUE(cell.isNumber) << n.well;
        EXPECT_DOUBLE_EQ(cell.text.toDouble(), n.value) << n.well;
        EXPECT_EQ(cell.numberFormat, QString::fromLatin1(n.format)) << n.well;
    }
    EXPECT_EQ(cells.value(QStringLiteral("C3")).text, QStringLiteral("OVER"));
    EXPECT_FALSE(cells.value(QStringLiteral("C3")).isNumber);
}

TEST(OdExport, EachExportTakesANewFileAndAnEmptyPlateGivesAnEmptySheet)
{
    QTemporaryDir dir;
    FakePrompt prompt;
    FakeBrowser browser;
    OdExport exporter(prompt, browser, dir.path());
    const QString first = exporter.exportODs(odSheet({{"A1", "0.100"}}));
    const QString second = exporter.exportODs(odSheet({}));
    EXPECT_NE(first, second);
    EXPECT_EQ(XlsxReadBack(first).cells().value(QStringLiteral("A1")).text.toDouble(), 0.1);
    const XlsxReadBack empty(second);
    ASSERT_TRUE(empty.isValid());
    EXPECT_TRUE(empty.cells().isEmpty());
}

TEST(OdExport, WithNoSpreadsheetProgramTheUserIsTold)
{
    QTemporaryDir dir;
    FakePrompt prompt;
    FakeBrowser browser;
    browser.canOpen = false;
    const QString path = OdExport(prompt, browser, dir.path()).exportODs(odSheet({{"A1", "0.100"}}));
    EXPECT_TRUE(path.isEmpty());
    ASSERT_EQ(prompt.count(), 1);
    EXPECT_EQ(prompt.last().title, QStringLiteral("Microsoft Excel not found."));
    EXPECT_EQ(prompt.last().text, QStringLiteral("Unable to export data.  Make sure you have a spreadsheet program "
                                                 "installed that opens Excel workbooks (.xlsx files)."));
    EXPECT_EQ(prompt.last().icon, MsgIcon::None);
    ASSERT_EQ(browser.opened.size(), 1);
    EXPECT_FALSE(QFileInfo::exists(browser.opened.first()));
}
