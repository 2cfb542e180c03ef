// Our workbook writer against libxlsxwriter's: the same workbook through both, every part
// of the two files the same bytes (the time of writing aside).
#include "platform/OoxmlWorkbook.h"
#include "platform/XlsxWorkbook.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTemporaryDir>

#include <zip.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

using Parts = QList<QPair<QString, QByteArray>>;

Parts readParts(const QString &path)
{
    Parts parts;
    int code = 0;
    zip_t *zip = zip_open(path.toUtf8().constData(), ZIP_RDONLY, &code);
    if (!zip)
        return parts;
    for (zip_int64_t i = 0; i < zip_get_num_entries(zip, 0); ++i) {
        zip_stat_t st;
        zip_stat_index(zip, i, 0, &st);
        QByteArray data(qsizetype(st.size), '\0');
        zip_file_t *file = zip_fopen_index(zip, i, 0);
        zip_fread(file, data.data(), st.size);
        zip_fclose(file);
        static const QRegularExpression time(QStringLiteral("W3CDTF\">[^<]*<"));
        parts.append(
            {QString::fromUtf8(st.name), QString::fromUtf8(data).replace(time, QStringLiteral("T<")).toUtf8()});
    }
    zip_discard(zip);
    return parts;
}

WorkbookLineChart chart(const QString &title, QList<WorkbookSeries> series)
{
    WorkbookLineChart c;
    c.title = title;
    c.series = std::move(series);
    return c;
}

void trackingLike(Workbook &b)
{
    const QStringList heads{QStringLiteral("Technician"), QStringLiteral("Plate Name"), QStringLiteral("Date Read"),
                            QStringLiteral("Mean NC"),    QStringLiteral("-Stdev"),     QStringLiteral("Mean %I")};
    for (int c = 0; c < heads.size(); ++c) {
        b.setText(1, c + 1, heads[c]);
        b.setBold(1, c + 1);
        b.setColumnWidth(c + 1, 9.5 + c * 1.7);
    }
    for (int r = 2; r <= 40; ++r) {
        b.setText(r, 1, r % 3 ? QStringLiteral("Ana Ruiz") : QStringLiteral("Ben Okafor"));
        b.setText(r, 2, QStringLiteral("Plate #%1").arg(r % 7));
        b.setNumber(r, 3, 43000 + r);
        b.setNumber(r, 4, 0.05 + r * 0.0137);
        b.setNumber(r, 5, 0.3 - r * 0.01);
        b.setNumber(r, 6, r * 0.0371 - 0.4, r % 2 ? QStringLiteral("0.00%") : QStringLiteral("0%"));
    }
    b.setNumber(40, 2, 7); // a number among the labels
    b.setBold(12, 2);
    b.setText(12, 2, QString()); // a bold blank among the labels
    WorkbookSeries mean{QStringLiteral("Mean NC"), {2, 4, 40, 4}, WorkbookRange{2, 2, 40, 2}};
    mean.marker = WorkbookMarker::Circle;
    WorkbookSeries band{QStringLiteral("-Stdev"), {2, 5, 40, 5}, std::nullopt};
    band.dashed = true;
    WorkbookLineChart first = chart(QStringLiteral("Control ODs for Test <A&B>"), {mean, band});
    first.titleFontSize = 8;
    first.valueAxisTitle = QStringLiteral("OD");
    first.valueAxisMinimum = -0.25;
    first.valueAxisMaximum = 1.5;
    first.valueAxisMajorUnit = 0.28;
    first.categoryAxisFontSize = 7.5;
    first.left = 700;
    first.top = 37;
    b.addLineChart(first);
    WorkbookSeries levels{QStringLiteral("Mean %I"), {2, 6, 40, 6}, WorkbookRange{2, 2, 40, 3}};
    levels.marker = WorkbookMarker::Diamond;
    WorkbookLineChart second = chart(QString(), {levels});
    second.valueAxisNumberFormat = QStringLiteral("0%");
    second.width = 123.4;
    second.height = 77.7;
    b.addLineChart(second);
    WorkbookSeries areas{QString(), {2, 4, 9, 4}, std::nullopt};
    areas.categoryAreas = {{2, 2, 9, 2}, {2, 3, 9, 3}};
    b.addLineChart(chart(QStringLiteral("Union"), {areas}));
    WorkbookSeries dates{QStringLiteral("By date"), {2, 5, 45, 5}, WorkbookRange{2, 3, 45, 3}};
    WorkbookLineChart third = chart(QStringLiteral("Dates"), {dates});
    third.valueAxisNumberFormat = QStringLiteral("General");
    third.left = -20;
    b.addLineChart(third);
    b.addLineChart(chart(QStringLiteral("No lines"), {}));
    b.addLineChart(chart(QStringLiteral("Row"), {{QStringLiteral("r"), {3, 1, 3, 6}, WorkbookRange{1, 1, 1, 6}}}));
}

void odExportLike(Workbook &b)
{
    for (int col = 1; col <= 12; ++col)
        for (int row = 1; row <= 8; ++row) {
            if ((row * col) % 11 == 0)
                b.setText(row, col, QStringLiteral("OVER"));
            else
                b.setNumber(row, col, 0.001 * (row * 97 + col * 13), QStringLiteral("0.000"));
        }
    for (int row = 1; row <= 8; ++row) {
        b.setText(row, 14, QString(QChar(u'A' + row - 1)));
        b.setBold(row, 14);
    }
    for (int col = 1; col <= 12; ++col) {
        b.setText(10, col, QString::number(col));
        b.setBold(10, col);
    }
    b.setPageHeader(QStringLiteral("Orvexa 412 - Run 7 & 8 - <Plate #1> - 03/09/2024"));
}

