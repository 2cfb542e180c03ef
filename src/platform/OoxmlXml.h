#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Pieces of XML text written the way libxlsxwriter writes them, so that a part comes out
// byte for byte as it does.
namespace ooxml {

// Element text: & < > escaped.
void appendData(std::string &out, std::string_view text);
// An attribute value: & < > " and line feeds escaped; libxlsxwriter keeps at most 2079
// bytes of a value.
void appendAttribute(std::string &out, std::string_view value);
// Control characters other than tab and line feed as _xHHHH_, as shared strings hold them.
std::string escapeControls(std::string_view text);
// printf's "%.16G" in the C locale (1E+20, 1E-07, -0, 0.1, NAN).
void appendNumber(std::string &out, double value);
void appendInt(std::string &out, int64_t value);
// The text of the last number written through it: a column or a line of a chart often
// holds one value over and over (the bands of a tracking table), written once.
struct LastNumber {
    uint64_t bits = 0;
    bool set = false;
    uint8_t length = 0;
    char text[32] = {};
};
void appendNumber(std::string &out, double value, LastNumber &last);
// "AB12" for row 11, column 27 (both from 0); absolute: "$AB$12".
void appendCell(std::string &out, uint32_t row, uint32_t column, bool absolute = false);
// "A1:B9", or one cell when both corners are the same.
void appendRange(std::string &out, uint32_t firstRow, uint32_t firstColumn, uint32_t lastRow, uint32_t lastColumn,
                 bool absolute = false);
// The number of characters of UTF-8 text, as libxlsxwriter counts it for its limits.
size_t utf8Length(std::string_view text);

// The one sheet of the workbooks written here, as chart ranges name it.
inline constexpr std::string_view kSheetName = "Sheet1";

inline constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

} // namespace ooxml
