#include "QtPrinters.h"
#include "XlsxReadBack.h"

#include "platform/XlsxWorkbook.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

TEST(XlsxWorkbook, CellsBoldAndWidthsReadBack)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("book.xlsx"));
    XlsxWorkbook book;
    EXPECT_EQ(book.sheetName(), QStringLiteral("Sheet1"));
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

TEST(XlsxWorkbook, LineChartWithSeveralSeriesCategoriesAndAxisReadsBack)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("chart.xlsx"));
    XlsxWorkbook book;
    for (int r = 2; r <= 5; ++r) {
        book.setText(r, 2, QStringLiteral("Plate %1").arg(r));
        book.setText(r, 3, QStringLiteral("Run"));
        book.setNumber(r, 7, 0.1 * r);
        book.setNumber(r, 9, 0.05 * r);
    }
    WorkbookLineChart chart;
    chart.title = QStringLiteral("NC Control Chart");
    chart.titleFontSize = 8;
    chart.valueAxisTitle = QStringLiteral("OD");
    chart.valueAxisMajorUnit = 0.2;
    chart.series.append({QStringLiteral("Mean NC"), {2, 7, 5, 7}, WorkbookRange{2, 2, 5, 3}});
    chart.series.append({QStringLiteral("-Stdev"), {2, 9, 5, 9}, std::nullopt});
    book.addLineChart(chart);
    ASSERT_TRUE(book.save(path));

    const XlsxReadBack back(path);
    ASSERT_TRUE(back.isValid()) << back.error().toStdString();
    const QString xml = QString::fromUtf8(back.part(QStringLiteral("xl/charts/chart1.xml")));
    ASSERT_FALSE(xml.isEmpty());
    EXPECT_TRUE(xml.contains(QStringLiteral("<c:lineChart>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<c:f>Sheet1!$G$2:$G$5</c:f>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<c:f>Sheet1!$B$2:$C$5</c:f>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<c:f>Sheet1!$I$2:$I$5</c:f>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<c:v>Mean NC</c:v>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<c:v>-Stdev</c:v>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<a:t>NC Control Chart</a:t>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("sz=\"800\"")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<a:t>OD</a:t>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<c:majorUnit val=\"0.2\"/>")));
    EXPECT_EQ(xml.count(QStringLiteral("<c:ser>")), 2);
}

TEST(XlsxWorkbook, AFileThatCannotBeWrittenIsReported)
{
    QTemporaryDir dir;
    XlsxWorkbook book;
    book.setText(1, 1, QStringLiteral("x"));
    QString error;
    EXPECT_FALSE(book.save(dir.filePath(QStringLiteral("missing folder/book.xlsx")), &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_THROW(book.setText(0, 1, QStringLiteral("x")), std::out_of_range);
}
