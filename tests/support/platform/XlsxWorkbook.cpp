#include "platform/XlsxWorkbook.h"

#include "platform/SafeFile.h"

#include <QByteArrayList>
#include <QFile>

#include <xlsxwriter.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace {

constexpr double kPixelsPerPoint = 96.0 / 72.0;
// The size of a chart that libxlsxwriter scales from, in pixels.
constexpr double kDefaultChartWidth = 480.0;
constexpr double kDefaultChartHeight = 288.0;

void checkCell(int row, int column)
{
    if (row < 1 || column < 1 || row > 1048576 || column > 16384)
        throw std::out_of_range("A workbook cell lies outside the sheet");
}

// A zip archive that was written to its end: its last record, the end of the central
// directory, is in the file's last bytes. A full disk cuts the file before it.
bool isWholeZip(const QString &path)
{
    QFile file(path);
    constexpr qint64 kEndRecord = 22;
    if (!file.open(QIODevice::ReadOnly) || file.size() < kEndRecord)
        return false;
    const qint64 tail = std::min<qint64>(file.size(), kEndRecord + 0xFFFF);
    file.seek(file.size() - tail);
    return file.read(tail).lastIndexOf(QByteArrayView("PK\x05\x06")) >= 0;
}

lxw_row_t toRow(int row)
{
    return lxw_row_t(row - 1);
}
lxw_col_t toColumn(int column)
{
    return lxw_col_t(column - 1);
}

// "=(Sheet1!$B$2:$B$9,Sheet1!$C$2:$C$9)": the blocks of a union, in order.
QByteArray unionReference(const QList<WorkbookRange> &areas)
{
    QByteArrayList parts;
    for (const WorkbookRange &r : areas) {
        checkCell(r.firstRow, r.firstColumn);
        checkCell(r.lastRow, r.lastColumn);
        char range[LXW_MAX_CELL_RANGE_LENGTH + 8] = {};
        lxw_rowcol_to_range_abs(range, toRow(r.firstRow), toColumn(r.firstColumn), toRow(r.lastRow),
                                toColumn(r.lastColumn));
        parts << XlsxWorkbook::kSheetName.toUtf8() + '!' + QByteArray(range);
    }
    return "=(" + parts.join(',') + ')';
}

} // namespace

XlsxWorkbook::Cell &XlsxWorkbook::cell(int row, int column)
{
    checkCell(row, column);
    return mCells[{row, column}];
}

void XlsxWorkbook::setText(int row, int column, const QString &text)
{
    Cell &c = cell(row, column);
    if (text.isEmpty())
        c.value = std::monostate();
    else
        c.value = text;
}

void XlsxWorkbook::setNumber(int row, int column, double value, const QString &numberFormat)
{
    Cell &c = cell(row, column);
    c.value = value;
    c.numberFormat = numberFormat;
}

void XlsxWorkbook::setBold(int row, int column, bool bold)
{
    cell(row, column).bold = bold;
}

void XlsxWorkbook::setColumnWidth(int column, double width)
{
    checkCell(1, column);
    mColumnWidths[column] = width;
}

void XlsxWorkbook::addLineChart(const WorkbookLineChart &chart)
{
    mCharts.append(chart);
}

