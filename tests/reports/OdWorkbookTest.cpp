// The OD workbook: the plate's block of values where it always was, labelled for a reader,
// kept in the documents folder under a name of what it holds.
#include "FakeBrowser.h"
#include "FakePrompt.h"
#include "PlateRecordBuilder.h"
#include "QtPrinters.h"
#include "XlsxReadBack.h"

#include "platform/Workbook.h"
#include "reports/OdExport.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>

namespace {

const QDateTime kWhen(QDate(2026, 11, 23), QTime(14, 5, 9));

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

OdSheetHeading readHeading()
{
    return {QStringLiteral("Plate #1"),  QStringLiteral("Spring Run"), QStringLiteral("Generic"),
            QStringLiteral("Demo"),      QStringLiteral("630 nm"),     QStringLiteral("11/23/2026"),
            QStringLiteral("9:30:00 AM")};
}

struct OdWorkbookFixture : ::testing::Test {
    QTemporaryDir dir;
    FakePrompt prompt;
    FakeBrowser browser;
    OdExport exporter{prompt, browser, dir.filePath(QStringLiteral("Documents/Tavimetra"))};
};

} // namespace

TEST_F(OdWorkbookFixture, TheBlockStaysAtA1WithRowsColumnsAndThePlateLabelledAroundIt)
{
    const QString path = exporter.exportODs(
        readHeading(),
        odSheet({{"A1", "1.000"}, {"B1", "-0.005"}, {"A2", "2.5"}, {"C3", "OVER"}, {"H12", "0.042"}, {"D4", "7"}}),
        kWhen);
    ASSERT_FALSE(path.isEmpty());
    EXPECT_EQ(browser.opened, QStringList{path});
    EXPECT_EQ(prompt.count(), 0);
    const XlsxReadBack back(path);
    ASSERT_TRUE(back.isValid()) << back.error().toStdString();
    const auto &cells = back.cells();

    // The values: numbers as numbers with the decimals of the grid, other texts as they stand.
    const struct {
        const char *ref;
        double value;
        const char *format;
    } numbers[] = {
        {"A1", 1.0, "0.000"}, {"A2", -0.005, "0.000"}, {"B1", 2.5, "0.0"}, {"L8", 0.042, "0.000"}, {"D4", 7.0, ""}};
    for (const auto &n : numbers) {
        const XlsxCell cell = cells.value(QString::fromLatin1(n.ref));
        EXPECT_TRUE(cell.isNumber) << n.ref;
        EXPECT_DOUBLE_EQ(cell.text.toDouble(), n.value) << n.ref;
        EXPECT_EQ(cell.numberFormat, QString::fromLatin1(n.format)) << n.ref;
    }
    EXPECT_EQ(cells.value(QStringLiteral("C3")).text, QStringLiteral("OVER"));
    int inBlock = 0;
    for (auto it = cells.cbegin(); it != cells.cend(); ++it) {
        const QString ref = it.key();
        const int row = ref.mid(1).toInt();
        if (ref.size() >= 2 && ref[0] >= u'A' && ref[0] <= u'L' && ref[1].isDigit() && row >= 1 && row <= 8)
            ++inBlock;
    }
    EXPECT_EQ(inBlock, 6);

    // Row letters beside the rows, column numbers under the columns: texts (a sum over a
    // column would count a number), in bold.
    for (const auto &[ref, text] : {std::pair{"M1", "A"}, {"M8", "H"}, {"A9", "1"}, {"L9", "12"}}) {
        const XlsxCell label = cells.value(QString::fromLatin1(ref));
        EXPECT_EQ(label.text, QString::fromLatin1(text)) << ref;
        EXPECT_FALSE(label.isNumber) << ref;
        EXPECT_TRUE(label.bold) << ref;
    }

    // The plate's heading at the top right, and printed above the sheet.
    const char *heading[][2] = {{"Plate", "Plate #1"},      {"Run", "Spring Run"}, {"Test", "Generic"},
                                {"Reader", "Demo"},         {"Filter", "630 nm"},  {"Date Read", "11/23/2026"},
                                {"Time Read", "9:30:00 AM"}};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(cells.value(QStringLiteral("O%1").arg(i + 1)).text, QString::fromLatin1(heading[i][0]));
        EXPECT_TRUE(cells.value(QStringLiteral("O%1").arg(i + 1)).bold);
        EXPECT_EQ(cells.value(QStringLiteral("P%1").arg(i + 1)).text, QString::fromLatin1(heading[i][1]));
    }
    EXPECT_TRUE(back.part(QStringLiteral("xl/worksheets/sheet1.xml"))
                    .contains("<oddHeader>&amp;CPlate #1 - Spring Run - Generic - Demo - 630 nm - 11/23/2026 9:30:00 "
                              "AM</oddHeader>"));
}

