#include "platform/OoxmlChart.h"

#include "platform/OoxmlPackage.h"
#include "platform/OoxmlXml.h"

#include <algorithm>
#include <cmath>
#include <cstring>

using namespace ooxml;

namespace {

constexpr double kPixelsPerPoint = 96.0 / 72.0;
// The size of a chart that libxlsxwriter scales from, in pixels.
constexpr double kDefaultChartWidth = 480.0;
constexpr double kDefaultChartHeight = 288.0;
constexpr uint32_t kRowPixels = 20; // rows of the default height, 15 points
constexpr uint32_t kEmusPerPixel = 9525;
constexpr std::string_view kCategoryAxis = "50010001";
constexpr std::string_view kValueAxis = "50010002";

// Texts reach libxlsxwriter as C strings: they end at a null character.
std::string utf8(const QString &text)
{
    std::string bytes = text.toStdString();
    bytes.resize(std::strlen(bytes.c_str()));
    return bytes;
}

// A block of the sheet as a chart formula: "Sheet1!$B$2:$B$9".
std::string formula(const WorkbookRange &r)
{
    std::string f(kSheetName);
    f.push_back('!');
    appendRange(f, uint32_t(r.firstRow - 1), uint16_t(r.firstColumn - 1), uint32_t(r.lastRow - 1),
                uint16_t(r.lastColumn - 1), true);
    return f;
}

// Font attributes of a chart text of a given size; libxlsxwriter writes them as a whole set.
void appendFont(std::string &out, double points)
{
    out.append(" sz=\"");
    appendNumber(out, points * 100.0);
    out.append("\" b=\"0\" i=\"0\" baseline=\"0\"");
}

void appendRichTitle(std::string &out, const std::string &text, double fontPoints, bool vertical)
{
    out.append(vertical ? "<c:title><c:tx><c:rich><a:bodyPr rot=\"-5400000\" vert=\"horz\"/>"
                        : "<c:title><c:tx><c:rich><a:bodyPr/>");
    out.append("<a:lstStyle/><a:p><a:pPr><a:defRPr");
    if (fontPoints > 0)
        appendFont(out, fontPoints);
    out.append("/></a:pPr><a:r><a:rPr lang=\"en-US\"");
    if (fontPoints > 0)
        appendFont(out, fontPoints);
    out.append("/><a:t>");
    appendData(out, text);
    out.append("</a:t></a:r></a:p></c:rich></c:tx><c:layout/></c:title>");
}

// A series' range and libxlsxwriter's copy of its cells: only a single row or column is
// cached, and not a union of blocks.
struct CachedRange {
    std::string formula;
    bool cached = false;
    std::vector<OoxmlCachedCell> cells = {};
    bool hasText = false;
};

CachedRange cachedRange(const WorkbookRange &r, const OoxmlChart::CellReader &read)
{
    CachedRange c;
    c.formula = formula(r);
    c.cached = r.firstRow == r.lastRow || r.firstColumn == r.lastColumn;
    if (c.cached) {
        read(r, c.cells);
        c.hasText = std::any_of(c.cells.begin(), c.cells.end(),
                                [](const OoxmlCachedCell &cell) { return cell.kind == OoxmlCachedCell::Text; });
    }
    return c;
}

// <c:numRef> or <c:strRef> with its cache of the cells' values.
void writeReference(OoxmlPackage &package, const CachedRange &c, bool asText)
{
    std::string &out = package.text();
    out.append(asText ? "<c:strRef><c:f>" : "<c:numRef><c:f>");
    appendData(out, c.formula);
    out.append("</c:f>");
    if (c.cached) {
        // libxlsxwriter counts the points in 16 bits.
        out.append(asText ? "<c:strCache><c:ptCount val=\""
                          : "<c:numCache><c:formatCode>General</c:formatCode><c:ptCount val=\"");
        appendInt(out, uint16_t(c.cells.size()));
        out.append("\"/>");
        uint16_t index = 0;
        LastNumber last;
        for (const OoxmlCachedCell &cell : c.cells) {
            if (cell.kind != OoxmlCachedCell::Absent) {
                out.append("<c:pt idx=\"");
                appendInt(out, index);
                out.append("\"><c:v>");
                if (asText && cell.kind == OoxmlCachedCell::Text)
                    appendData(out, cell.text);
                else
                    appendNumber(out, cell.kind == OoxmlCachedCell::Number ? cell.number : 0.0, last);
                out.append("</c:v></c:pt>");
                package.flushIfLarge();
            }
            ++index;
        }
        out.append(asText ? "</c:strCache>" : "</c:numCache>");
    }
    out.append(asText ? "</c:strRef>" : "</c:numRef>");
}

} // namespace

