#include "platform/OoxmlWorkbook.h"

#include "platform/OoxmlChart.h"
#include "platform/OoxmlPackage.h"
#include "platform/OoxmlTheme.h"
#include "platform/OoxmlXml.h"
#include "platform/SafeFile.h"

#include <QDateTime>

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

using namespace ooxml;

namespace {

constexpr uint32_t kNone = std::numeric_limits<uint32_t>::max();
constexpr size_t kMaxTextLength = 32767; // characters of a cell's text
constexpr size_t kMaxFormatLength = 127; // bytes of a number format
constexpr size_t kMaxHeaderLength = 255; // characters of a page header
constexpr double kDefaultColumnWidth = 8.43;

void checkCell(int row, int column)
{
    if (row < 1 || column < 1 || row > 1048576 || column > 16384)
        throw std::out_of_range("A workbook cell lies outside the sheet");
}

// Texts reach the file as C strings did through libxlsxwriter: they end at a null character.
std::string cString(const QString &text)
{
    std::string bytes = text.toStdString();
    bytes.resize(std::strlen(bytes.c_str()));
    return bytes;
}

// The page header's code ("&C" and the text, "&" doubled), or nothing when libxlsxwriter
// would refuse it: too long, or holding what it takes for a picture's place ("&G").
std::string headerCode(const QString &text)
{
    std::string code = cString((QStringLiteral("&C") + QString(text).replace(u'&', QStringLiteral("&&"))).left(255));
    if (utf8Length(code) > kMaxHeaderLength)
        return {};
    for (size_t at; (at = code.find("&[Picture]")) != std::string::npos;)
        code.replace(at, 10, "&G");
    for (size_t i = 0; i + 1 < code.size(); ++i)
        if (code[i] == '&' && code[i + 1] == 'G')
            return {};
    return code;
}

// The width Excel stores for a column of width characters, padding included.
double storedWidth(double width)
{
    if (width <= 0)
        return width;
    if (width < 1)
        return uint16_t(uint16_t(width * 12.0 + 0.5) / 7.0 * 256.0) / 256.0;
    return uint16_t((uint16_t(width * 7.0 + 0.5) + 5.0) / 7.0 * 256.0) / 256.0;
}

void appendPart(OoxmlPackage &package, const char *name, std::string_view text)
{
    package.beginPart(name);
    package.text().append(kDeclaration);
    package.text().append(text);
    package.endPart();
}

constexpr std::string_view kRelationships =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
constexpr std::string_view kDocumentRelationship =
    "<Relationship Id=\"rId%\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string relationship(int id, std::string_view type, std::string_view target)
{
    std::string r(kDocumentRelationship);
    const size_t at = r.find('%');
    r.replace(at, 1, std::to_string(id));
    r.append(type);
    r.append("\" Target=\"");
    r.append(target);
    r.append("\"/>");
    return r;
}

} // namespace

OoxmlWorkbook::Cell &OoxmlWorkbook::cell(int row, int column)
{
    checkCell(row, column);
    Row &cells = mRows[uint32_t(row - 1)];
    const auto c = uint16_t(column - 1);
    if (cells.empty() || cells.back().column < c) {
        cells.emplace_back().column = c;
        return cells.back();
    }
    auto it = std::lower_bound(cells.begin(), cells.end(), c, [](const Cell &a, uint16_t b) { return a.column < b; });
    if (it == cells.end() || it->column != c)
        (it = cells.insert(it, Cell()))->column = c;
    return *it;
}