TEST_F(OdWorkbookFixture, EachExportIsKeptUnderANameOfItsPlateAndTime)
{
    const QString first = exporter.exportODs(readHeading(), odSheet({{"A1", "0.100"}}), kWhen);
    const QString second = exporter.exportODs(readHeading(), odSheet({{"A1", "0.200"}}), kWhen);
    EXPECT_EQ(QFileInfo(first).fileName(),
              QStringLiteral("OD values - Generic - Spring Run - Plate #1 - 2026-11-23 14-05-09.xlsx"));
    EXPECT_EQ(QFileInfo(second).fileName(),
              QStringLiteral("OD values - Generic - Spring Run - Plate #1 - 2026-11-23 14-05-09 (2).xlsx"));
    EXPECT_EQ(QFileInfo(first).absolutePath(),
              QFileInfo(dir.filePath(QStringLiteral("Documents/Tavimetra"))).absoluteFilePath());
    EXPECT_EQ(XlsxReadBack(first).cells().value(QStringLiteral("A1")).text.toDouble(), 0.1);
}

TEST_F(OdWorkbookFixture, WithNoSpreadsheetProgramTheUserIsToldAsForTheControlReport)
{
    browser.canOpen = false;
    EXPECT_TRUE(exporter.exportODs(readHeading(), odSheet({{"A1", "0.100"}}), kWhen).isEmpty());
    ASSERT_EQ(prompt.count(), 1);
    EXPECT_EQ(prompt.last().title, QStringLiteral("Microsoft Excel not found."));
    EXPECT_EQ(
        prompt.last().text,
        QStringLiteral("Unable to export data.  Make sure you have Microsoft Excel version 5.0 or higher installed."));
    EXPECT_EQ(prompt.last().icon, MsgIcon::None);
    ASSERT_EQ(browser.opened.size(), 1);
    EXPECT_FALSE(QFileInfo::exists(browser.opened.first()));
}

TEST(OdSheetHeading, TakesThePlateOnScreenOrTheChosenTestForAPlateNeverRead)
{
    TestPlate read;
    read.testName = QStringLiteral("Orvexa 412");
    read.dateRead = QDate(2026, 11, 23);
    read.timeRead = QTime(14, 30, 5);
    TestPlate unread;
    unread.plateID = 2;
    unread.plateName = QStringLiteral("Plate #2");
    RecordSet plates = plateRecordSet({read, unread}); // read on Demo at 630 nm

    const OdSheetHeading h = OdExport::headingOf(plates, QStringLiteral("Spring Run"), QStringLiteral("Generic"));
    EXPECT_EQ(h.plateName, QStringLiteral("Plate #1"));
    EXPECT_EQ(h.runName, QStringLiteral("Spring Run"));
    EXPECT_EQ(h.testName, QStringLiteral("Orvexa 412"));
    EXPECT_EQ(h.readerName, QStringLiteral("Demo"));
    EXPECT_EQ(h.filter, QStringLiteral("630 nm"));
    EXPECT_EQ(h.dateRead, QStringLiteral("11/23/2026"));
    EXPECT_EQ(h.timeRead, QStringLiteral("2:30:05 PM"));

    plates.moveNext();
    plates.setValue(u"ReaderUsed", QString());
    plates.setValue(u"FilterUsed", QVariant());
    const OdSheetHeading never = OdExport::headingOf(plates, QStringLiteral("Spring Run"), QStringLiteral("Generic"));
    EXPECT_EQ(never.plateName, QStringLiteral("Plate #2"));
    EXPECT_EQ(never.testName, QStringLiteral("Generic"));
    EXPECT_TRUE(never.readerName.isEmpty());
    EXPECT_TRUE(never.filter.isEmpty());
    EXPECT_TRUE(never.dateRead.isEmpty());
}