void OoxmlChart::writeChart(OoxmlPackage &package, const WorkbookLineChart &chart, const CellReader &cells)
{
    std::string &out = package.text();
    out.append(kDeclaration);
    out.append("<c:chartSpace xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
               "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
               "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
               "<c:lang val=\"en-US\"/><c:chart>");
    if (!chart.title.isEmpty())
        appendRichTitle(out, utf8(chart.title), chart.titleFontSize, false);
    out.append("<c:plotArea><c:layout/><c:lineChart><c:grouping val=\"standard\"/>");

    // The category axis shows a number format when the last series with X values has no
    // text among them.
    bool categoriesAreNumbers = false;
    int index = 0;
    for (const WorkbookSeries &s : chart.series) {
        out.append("<c:ser><c:idx val=\"");
        appendInt(out, index);
        out.append("\"/><c:order val=\"");
        appendInt(out, index);
        out.append("\"/>");
        ++index;
        if (!s.name.isEmpty()) {
            out.append("<c:tx><c:v>");
            appendData(out, utf8(s.name));
            out.append("</c:v></c:tx>");
        }
        if (s.dashed)
            out.append("<c:spPr><a:ln w=\"19050\"><a:prstDash val=\"dash\"/></a:ln></c:spPr>");
        if (s.marker == WorkbookMarker::None)
            out.append("<c:marker><c:symbol val=\"none\"/></c:marker>");
        else
            out.append(s.marker == WorkbookMarker::Circle
                           ? "<c:marker><c:symbol val=\"circle\"/><c:size val=\"5\"/></c:marker>"
                           : "<c:marker><c:symbol val=\"diamond\"/><c:size val=\"5\"/></c:marker>");
        if (!s.categoryAreas.isEmpty()) {
            // X values from several blocks: a union reference, without a cache.
            CachedRange areas;
            areas.formula = "(";
            for (const WorkbookRange &r : s.categoryAreas) {
                if (areas.formula.size() > 1)
                    areas.formula.push_back(',');
                areas.formula.append(formula(r));
            }
            areas.formula.push_back(')');
            out.append("<c:cat>");
            writeReference(package, areas, false);
            out.append("</c:cat>");
            categoriesAreNumbers = true;
        } else if (s.categories) {
            const CachedRange categories = cachedRange(*s.categories, cells);
            out.append("<c:cat>");
            writeReference(package, categories, categories.hasText);
            out.append("</c:cat>");
            categoriesAreNumbers = !categories.hasText;
        }
        out.append("<c:val>");
        writeReference(package, cachedRange(s.values, cells), false);
        out.append("</c:val></c:ser>");
    }
    out.append("<c:marker val=\"1\"/><c:axId val=\"");
    out.append(kCategoryAxis);
    out.append("\"/><c:axId val=\"");
    out.append(kValueAxis);
    out.append("\"/></c:lineChart>");

    out.append("<c:catAx><c:axId val=\"");
    out.append(kCategoryAxis);
    out.append("\"/><c:scaling><c:orientation val=\"minMax\"/></c:scaling><c:axPos val=\"b\"/>");
    if (categoriesAreNumbers)
        out.append("<c:numFmt formatCode=\"General\" sourceLinked=\"1\"/>");
    out.append("<c:tickLblPos val=\"nextTo\"/>");
    if (chart.categoryAxisFontSize > 0) {
        out.append("<c:txPr><a:bodyPr/><a:lstStyle/><a:p><a:pPr><a:defRPr");
        appendFont(out, chart.categoryAxisFontSize);
        out.append("/></a:pPr><a:endParaRPr lang=\"en-US\"/></a:p></c:txPr>");
    }
    out.append("<c:crossAx val=\"");
    out.append(kValueAxis);
    out.append("\"/><c:crosses val=\"autoZero\"/><c:auto val=\"1\"/><c:lblAlgn val=\"ctr\"/><c:lblOffset "
               "val=\"100\"/></c:catAx>");

    out.append("<c:valAx><c:axId val=\"");
    out.append(kValueAxis);
    out.append("\"/><c:scaling><c:orientation val=\"minMax\"/>");
    if (chart.valueAxisMaximum) {
        out.append("<c:max val=\"");
        appendNumber(out, *chart.valueAxisMaximum);
        out.append("\"/>");
    }
    if (chart.valueAxisMinimum) {
        out.append("<c:min val=\"");
        appendNumber(out, *chart.valueAxisMinimum);
        out.append("\"/>");
    }
    out.append("</c:scaling><c:axPos val=\"l\"/><c:majorGridlines/>");
    if (!chart.valueAxisTitle.isEmpty())
        appendRichTitle(out, utf8(chart.valueAxisTitle), 0, true);
    const std::string numberFormat =
        chart.valueAxisNumberFormat.isEmpty() ? std::string("General") : utf8(chart.valueAxisNumberFormat);
    out.append("<c:numFmt formatCode=\"");
    appendAttribute(out, numberFormat);
    out.append(numberFormat == "General" ? "\" sourceLinked=\"1\"/>" : "\" sourceLinked=\"0\"/>");
    out.append("<c:tickLblPos val=\"nextTo\"/><c:crossAx val=\"");
    out.append(kCategoryAxis);
    out.append("\"/><c:crosses val=\"autoZero\"/><c:crossBetween val=\"between\"/>");
    if (chart.valueAxisMajorUnit) {
        out.append("<c:majorUnit val=\"");
        appendNumber(out, *chart.valueAxisMajorUnit);
        out.append("\"/>");
    }
    out.append("</c:valAx></c:plotArea><c:legend><c:legendPos val=\"r\"/><c:layout/></c:legend><c:plotVisOnly "
               "val=\"1\"/></c:chart><c:printSettings><c:headerFooter/><c:pageMargins b=\"0.75\" l=\"0.7\" "
               "r=\"0.7\" t=\"0.75\" header=\"0.3\" footer=\"0.3\"/><c:pageSetup/></c:printSettings></c:chartSpace>");
}