void OoxmlWorkbook::readRange(const WorkbookRange &r, std::vector<OoxmlCachedCell> &cells) const
{
    // What libxlsxwriter finds in the cells: numbers, texts, styled blanks; nothing else.
    cells.clear();
    auto row = mRows.lower_bound(uint32_t(r.firstRow - 1));
    for (int64_t n = r.firstRow - 1; n < r.lastRow; ++n) {
        while (row != mRows.end() && row->first < n)
            ++row;
        const Row *cellsOfRow = row != mRows.end() && row->first == n ? &row->second : nullptr;
        for (int column = r.firstColumn - 1; column < r.lastColumn; ++column) {
            OoxmlCachedCell &cached = cells.emplace_back();
            if (!cellsOfRow)
                continue;
            const auto c = std::lower_bound(cellsOfRow->begin(), cellsOfRow->end(), column,
                                            [](const Cell &a, int b) { return a.column < b; });
            if (c == cellsOfRow->end() || c->column != column)
                continue;
            if (c->kind == Kind::Number) {
                cached.kind = OoxmlCachedCell::Number;
                cached.number = c->number;
            } else if (c->kind == Kind::Text && !mTexts[c->text].tooLong) {
                cached.kind = OoxmlCachedCell::Text;
                cached.text = mTexts[c->text].utf8;
            } else if (c->kind == Kind::Empty && (c->bold || c->format)) {
                cached.kind = OoxmlCachedCell::Blank;
            }
        }
    }
}

uint32_t OoxmlWorkbook::intern(const QString &text)
{
    const auto found = mTextIds.constFind(text);
    if (found != mTextIds.cend())
        return *found;
    Text t{cString(text)};
    t.tooLong = utf8Length(t.utf8) > kMaxTextLength;
    mTexts.push_back(std::move(t));
    const auto id = uint32_t(mTexts.size() - 1);
    mTextIds.insert(text, id);
    return id;
}

uint32_t OoxmlWorkbook::formatId(const QString &numberFormat)
{
    if (numberFormat.isEmpty())
        return 0;
    const auto found = mFormatIds.constFind(numberFormat);
    if (found != mFormatIds.cend())
        return *found;
    std::string code = cString(numberFormat);
    code.resize(std::min(code.size(), kMaxFormatLength));
    // Formats that come out the same once cut are one format.
    auto same = std::find(mFormats.begin(), mFormats.end(), code);
    uint32_t id = uint32_t(same - mFormats.begin()) + 1;
    if (same == mFormats.end())
        mFormats.push_back(std::move(code));
    mFormatIds.insert(numberFormat, id);
    return id;
}

void OoxmlWorkbook::setText(int row, int column, const QString &text)
{
    Cell &c = cell(row, column);
    const uint32_t id = text.isEmpty() ? kNone : intern(text);
    if (id == kNone || mTexts[id].utf8.empty()) {
        c.kind = Kind::Empty;
    } else {
        c.kind = Kind::Text;
        c.text = id;
    }
}

void OoxmlWorkbook::setNumber(int row, int column, double value, const QString &numberFormat)
{
    Cell &c = cell(row, column);
    c.kind = Kind::Number;
    c.number = value;
    c.format = formatId(numberFormat);
}

void OoxmlWorkbook::setBold(int row, int column, bool bold)
{
    cell(row, column).bold = bold;
}

void OoxmlWorkbook::setColumnWidth(int column, double width)
{
    checkCell(1, column);
    mColumnWidths[uint32_t(column - 1)] = width;
}

void OoxmlWorkbook::addLineChart(const WorkbookLineChart &chart)
{
    // A chart without a line is not drawn.
    if (!chart.series.isEmpty())
        mCharts.append(chart);
}

uint32_t OoxmlWorkbook::columnPixels(uint32_t column) const
{
    const auto it = mColumnWidths.find(column);
    if (it == mColumnWidths.end())
        return 64;
    const double width = it->second;
    return width < 1.0 ? uint32_t(width * 12.0 + 0.5) : uint32_t(width * 7.0 + 0.5) + 5;
}

