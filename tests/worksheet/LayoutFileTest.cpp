#include "QtPrinters.h"

#include "platform/XlsxSheetReader.h"
#include "worksheet/LayoutReader.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <xlsxwriter.h>

namespace {

constexpr int B3 = wells::index(2, 3);

PlateLayout read(const QString &text)
{
    const LayoutReading r = LayoutReader::readText(text.toUtf8());
    EXPECT_TRUE(r.layout) << r.error.toStdString();
    return r.layout.value_or(PlateLayout());
}

// Rows of 12 cells joined by the delimiter, each cell made by cellText(row, col).
QString grid(const std::function<QString(int, int)> &cellText, bool labels, QChar delimiter = u',')
{
    QString text;
    if (labels) {
        for (int c = 1; c <= 12; ++c)
            text += delimiter + QString::number(c);
        text += u'\n';
    }
    for (int r = 1; r <= 8; ++r) {
        QStringList cells;
        if (labels)
            cells << QString(wells::rowLetter(r));
        for (int c = 1; c <= 12; ++c)
            cells << cellText(r, c);
        text += cells.join(delimiter) + u'\n';
    }
    return text;
}

QString sampleAt(int r, int c)
{
    return QStringLiteral("S%1%2").arg(wells::rowLetter(r)).arg(c);
}

} // namespace

TEST(LayoutLongTable, ReadsEveryNotationDelimiterAndHeaderForm)
{
    const QString forms[] = {
        QStringLiteral("Well,Sample,Group\nA1,pc,\nB3,Cow 7,Farm\n"),
        QStringLiteral("B03;Cow 7;Farm\r\nA01;Pc\r\n"),
        QStringLiteral("Group;Position;Sample ID\r\n;a:1;PC\r\nFarm;B:3;Cow 7\r\n"),
        QStringLiteral("\"Well\",\"Sample\",\"Group\"\n\"A1\",\"PC\",\"\"\n\"b3\",\"Cow 7\",\"Farm\"\n"),
        QChar(0xFEFF) + QStringLiteral("well\tsample\tgroup\nA1\tpc\nB3\tCow 7\tFarm\n"),
    };
    for (const QString &text : forms) {
        SCOPED_TRACE(text.toStdString());
        const PlateLayout l = read(text);
        EXPECT_EQ(l.count(), 2);
        EXPECT_EQ(l.samples[B3], QStringLiteral("Cow 7"));
        EXPECT_EQ(l.groups[B3], QStringLiteral("Farm"));
        // A control name in any case is the control, in both sheets.
        EXPECT_EQ(l.samples[0], QStringLiteral("PC"));
        EXPECT_EQ(l.groups[0], QStringLiteral("PC"));
        EXPECT_FALSE(l.given[1]); // wells not listed keep what the plate has
    }
}

TEST(LayoutLongTable, QuotedFieldsKeepDelimitersAndQuotes)
{
    const PlateLayout l = read(QStringLiteral("Well,Sample,Group\nB3,\"Cow \"\"Bella\"\", 7\",\"Smith; Jones\"\n"));
    EXPECT_EQ(l.samples[B3], QStringLiteral("Cow \"Bella\", 7"));
    EXPECT_EQ(l.groups[B3], QStringLiteral("Smith; Jones"));
}

TEST(LayoutGrid, ReadsSamplesWithOrWithoutLabelsAndAnOptionalGroupGrid)
{
    auto groupAt = [](int r, int c) { return c == 12 && r == 8 ? QStringLiteral("nc") : QStringLiteral("G%1").arg(c); };
    QString columnLabels;
    for (int c = 1; c <= 12; ++c)
        columnLabels += QString::number(c) + (c < 12 ? u',' : u'\n');
    const struct {
        QString text;
        bool groups;
    } forms[] = {
        {grid(sampleAt, false), false},
        {grid(sampleAt, true, u';'), false},
        {grid(sampleAt, true).section(u'\n', 1), false}, // row labels only
        {columnLabels + grid(sampleAt, false), false},   // column labels only
        {grid(sampleAt, true) + QStringLiteral("\n") + grid(groupAt, true), true},
        {grid(sampleAt, false) + grid(groupAt, false), true},
        {QStringLiteral("Groups\n") + grid(groupAt, false) + QStringLiteral("\nSamples\n") + grid(sampleAt, true),
         true},
    };
    for (const auto &form : forms) {
        SCOPED_TRACE(form.text.left(40).toStdString());
        const PlateLayout l = read(form.text);
        EXPECT_EQ(l.count(), 96);
        EXPECT_EQ(l.samples[B3], QStringLiteral("SB3"));
        EXPECT_EQ(l.samples[95], QStringLiteral("SH12"));
        EXPECT_EQ(l.groups[B3], form.groups ? QStringLiteral("G3") : QString());
        // A control name in the group of a sample well is not kept.
        EXPECT_EQ(l.groups[95], QString());
    }
}

