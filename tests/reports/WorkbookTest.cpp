#include "QtPrinters.h"
#include "XlsxReadBack.h"

#include "platform/OoxmlWorkbook.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

TEST(OoxmlWorkbook, CellsBoldAndWidthsReadBack)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("book.xlsx"));
    OoxmlWorkbook book;
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