void OoxmlWorkbook::writeSheet(OoxmlPackage &package, std::vector<uint32_t> &sharedIndex,
                               std::vector<uint32_t> &sharedOrder, uint32_t &stringCount,
                               std::vector<uint32_t> &styles) const
{
    // A cell is written when it holds a value or a style; a text too long for a cell still
    // widens the sheet's dimension.
    auto styleKey = [](const Cell &c) { return (c.format << 1) | (c.bold ? 1u : 0u); };
    auto written = [&](const Cell &c) {
        return c.kind == Kind::Number || (c.kind == Kind::Text && !mTexts[c.text].tooLong) ||
               (c.kind == Kind::Empty && styleKey(c) != 0);
    };

    uint32_t minRow = kNone, maxRow = 0, minCol = kNone, maxCol = 0;
    // Columns spanned by the written cells of each block of 16 rows.
    std::map<uint32_t, std::pair<uint32_t, uint32_t>> spans;
    for (const auto &[row, cells] : mRows) {
        uint32_t first = kNone, last = 0;
        for (const Cell &c : cells) {
            const bool counts = written(c) || c.kind == Kind::Text;
            if (!counts)
                continue;
            minRow = std::min(minRow, row);
            maxRow = std::max(maxRow, row);
            minCol = std::min<uint32_t>(minCol, c.column);
            maxCol = std::max<uint32_t>(maxCol, c.column);
            if (written(c)) {
                first = std::min<uint32_t>(first, c.column);
                last = std::max<uint32_t>(last, c.column);
            }
        }
        if (first == kNone)
            continue;
        auto [it, added] = spans.try_emplace(row / 16, first, last);
        if (!added) {
            it->second.first = std::min(it->second.first, first);
            it->second.second = std::max(it->second.second, last);
        }
    }

    std::string &out = package.text();
    out.append(kDeclaration);
    out.append("<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
               "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><dimension ref=\"");
    if (minRow == kNone)
        out.append("A1");
    else
        appendRange(out, minRow, minCol, maxRow, maxCol);
    out.append("\"/><sheetViews><sheetView tabSelected=\"1\" workbookViewId=\"0\"/></sheetViews>"
               "<sheetFormatPr defaultRowHeight=\"15\"/>");
    if (!mColumnWidths.empty()) {
        out.append("<cols>");
        for (const auto &[column, width] : mColumnWidths) {
            out.append("<col min=\"");
            appendInt(out, column + 1);
            out.append("\" max=\"");
            appendInt(out, column + 1);
            out.append("\" width=\"");
            appendNumber(out, storedWidth(width));
            out.append(width == kDefaultColumnWidth ? "\"/>" : "\" customWidth=\"1\"/>");
        }
        out.append("</cols>");
    }

    // Style indices in the order the cells first use them (0 is the default style).
    std::vector<uint32_t> styleIndex(2 * (mFormats.size() + 1), 0);
    auto style = [&](const Cell &c) {
        const uint32_t key = styleKey(c);
        if (key == 0)
            return 0u;
        if (!styleIndex[key]) {
            styles.push_back(key);
            styleIndex[key] = uint32_t(styles.size());
        }
        return styleIndex[key];
    };

    std::vector<LastNumber> lastOfColumn(minCol == kNone ? 0 : maxCol + 1);
    if (spans.empty()) {
        out.append("<sheetData/>");
    } else {
        out.append("<sheetData>");
        for (const auto &[row, cells] : mRows) {
            const auto span = spans.find(row / 16);
            if (span == spans.end() || std::none_of(cells.begin(), cells.end(), written))
                continue;
            out.append("<row r=\"");
            appendInt(out, int64_t(row) + 1);
            out.append("\" spans=\"");
            appendInt(out, span->second.first + 1);
            out.push_back(':');
            appendInt(out, span->second.second + 1);
            out.append("\">");
            for (const Cell &c : cells) {
                if (!written(c))
                    continue;
                out.append("<c r=\"");
                appendCell(out, row, c.column);
                const uint32_t s = style(c);
                if (s) {
                    out.append("\" s=\"");
                    appendInt(out, s);
                }
                if (c.kind == Kind::Number) {
                    out.append("\"><v>");
                    appendNumber(out, c.number, lastOfColumn[c.column]);
                    out.append("</v></c>");
                } else if (c.kind == Kind::Text) {
                    uint32_t &shared = sharedIndex[c.text];
                    if (shared == kNone) {
                        shared = uint32_t(sharedOrder.size());
                        sharedOrder.push_back(c.text);
                    }
                    ++stringCount;
                    out.append("\" t=\"s\"><v>");
                    appendInt(out, shared);
                    out.append("</v></c>");
                } else {
                    out.append("\"/>");
                }
            }
            out.append("</row>");
            package.flushIfLarge();
        }
        out.append("</sheetData>");
    }
    out.append("<pageMargins left=\"0.7\" right=\"0.7\" top=\"0.75\" bottom=\"0.75\" header=\"0.3\" footer=\"0.3\"/>");
    const std::string header = mPageHeader.isEmpty() ? std::string() : headerCode(mPageHeader);
    if (!header.empty()) {
        out.append("<headerFooter><oddHeader>");
        appendData(out, header);
        out.append("</oddHeader></headerFooter>");
    }
    if (!mCharts.isEmpty())
        out.append("<drawing r:id=\"rId1\"/>");
    out.append("</worksheet>");
}

