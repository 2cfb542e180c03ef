#include "reports/ReportText.h"

#include "core/LegacyFormat.h"

#include <QDate>
#include <QDateTime>
#include <QTime>

#include <cmath>
#include <cstdio>

namespace ReportText {

QString legacyNumberText(double value)
{
    if (value == 0.0)
        return QStringLiteral("0"); // also -0
    if (!std::isfinite(value))
        return std::isnan(value) ? QStringLiteral("NaN")
                                 : (value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity"));
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.15G", value);
    return QString::fromLatin1(buffer);
}

QString defaultText(const QVariant &value)
{
    if (value.isNull())
        return QString();
    switch (value.typeId()) {
    case QMetaType::QDate: return legacy::defaultDate(value.toDate());
    case QMetaType::QTime: return legacy::defaultTime(value.toTime());
    case QMetaType::QDateTime: return legacy::defaultDateTime(value.toDateTime());
    case QMetaType::Double:
    case QMetaType::Float: return legacyNumberText(value.toDouble());
    default: return value.toString();
    }
}

namespace {

// Code points of the bytes 0x80 to 0x9F; 0 where the byte stands for the C1 control of the
// same number.
constexpr char16_t kHighBytes[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,      //
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

char byteFor(char32_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return char(c);
    if (c >= 0x80 && c <= 0x9F)
        return kHighBytes[c - 0x80] == 0 ? char(c) : '?';
    for (int i = 0; i < 32; ++i) {
        if (kHighBytes[i] == c)
            return char(0x80 + i);
    }
    return '?';
}

} // namespace

qsizetype encodeWindows1252(QStringView text, char *to)
{
    const qsizetype n = text.size();
    const char16_t *from = text.utf16();
    // Report texts are ASCII as a rule: that part goes through without a look-up.
    qsizetype i = 0;
    while (i < n && from[i] < 0x80) {
        to[i] = char(from[i]);
        ++i;
    }
    qsizetype written = i;
    for (; i < n; ++i) {
        const char16_t u = from[i];
        if (u < 0x80) {
            to[written++] = char(u);
        } else if (QChar::isHighSurrogate(u) && i + 1 < n && QChar::isLowSurrogate(from[i + 1])) {
            to[written++] = '?'; // one character outside the code page
            ++i;
        } else {
            to[written++] = byteFor(u);
        }
    }
    return written;
}

void appendWindows1252(QByteArray &out, QStringView text)
{
    const qsizetype start = out.size();
    out.resize(start + text.size()); // one byte a character at most
    out.truncate(start + encodeWindows1252(text, out.data() + start));
}

QByteArray toWindows1252(QStringView text)
{
    QByteArray out;
    out.reserve(text.size());
    appendWindows1252(out, text);
    return out;
}

} // namespace ReportText