void OoxmlChart::writeAnchor(std::string &out, const WorkbookLineChart &chart, int index,
                             const ColumnPixels &columnPixels)
{
    // The placing of libxlsxwriter: the chart's offset from cell A1 and its scaled size in
    // pixels, walked over the columns' and rows' sizes.
    int32_t x1 = int32_t(std::lround(chart.left * kPixelsPerPoint));
    int32_t y1 = int32_t(std::lround(chart.top * kPixelsPerPoint));
    double width = kDefaultChartWidth * (chart.width * kPixelsPerPoint / kDefaultChartWidth);
    double height = kDefaultChartHeight * (chart.height * kPixelsPerPoint / kDefaultChartHeight);
    x1 = std::max(x1, 0);
    y1 = std::max(y1, 0);
    uint32_t colStart = 0;
    uint32_t rowStart = 0;
    while (x1 >= int32_t(columnPixels(colStart))) {
        x1 -= int32_t(columnPixels(colStart));
        ++colStart;
    }
    while (y1 >= int32_t(kRowPixels)) {
        y1 -= int32_t(kRowPixels);
        ++rowStart;
    }
    uint32_t colEnd = colStart;
    uint32_t rowEnd = rowStart;
    if (columnPixels(colStart) > 0)
        width += x1;
    height += y1;
    while (width >= columnPixels(colEnd)) {
        width -= columnPixels(colEnd);
        ++colEnd;
    }
    while (height >= kRowPixels) {
        height -= kRowPixels;
        ++rowEnd;
    }

    auto coords = [&out](uint32_t col, double colOffset, uint32_t row, double rowOffset) {
        out.append("<xdr:col>");
        appendInt(out, col);
        out.append("</xdr:col><xdr:colOff>");
        appendInt(out, uint32_t(colOffset));
        out.append("</xdr:colOff><xdr:row>");
        appendInt(out, row);
        out.append("</xdr:row><xdr:rowOff>");
        appendInt(out, uint32_t(rowOffset));
        out.append("</xdr:rowOff>");
    };
    out.append("<xdr:twoCellAnchor><xdr:from>");
    coords(colStart, double(x1) * kEmusPerPixel, rowStart, double(y1) * kEmusPerPixel);
    out.append("</xdr:from><xdr:to>");
    coords(colEnd, width * kEmusPerPixel + 0.5, rowEnd, height * kEmusPerPixel + 0.5);
    out.append("</xdr:to><xdr:graphicFrame macro=\"\"><xdr:nvGraphicFramePr><xdr:cNvPr id=\"");
    appendInt(out, index + 1);
    out.append("\" name=\"Chart ");
    appendInt(out, index);
    out.append("\"/><xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr><xdr:xfrm><a:off x=\"0\" y=\"0\"/><a:ext "
               "cx=\"0\" cy=\"0\"/></xdr:xfrm><a:graphic><a:graphicData "
               "uri=\"http://schemas.openxmlformats.org/drawingml/2006/chart\"><c:chart "
               "xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
               "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" r:id=\"rId");
    appendInt(out, index);
    out.append("\"/></a:graphicData></a:graphic></xdr:graphicFrame><xdr:clientData/></xdr:twoCellAnchor>");
}