bool XlsxWorkbook::save(const QString &path, QString *error)
{
    // The library writes the file by name: it writes the temporary file of a SafeFile,
    // which replaces the former workbook only once the whole file is checked.
    SafeFile file(path);
    if (!file.open()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    const QByteArray fileName = QFile::encodeName(file.temporaryPath());
    lxw_workbook *book = workbook_new(fileName.constData());
    if (!book) {
        if (error)
            *error = QStringLiteral("The workbook %1 can't be made.").arg(path);
        return false;
    }
    const QByteArray sheetName = kSheetName.toUtf8();
    lxw_worksheet *sheet = workbook_add_worksheet(book, sheetName.constData());

    QMap<QPair<bool, QString>, lxw_format *> formats;
    auto formatFor = [&](const Cell &c) -> lxw_format * {
        if (!c.bold && c.numberFormat.isEmpty())
            return nullptr;
        lxw_format *&format = formats[{c.bold, c.numberFormat}];
        if (!format) {
            format = workbook_add_format(book);
            if (c.bold)
                format_set_bold(format);
            if (!c.numberFormat.isEmpty())
                format_set_num_format(format, c.numberFormat.toUtf8().constData());
        }
        return format;
    };

    // The header is a code of at most 255 characters in which "&" starts a command.
    const QByteArray header =
        (QStringLiteral("&C") + QString(mPageHeader).replace(u'&', QStringLiteral("&&"))).left(255).toUtf8();
    if (!mPageHeader.isEmpty())
        worksheet_set_header(sheet, header.constData());

    for (auto it = mColumnWidths.cbegin(); it != mColumnWidths.cend(); ++it)
        worksheet_set_column(sheet, toColumn(it.key()), toColumn(it.key()), it.value(), nullptr);

    for (auto it = mCells.cbegin(); it != mCells.cend(); ++it) {
        const lxw_row_t row = toRow(it.key().first);
        const lxw_col_t column = toColumn(it.key().second);
        const Cell &c = it.value();
        lxw_format *format = formatFor(c);
        if (const QString *text = std::get_if<QString>(&c.value))
            worksheet_write_string(sheet, row, column, text->toUtf8().constData(), format);
        else if (const double *number = std::get_if<double>(&c.value))
            worksheet_write_number(sheet, row, column, *number, format);
        else if (format)
            worksheet_write_blank(sheet, row, column, format);
    }

    for (const WorkbookLineChart &spec : mCharts) {
        lxw_chart *chart = workbook_add_chart(book, LXW_CHART_LINE);
        for (const WorkbookSeries &s : spec.series) {
            // X values of several blocks go in as one union reference; the library keeps
            // no cached labels for it, so the spreadsheet program reads the cells.
            const QByteArray areas = s.categoryAreas.isEmpty() ? QByteArray() : unionReference(s.categoryAreas);
            lxw_chart_series *series = chart_add_series(chart, areas.isEmpty() ? nullptr : areas.constData(), nullptr);
            const WorkbookRange &v = s.values;
            chart_series_set_values(series, sheetName.constData(), toRow(v.firstRow), toColumn(v.firstColumn),
                                    toRow(v.lastRow), toColumn(v.lastColumn));
            if (s.categories && areas.isEmpty()) {
                const WorkbookRange &c = *s.categories;
                chart_series_set_categories(series, sheetName.constData(), toRow(c.firstRow), toColumn(c.firstColumn),
                                            toRow(c.lastRow), toColumn(c.lastColumn));
            }
            if (!s.name.isEmpty())
                chart_series_set_name(series, s.name.toUtf8().constData());
            if (s.marker != WorkbookMarker::None) {
                chart_series_set_marker_type(series, s.marker == WorkbookMarker::Circle ? LXW_CHART_MARKER_CIRCLE
                                                                                        : LXW_CHART_MARKER_DIAMOND);
                chart_series_set_marker_size(series, 5);
            }
            if (s.dashed) {
                lxw_chart_line line{};
                line.width = 1.5;
                line.dash_type = LXW_CHART_LINE_DASH_DASH;
                chart_series_set_line(series, &line);
            }
        }
        if (!spec.title.isEmpty()) {
            chart_title_set_name(chart, spec.title.toUtf8().constData());
            if (spec.titleFontSize > 0) {
                lxw_chart_font font{};
                font.size = spec.titleFontSize;
                chart_title_set_name_font(chart, &font);
            }
        }
        if (!spec.valueAxisTitle.isEmpty())
            chart_axis_set_name(chart->y_axis, spec.valueAxisTitle.toUtf8().constData());
        if (spec.valueAxisMinimum)
            chart_axis_set_min(chart->y_axis, *spec.valueAxisMinimum);
        if (spec.valueAxisMaximum)
            chart_axis_set_max(chart->y_axis, *spec.valueAxisMaximum);
        if (spec.valueAxisMajorUnit)
            chart_axis_set_major_unit(chart->y_axis, *spec.valueAxisMajorUnit);
        if (spec.categoryAxisFontSize > 0) {
            lxw_chart_font font{};
            font.size = spec.categoryAxisFontSize;
            chart_axis_set_num_font(chart->x_axis, &font);
        }
        if (!spec.valueAxisNumberFormat.isEmpty())
            chart_axis_set_num_format(chart->y_axis, spec.valueAxisNumberFormat.toUtf8().constData());

        lxw_chart_options options{};
        options.x_offset = int32_t(std::lround(spec.left * kPixelsPerPoint));
        options.y_offset = int32_t(std::lround(spec.top * kPixelsPerPoint));
        options.x_scale = spec.width * kPixelsPerPoint / kDefaultChartWidth;
        options.y_scale = spec.height * kPixelsPerPoint / kDefaultChartHeight;
        worksheet_insert_chart_opt(sheet, 0, 0, chart, &options);
    }

    const lxw_error result = workbook_close(book);
    if (result != LXW_NO_ERROR) {
        if (error)
            *error = QStringLiteral("The workbook %1 can't be written: %2")
                         .arg(path, QString::fromUtf8(lxw_strerror(result)));
        return false;
    }
    if (!isWholeZip(file.temporaryPath())) {
        if (error)
            *error = QStringLiteral("The workbook %1 can't be written: the file came out incomplete.").arg(path);
        return false;
    }
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}