TEST(LayoutGrid, AGridSavedWithoutItsEmptyLastRowsIsRead)
{
    const PlateLayout l = read(QStringLiteral("S1,S2\nBLANK\n"));
    EXPECT_EQ(l.count(), 96);
    EXPECT_EQ(l.samples[wells::index(1, 2)], QStringLiteral("S2"));
    EXPECT_EQ(l.groups[wells::index(2, 1)], QStringLiteral("BLANK"));
}

TEST(LayoutRefusals, NameTheLineOrCell)
{
    const QString longName(101, u'x');
    const struct {
        QString text;
        const char *message;
    } cases[] = {
        {QString(), "The file is empty."},
        {QStringLiteral(" \n;;\n"), "The file is empty."},
        {QStringLiteral("Well,Sample\nA1,x\nB2,y\na01,z\n"),
         "Line 4, field 1: well A1 is given twice (first at line 2, field 1)."},
        {QStringLiteral("A1,x\nI5,y\n"), "Line 2, field 1: well I5 is outside the plate (A1 to H12)."},
        {QStringLiteral("A1,x\nA13,y\n"), "Line 2, field 1: well A13 is outside the plate (A1 to H12)."},
        {QStringLiteral("A1,x\nfoo,y\n"), "Line 2, field 1: \"foo\" is not a well (A1 to H12)."},
        {QStringLiteral("Well,Sample\nA1,x\n,y\n"), "Line 3, field 1: the well is missing."},
        {QStringLiteral("Well,Group\nA1,x\n"), "Line 1: a well column but no sample column (\"Sample\")."},
        {QStringLiteral("Well,Sample\n"), "Line 1: a header with no wells after it."},
        {QStringLiteral("A1,Cow\u00ac1\n"), "Line 1, field 2: the character \"\u00ac\" can't be used on a plate."},
        {QStringLiteral("A1,x,") + longName, "Line 1, field 3: the text is longer than 100 characters."},
        {QStringLiteral("Well,Sample\n\"A1\",\"two\nlines\"\nB1,") + longName,
         "Line 4, field 2: the text is longer than 100 characters."},
        {grid(sampleAt, true).replace(QStringLiteral("\nC,"), QStringLiteral("\nX,")),
         "Line 4, field 1: the row label \"X\" stands where \"C\" was expected."},
        {grid(sampleAt, true).replace(QStringLiteral("SD12"), QStringLiteral("SD12,extra")),
         "Line 5, field 14: a well beyond column 12."},
        {grid(sampleAt, false) + grid(sampleAt, false) + QStringLiteral("x\n"),
         "Line 17: the file goes on after a grid of samples and a grid of groups."},
        {QStringLiteral("1,2,3,4,5,6,7,8,9,10,11,12,13,14\n"),
         "The file is neither a table of wells and samples (a well column such as \"A1\" and a sample column) "
         "nor an 8 x 12 grid of samples."},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text.left(60).toStdString());
        const LayoutReading r = LayoutReader::readText(c.text.toUtf8());
        EXPECT_FALSE(r.layout);
        EXPECT_EQ(r.error.toStdString(), c.message);
    }
}

TEST(LayoutFile, ReadsWindowsTextAndRefusesOldWorkbooks)
{
    QTemporaryDir dir;
    const QString csv = dir.filePath(QStringLiteral("list.csv"));
    QFile f(csv);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("Well;Sample\r\nB3;K\xFChe 7\r\n"); // Windows-1252, as older spreadsheets save
    f.close();
    const LayoutReading r = LayoutReader::readFile(csv);
    ASSERT_TRUE(r.layout) << r.error.toStdString();
    EXPECT_EQ(r.layout->samples[B3], QStringLiteral("K\u00FChe 7"));

    const QString xls = dir.filePath(QStringLiteral("old.xls"));
    QFile old(xls);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 rest");
    old.close();
    EXPECT_EQ(LayoutReader::readFile(xls).error,
              QStringLiteral("Workbooks of Excel 97-2003 (.xls) can't be read: save the sheet as .xlsx or CSV."));
    EXPECT_EQ(LayoutReader::readFile(dir.filePath(QStringLiteral("gone.csv"))).error.left(24),
              QStringLiteral("The file can't be read: "));
}