void texts(Workbook &b)
{
    const QStringList t{QStringLiteral("a<b>&c\"d'e"),
                        QStringLiteral("ctl\x01\x08\x0B\x1F|\t|\n|\r"),
                        QStringLiteral(" lead"),
                        QStringLiteral("trail\t"),
                        QStringLiteral("\u00C9lan \u65E5\u672C \U0001F9EA"),
                        QStringLiteral("_x0041_"),
                        QStringLiteral("a<b>&c\"d'e"),
                        QString(QStringLiteral("cut") + QChar(0) + "off"),
                        QString(QChar(0)) + "gone",
                        QString(32768, u'x'),
                        QString(32767, u'\u00E9')};
    for (int i = 0; i < t.size(); ++i)
        b.setText(i + 3, i % 3 + 2, t[i]);
    b.setNumber(20, 1, 1.25, QStringLiteral("0.0\" mg&<>\"") + QString(200, u'#'));
    b.setNumber(21, 1, 2.5, QStringLiteral("0.0\" mg&<>\"") + QString(210, u'#')); // the same once cut
    b.setBold(21, 1);
    b.setPageHeader(QString(300, u'h'));
    b.addLineChart(chart(QStringLiteral("\u00C9 & <t>"),
                         {{QStringLiteral("s \"q\" & <x>"), {3, 2, 14, 2}, WorkbookRange{3, 3, 14, 3}}}));
}

void numbers(Workbook &b)
{
    const double values[] = {0.1,
                             1e-7,
                             1e20,
                             -0.0,
                             123456789012345678.0,
                             -98765.4321,
                             1.0 / 3,
                             1e15,
                             1e16,
                             1e17,
                             2.5e-300,
                             5e-324,
                             1.7976931348623157e308,
                             100,
                             -1,
                             0.000123456789012345678,
                             std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
    int row = 1;
    for (const double v : values)
        b.setNumber(row++, 3, v);
    for (int r = 1; r <= 6; ++r) // a value repeated down a column, and zeros of both signs
        b.setNumber(r, 6, r < 3 ? 0.0 : r < 5 ? -0.0 : 0.7);
    b.setColumnWidth(1, 8.43);
    b.setColumnWidth(2, 0.5);
    b.setColumnWidth(4, 0);
    b.setColumnWidth(5, 255);
    b.setNumber(1048576, 16384, 42);
    WorkbookLineChart c =
        chart(QString(), {{QString(), {1, 3, 25, 3}, std::nullopt}, {QString(), {1, 6, 6, 6}, std::nullopt}});
    c.left = 30;
    c.top = 1000;
    c.width = 10;
    b.addLineChart(c);
}

void styles(Workbook &b)
{
    b.setNumber(5, 5, 1, QStringLiteral("0.0"));
    b.setBold(5, 5);
    b.setNumber(5, 2, 2, QStringLiteral("0.00"));
    b.setBold(3, 3); // bold blank
    b.setNumber(4, 4, 3, QStringLiteral("0.0"));
    b.setText(4, 4, QString()); // blank keeping its format
    b.setBold(6, 1);
    b.setBold(6, 1, false); // nothing left
    b.setText(7, 7, QStringLiteral("x"));
    b.setNumber(7, 7, 8); // a number over a text
    b.setNumber(40, 2, 9, QStringLiteral("0.00"));
    b.setText(40, 3, QStringLiteral("under &G"));
}

void headerOnly(Workbook &b)
{
    b.setPageHeader(QStringLiteral("Tavimetra & Co"));
}

void empty(Workbook &)
{
}

struct Model {
    const char *name;
    std::function<void(Workbook &)> build;
};

void PrintTo(const Model &model, std::ostream *os)
{
    *os << model.name;
}

class TheOoxmlWriter : public testing::TestWithParam<Model> {};

TEST_P(TheOoxmlWriter, WritesEveryPartAsLibxlsxwriter)
{
    QTemporaryDir dir;
    XlsxWorkbook oracle;
    OoxmlWorkbook ours;
    GetParam().build(oracle);
    GetParam().build(ours);
    const QString oraclePath = dir.filePath(QStringLiteral("oracle.xlsx"));
    const QString ourPath = dir.filePath(QStringLiteral("ours.xlsx"));
    ASSERT_TRUE(oracle.save(oraclePath));
    ASSERT_TRUE(ours.save(ourPath));

    const Parts expected = readParts(oraclePath);
    const Parts actual = readParts(ourPath);
    ASSERT_FALSE(expected.isEmpty());
    ASSERT_EQ(actual.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(actual[i].first, expected[i].first);
        EXPECT_EQ(actual[i].second.toStdString(), expected[i].second.toStdString()) << expected[i].first.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Models, TheOoxmlWriter,
                         testing::Values(Model{"TrackingLike", trackingLike}, Model{"OdExportLike", odExportLike},
                                         Model{"Texts", texts}, Model{"Numbers", numbers}, Model{"Styles", styles},
                                         Model{"HeaderOnly", headerOnly}, Model{"Empty", empty}),
                         [](const testing::TestParamInfo<Model> &info) { return std::string(info.param.name); });

} // namespace
