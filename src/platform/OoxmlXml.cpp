#include "platform/OoxmlXml.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace ooxml {

void appendData(std::string &out, std::string_view text)
{
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '&' && c != '<' && c != '>')
            continue;
        out.append(text.substr(start, i - start));
        out.append(c == '&' ? "&amp;" : c == '<' ? "&lt;" : "&gt;");
        start = i + 1;
    }
    out.append(text.substr(start));
}

void appendAttribute(std::string &out, std::string_view value)
{
    value = value.substr(0, std::min<size_t>(value.size(), 2079));
    for (const char c : value) {
        switch (c) {
        case '&': out.append("&amp;"); break;
        case '<': out.append("&lt;"); break;
        case '>': out.append("&gt;"); break;
        case '"': out.append("&quot;"); break;
        case '\n': out.append("&#xA;"); break;
        default: out.push_back(c);
        }
    }
}

std::string escapeControls(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        const auto u = static_cast<unsigned char>(c);
        if (u >= 1 && u <= 0x1F && u != '\t' && u != '\n') {
            char code[8];
            std::snprintf(code, sizeof code, "_x%04X_", unsigned(u));
            out.append(code);
        } else {
            out.push_back(c);
        }
    }
    return out;
}

void appendNumber(std::string &out, double value)
{
    // std::to_chars with a precision follows printf's %g; only the letters differ.
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 16);
    for (char *p = buffer; p != result.ptr; ++p)
        out.push_back(char(std::toupper(static_cast<unsigned char>(*p))));
}

void appendNumber(std::string &out, double value, LastNumber &last)
{
    uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    if (!last.set || bits != last.bits) {
        std::string text;
        appendNumber(text, value);
        last.bits = bits;
        last.set = true;
        last.length = uint8_t(std::min(text.size(), sizeof last.text));
        std::memcpy(last.text, text.data(), last.length);
    }
    out.append(last.text, last.length);
}

void appendInt(std::string &out, int64_t value)
{
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

void appendCell(std::string &out, uint32_t row, uint32_t column, bool absolute)
{
    char letters[8];
    int n = 0;
    for (uint32_t c = column + 1; c; c = (c - 1) / 26) {
        const uint32_t remainder = c % 26 ? c % 26 : 26;
        letters[n++] = char('A' + remainder - 1);
    }
    if (absolute)
        out.push_back('$');
    while (n)
        out.push_back(letters[--n]);
    if (absolute)
        out.push_back('$');
    appendInt(out, int64_t(row) + 1);
}

void appendRange(std::string &out, uint32_t firstRow, uint32_t firstColumn, uint32_t lastRow, uint32_t lastColumn,
                 bool absolute)
{
    appendCell(out, firstRow, firstColumn, absolute);
    if (firstRow == lastRow && firstColumn == lastColumn)
        return;
    out.push_back(':');
    appendCell(out, lastRow, lastColumn, absolute);
}

size_t utf8Length(std::string_view text)
{
    return size_t(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

} // namespace ooxml