// Workbooks from libxlsxwriter: shared strings by default, inline strings in its constant
// memory mode; numbers as sample names.
TEST(LayoutWorkbook, ReadsSharedAndInlineStringsAndNumbers)
{
    QTemporaryDir dir;
    for (const bool inlineStrings : {false, true}) {
        for (const bool duplicate : {false, true}) {
            SCOPED_TRACE(inlineStrings * 2 + duplicate);
            const QString path = dir.filePath(QStringLiteral("book%1%2.xlsx").arg(inlineStrings).arg(duplicate));
            lxw_workbook_options options = {};
            options.constant_memory = inlineStrings ? LXW_TRUE : LXW_FALSE;
            lxw_workbook *book = workbook_new_opt(path.toUtf8().constData(), &options);
            lxw_worksheet *sheet = workbook_add_worksheet(book, "Layout");
            const char *head[] = {"Well", "Sample", "Group"};
            for (int c = 0; c < 3; ++c)
                worksheet_write_string(sheet, 0, c, head[c], nullptr);
            worksheet_write_string(sheet, 1, 0, "A:1", nullptr);
            worksheet_write_string(sheet, 1, 1, "blank", nullptr);
            worksheet_write_string(sheet, 2, 0, "B3", nullptr);
            worksheet_write_number(sheet, 2, 1, 40123, nullptr);
            worksheet_write_string(sheet, 2, 2, "Farm \xC3\x98st", nullptr);
            worksheet_write_string(sheet, 4, 0, "C1", nullptr);
            worksheet_write_number(sheet, 4, 1, 2.5, nullptr);
            if (duplicate)
                worksheet_write_string(sheet, 5, 0, "A1", nullptr);
            ASSERT_EQ(workbook_close(book), LXW_NO_ERROR);

            const LayoutReading r = LayoutReader::readFile(path);
            if (duplicate) {
                EXPECT_EQ(r.error, QStringLiteral("Cell A6: well A1 is given twice (first at cell A2)."));
                continue;
            }
            ASSERT_TRUE(r.layout) << r.error.toStdString();
            EXPECT_EQ(r.layout->count(), 3);
            EXPECT_EQ(r.layout->samples[0], QStringLiteral("BLANK"));
            EXPECT_EQ(r.layout->samples[B3], QStringLiteral("40123"));
            EXPECT_EQ(r.layout->groups[B3], QStringLiteral("Farm \u00D8st"));
            EXPECT_EQ(r.layout->samples[wells::index(3, 1)], QStringLiteral("2.5"));
        }
    }
}

// Parts as other writers make them: prefixed elements, rich text runs with phonetic hints,
// cells without references, formula strings and booleans.
TEST(LayoutWorkbook, ReadsOtherWritersSheetXml)
{
    const QStringList strings = XlsxSheetReader::readSharedStrings(
        "<x:sst xmlns:x=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><x:si><x:t>Well</x:t></x:si>"
        "<x:si><x:r><x:t>Cow "
        "</x:t></x:r><x:r><x:rPr><x:b/></x:rPr><x:t>7</x:t></x:r><x:rPh><x:t>ko</x:t></x:rPh></x:si></x:sst>");
    ASSERT_EQ(strings, (QStringList{QStringLiteral("Well"), QStringLiteral("Cow 7")}));
    QString error;
    const auto rows = XlsxSheetReader::readSheetXml(
        "<x:worksheet xmlns:x=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><x:sheetData>"
        "<x:row r=\"2\"><x:c t=\"s\"><x:v>0</x:v></x:c><x:c t=\"s\"><x:v>1</x:v></x:c></x:row>"
        "<x:row><x:c r=\"C3\" t=\"str\"><x:f>A1</x:f><x:v>Farm</x:v></x:c><x:c t=\"b\"><x:v>1</x:v></x:c></x:row>"
        "</x:sheetData></x:worksheet>",
        strings, &error);
    ASSERT_TRUE(rows) << error.toStdString();
    ASSERT_EQ(rows->size(), 3);
    EXPECT_EQ(rows->at(1), (QStringList{QStringLiteral("Well"), QStringLiteral("Cow 7")}));
    EXPECT_EQ(rows->at(2), (QStringList{QString(), QString(), QStringLiteral("Farm"), QStringLiteral("TRUE")}));

    EXPECT_FALSE(XlsxSheetReader::readSheetXml(
        "<worksheet><sheetData><row><c t=\"s\"><v>9</v></c></row></sheetData></worksheet>", strings, &error));
    EXPECT_EQ(error, QStringLiteral("Cell A1 refers to a text the workbook doesn't have."));
}

// A sheet saved by LibreOffice Calc from the CSV beside it (labelled sample grid, then a
// group grid): both give the same plate.
TEST(LayoutWorkbook, ASheetSavedByLibreOfficeGivesTheLayoutOfItsCsv)
{
    const LayoutReading fromCsv = LayoutReader::readFile(QStringLiteral(TESTS_DATA_DIR "/layouts/grid.csv"));
    const LayoutReading fromBook =
        LayoutReader::readFile(QStringLiteral(TESTS_DATA_DIR "/layouts/grid-libreoffice.xlsx"));
    ASSERT_TRUE(fromCsv.layout) << fromCsv.error.toStdString();
    ASSERT_TRUE(fromBook.layout) << fromBook.error.toStdString();
    EXPECT_EQ(fromBook.layout->samples, fromCsv.layout->samples);
    EXPECT_EQ(fromBook.layout->groups, fromCsv.layout->groups);
    EXPECT_EQ(fromBook.layout->samples[0], QStringLiteral("NC"));
    EXPECT_EQ(fromBook.layout->samples[wells::index(1, 2)], QStringLiteral("1002"));
    EXPECT_EQ(fromBook.layout->groups[wells::index(8, 12)], QStringLiteral("\u0425\u0443\u0442\u043E\u0440"));
}