void OoxmlWorkbook::writeStyles(std::string &out, const std::vector<uint32_t> &styles) const
{
    // Number formats get ids from 164 in the order the styles use them.
    std::vector<uint32_t> formatIds(mFormats.size() + 1, 0);
    std::string numFmts;
    uint32_t next = 164;
    bool boldUsed = false;
    for (const uint32_t key : styles) {
        boldUsed = boldUsed || (key & 1);
        const uint32_t format = key >> 1;
        if (format && !formatIds[format]) {
            formatIds[format] = next;
            numFmts.append("<numFmt numFmtId=\"");
            appendInt(numFmts, next++);
            numFmts.append("\" formatCode=\"");
            appendAttribute(numFmts, mFormats[format - 1]);
            numFmts.append("\"/>");
        }
    }
    out.append(kDeclaration);
    out.append("<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">");
    if (next > 164) {
        out.append("<numFmts count=\"");
        appendInt(out, next - 164);
        out.append("\">");
        out.append(numFmts);
        out.append("</numFmts>");
    }
    constexpr std::string_view kFont =
        "<sz val=\"11\"/><color theme=\"1\"/><name val=\"Calibri\"/><family val=\"2\"/><scheme val=\"minor\"/></font>";
    out.append(boldUsed ? "<fonts count=\"2\"><font>" : "<fonts count=\"1\"><font>");
    out.append(kFont);
    if (boldUsed) {
        out.append("<font><b/>");
        out.append(kFont);
    }
    out.append("</fonts><fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill><fill><patternFill "
               "patternType=\"gray125\"/></fill></fills><borders count=\"1\"><border><left/><right/><top/><bottom/>"
               "<diagonal/></border></borders><cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" "
               "borderId=\"0\"/></cellStyleXfs><cellXfs count=\"");
    appendInt(out, int64_t(styles.size()) + 1);
    out.append("\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>");
    for (const uint32_t key : styles) {
        const uint32_t numFmt = formatIds[key >> 1];
        out.append("<xf numFmtId=\"");
        appendInt(out, numFmt);
        out.append(key & 1 ? "\" fontId=\"1\"" : "\" fontId=\"0\"");
        out.append(" fillId=\"0\" borderId=\"0\" xfId=\"0\"");
        if (numFmt)
            out.append(" applyNumberFormat=\"1\"");
        if (key & 1)
            out.append(" applyFont=\"1\"");
        out.append("/>");
    }
    out.append("</cellXfs><cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
               "<dxfs count=\"0\"/><tableStyles count=\"0\" defaultTableStyle=\"TableStyleMedium9\" "
               "defaultPivotStyle=\"PivotStyleLight16\"/></styleSheet>");
}

QByteArray OoxmlWorkbook::build() const
{
    OoxmlPackage package;

    // The sheet is made first (in memory) as it decides the shared strings and the styles;
    // the parts go into the archive in libxlsxwriter's order.
    std::vector<uint32_t> sharedIndex(mTexts.size(), kNone);
    std::vector<uint32_t> sharedOrder;
    uint32_t stringCount = 0;
    std::vector<uint32_t> styles;
    const bool hasCharts = !mCharts.isEmpty();

    std::string types(
        "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default Extension=\"rels\" "
        "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/><Default Extension=\"xml\" "
        "ContentType=\"application/xml\"/><Override PartName=\"/docProps/app.xml\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.extended-properties+xml\"/><Override "
        "PartName=\"/docProps/core.xml\" ContentType=\"application/vnd.openxmlformats-package.core-properties+xml\"/>"
        "<Override PartName=\"/xl/styles.xml\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml\"/><Override "
        "PartName=\"/xl/theme/theme1.xml\" ContentType=\"application/vnd.openxmlformats-officedocument.theme+xml\"/>"
        "<Override PartName=\"/xl/workbook.xml\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/><Override "
        "PartName=\"/xl/worksheets/sheet1.xml\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>");
    for (int i = 1; i <= mCharts.size(); ++i)
        types.append("<Override PartName=\"/xl/charts/chart" + std::to_string(i) +
                     ".xml\" ContentType=\"application/vnd.openxmlformats-officedocument.drawingml.chart+xml\"/>");
    if (hasCharts)
        types.append("<Override PartName=\"/xl/drawings/drawing1.xml\" "
                     "ContentType=\"application/vnd.openxmlformats-officedocument.drawing+xml\"/>");

    // Whether there are shared strings is known before the sheet is written.
    const bool hasStrings = std::any_of(mRows.begin(), mRows.end(), [this](const auto &row) {
        return std::any_of(row.second.begin(), row.second.end(),
                           [this](const Cell &c) { return c.kind == Kind::Text && !mTexts[c.text].tooLong; });
    });
    if (hasStrings)
        types.append("<Override PartName=\"/xl/sharedStrings.xml\" "
                     "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml\"/>");
    types.append("</Types>");
    appendPart(package, "[Content_Types].xml", types);

    appendPart(package, "_rels/.rels",
               std::string(kRelationships) +
                   "<Relationship Id=\"rId1\" "
                   "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
                   "Target=\"xl/workbook.xml\"/><Relationship Id=\"rId2\" "
                   "Type=\"http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties\" "
                   "Target=\"docProps/core.xml\"/><Relationship Id=\"rId3\" "
                   "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/extended-properties\" "
                   "Target=\"docProps/app.xml\"/></Relationships>");

    std::string workbookRels = std::string(kRelationships) + relationship(1, "worksheet", "worksheets/sheet1.xml") +
                               relationship(2, "theme", "theme/theme1.xml") + relationship(3, "styles", "styles.xml");
    if (hasStrings)
        workbookRels += relationship(4, "sharedStrings", "sharedStrings.xml");
    appendPart(package, "xl/_rels/workbook.xml.rels", workbookRels + "</Relationships>");

    package.beginPart("xl/worksheets/sheet1.xml");
    writeSheet(package, sharedIndex, sharedOrder, stringCount, styles);
    package.endPart();

    appendPart(package, "xl/workbook.xml",
               "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
               "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><fileVersion "
               "appName=\"xl\" lastEdited=\"4\" lowestEdited=\"4\" rupBuild=\"4505\"/><workbookPr "
               "defaultThemeVersion=\"124226\"/><bookViews><workbookView xWindow=\"240\" yWindow=\"15\" "
               "windowWidth=\"16095\" windowHeight=\"9660\"/></bookViews><sheets><sheet name=\"Sheet1\" "
               "sheetId=\"1\" r:id=\"rId1\"/></sheets><calcPr calcId=\"124519\" fullCalcOnLoad=\"1\"/></workbook>");

    const OoxmlChart::CellReader readCells = [this](const WorkbookRange &r, std::vector<OoxmlCachedCell> &cells) {
        readRange(r, cells);
    };
    for (int i = 0; i < mCharts.size(); ++i) {
        const std::string name = "xl/charts/chart" + std::to_string(i + 1) + ".xml";
        package.beginPart(name.c_str());
        OoxmlChart::writeChart(package, mCharts[i], readCells);
        package.endPart();
    }
    if (hasCharts) {
        std::string drawing(
            "<xdr:wsDr xmlns:xdr=\"http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing\" "
            "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\">");
        const OoxmlChart::ColumnPixels pixels = [this](uint32_t column) { return columnPixels(column); };
        for (int i = 0; i < mCharts.size(); ++i)
            OoxmlChart::writeAnchor(drawing, mCharts[i], i + 1, pixels);
        appendPart(package, "xl/drawings/drawing1.xml", drawing + "</xdr:wsDr>");
    }

    if (stringCount) {
        package.beginPart("xl/sharedStrings.xml");
        std::string &out = package.text();
        out.append(kDeclaration);
        out.append("<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" count=\"");
        appendInt(out, stringCount);
        out.append("\" uniqueCount=\"");
        appendInt(out, int64_t(sharedOrder.size()));
        out.append("\">");
        for (const uint32_t id : sharedOrder) {
            const std::string text = escapeControls(mTexts[id].utf8);
            auto space = [](char c) { return c == ' ' || c == '\t' || c == '\n'; };
            out.append(space(text.front()) || space(text.back()) ? "<si><t xml:space=\"preserve\">" : "<si><t>");
            appendData(out, text);
            out.append("</t></si>");
            package.flushIfLarge();
        }
        out.append("</sst>");
        package.endPart();
    }

    appendPart(package, "xl/theme/theme1.xml", kTheme);

    package.beginPart("xl/styles.xml");
    writeStyles(package.text(), styles);
    package.endPart();

    if (hasCharts) {
        appendPart(package, "xl/worksheets/_rels/sheet1.xml.rels",
                   std::string(kRelationships) + relationship(1, "drawing", "../drawings/drawing1.xml") +
                       "</Relationships>");
        std::string rels(kRelationships);
        for (int i = 1; i <= mCharts.size(); ++i)
            rels += relationship(i, "chart", "../charts/chart" + std::to_string(i) + ".xml");
        appendPart(package, "xl/drawings/_rels/drawing1.xml.rels", rels + "</Relationships>");
    }

    const std::string now =
        QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ")).toStdString();
    appendPart(package, "docProps/core.xml",
               "<cp:coreProperties "
               "xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
               "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\" "
               "xmlns:dcmitype=\"http://purl.org/dc/dcmitype/\" "
               "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"><dc:creator></dc:creator>"
               "<cp:lastModifiedBy></cp:lastModifiedBy><dcterms:created xsi:type=\"dcterms:W3CDTF\">" +
                   now + "</dcterms:created><dcterms:modified xsi:type=\"dcterms:W3CDTF\">" + now +
                   "</dcterms:modified></cp:coreProperties>");

    appendPart(package, "docProps/app.xml",
               "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/extended-properties\" "
               "xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\"><Application>"
               "Microsoft Excel</Application><DocSecurity>0</DocSecurity><ScaleCrop>false</ScaleCrop><HeadingPairs>"
               "<vt:vector size=\"2\" baseType=\"variant\"><vt:variant><vt:lpstr>Worksheets</vt:lpstr></vt:variant>"
               "<vt:variant><vt:i4>1</vt:i4></vt:variant></vt:vector></HeadingPairs><TitlesOfParts><vt:vector "
               "size=\"1\" baseType=\"lpstr\"><vt:lpstr>Sheet1</vt:lpstr></vt:vector></TitlesOfParts><Company>"
               "</Company><LinksUpToDate>false</LinksUpToDate><SharedDoc>false</SharedDoc><HyperlinksChanged>false"
               "</HyperlinksChanged><AppVersion>12.0000</AppVersion></Properties>");

    return package.finish();
}

bool OoxmlWorkbook::save(const QString &path, QString *error)
{
    SafeFile file(path);
    if (!file.open()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    const QByteArray bytes = build();
    if (bytes.isEmpty()) {
        if (error)
            *error = QStringLiteral("The workbook %1 can't be written: the file came out incomplete.").arg(path);
        return false;
    }
    if (!file.write(bytes) || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}
