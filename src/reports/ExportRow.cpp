#include "reports/ExportRow.h"

#include <charconv>
#include <cmath>

namespace {

// "0.512", "-3", "47.4%": digits with at most one point inside, read without a copy. Any
// other text (blanks, exponents, signs other than a leading minus) goes the long way.
// Gives the length of such a text without its "%", copied as ASCII into digits, or 0.
qsizetype plainDigits(QStringView text, char (&digits)[32])
{
    qsizetype end = text.size();
    if (end > 0 && text[end - 1] == u'%')
        --end;
    if (end == 0 || end > qsizetype(sizeof digits))
        return 0;
    bool point = false;
    bool digitBefore = false;
    for (qsizetype i = 0; i < end; ++i) {
        const char16_t c = text[i].unicode();
        if (c >= u'0' && c <= u'9') {
            digitBefore = true;
        } else if (c == u'.' && !point && digitBefore && i + 1 < end) {
            point = true;
            digitBefore = false;
        } else if (c == u'-' && i == 0) {
        } else {
            return 0;
        }
        digits[i] = char(c);
    }
    return digitBefore ? end : 0;
}

std::optional<double> plainNumber(QStringView text)
{
    char digits[32];
    const qsizetype end = plainDigits(text, digits);
    if (end == 0)
        return std::nullopt;
    double value = 0;
    const auto result = std::from_chars(digits, digits + end, value);
    if (result.ec != std::errc() || result.ptr != digits + end)
        return std::nullopt;
    return value;
}

} // namespace

std::optional<double> ExportRow::number(const QString &text)
{
    if (const std::optional<double> plain = plainNumber(text))
        return plain;
    QString t = text.trimmed();
    if (t.endsWith(QLatin1Char('%')))
        t.chop(1);
    bool ok = false;
    const double value = t.toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

bool ExportRow::isNumber(const QString &text)
{
    // A plain decimal of at most 32 characters always reads as a finite number.
    char digits[32];
    return plainDigits(text, digits) > 0 || number(text).has_value();
}
