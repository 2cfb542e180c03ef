#include "core/LegacyFormat.h"

#include <QRegularExpression>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>

namespace legacy {

namespace {

struct Pattern {
    int minIntegerDigits = 0;
    bool grouping = false;
    bool hasPoint = false;
    int forcedDecimals = 0;   // '0' after the point
    int optionalDecimals = 0; // '#' after the forced ones
};

Pattern parsePattern(QStringView pattern)
{
    Pattern p;
    const qsizetype point = pattern.indexOf(u'.');
    const QStringView integer = point < 0 ? pattern : pattern.left(point);
    for (QChar c : integer) {
        if (c == u'0')
            ++p.minIntegerDigits;
        else if (c == u',')
            p.grouping = true;
    }
    if (point >= 0) {
        p.hasPoint = true;
        for (QChar c : pattern.mid(point + 1)) {
            if (c == u'0')
                ++p.forcedDecimals;
            else if (c == u'#')
                ++p.optionalDecimals;
        }
    }
    return p;
}

// The value's decimal digits at 15 significant digits: digits "d1d2...d15" and the
// exponent of d1 (value = d1.d2d3... x 10^exponent).
void decimalDigits(double magnitude, std::string &digits, int &exponent)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer - 1, magnitude, std::chars_format::scientific, 14);
    *result.ptr = '\0';
    // buffer: d.dddddddddddddde[+-]xx
    digits.clear();
    const char *c = buffer;
    for (; *c && *c != 'e'; ++c) {
        if (*c >= '0' && *c <= '9')
            digits.push_back(*c);
    }
    exponent = (*c == 'e') ? std::atoi(c + 1) : 0;
}

QString groupThousands(const QString &integer)
{
    QString out;
    const qsizetype n = integer.size();
    for (qsizetype i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0)
            out += u',';
        out += integer[i];
    }
    return out;
}

const QRegularExpression &numericPattern()
{
    static const QRegularExpression re(QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?$"));
    return re;
}

// A plain decimal text ("0.125", "-1", "450"): most texts the program converts are such,
// and they need no pattern matching.
bool isPlainDecimal(QStringView t)
{
    qsizetype i = 0;
    if (i < t.size() && (t[i] == u'-' || t[i] == u'+'))
        ++i;
    bool digits = false, point = false;
    for (; i < t.size(); ++i) {
        if (t[i] >= u'0' && t[i] <= u'9')
            digits = true;
        else if (t[i] == u'.' && !point)
            point = true;
        else
            return false;
    }
    return digits;
}

// The text of a numeric-looking value in the form from_chars takes, or nothing when the
// text is not an optional sign, digits, point and exponent.
std::optional<QByteArray> numericText(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (!isPlainDecimal(trimmed) && !numericPattern().match(trimmed).hasMatch())
        return std::nullopt;
    QByteArray latin = trimmed.toLatin1();
    // from_chars takes no leading plus, nor a bare trailing or leading point.
    if (latin.startsWith('+'))
        latin.remove(0, 1);
    if (latin.startsWith('.'))
        latin.prepend('0');
    else if (latin.startsWith("-."))
        latin.insert(1, '0');
    return latin;
}

// The value of a numeric text whatever the process's locale is; nothing when it lies
// beyond the range of T (too large, or too small to be told from zero). Such a value is
// not a number: it must never pass as 0.
template <typename T> std::optional<T> parseNumber(const QString &text)
{
    const std::optional<QByteArray> latin = numericText(text);
    if (!latin)
        return std::nullopt;
    T value{};
    const auto [end, error] = std::from_chars(latin->constData(), latin->constData() + latin->size(), value);
    if (error != std::errc() || end != latin->constData() + latin->size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

template <typename T> T checkedNumber(const QString &text)
{
    const std::optional<T> value = parseNumber<T>(text);
    if (!value)
        throw ConversionError(text);
    return *value;
}

} // namespace

QString format(double value, QStringView pattern)
{
    // Not a number, nor a value beyond every number: never a figure such as "0.000".
    if (!std::isfinite(value))
        return QStringLiteral("NaN");
    const Pattern p = parsePattern(pattern);
    const bool negative = value < 0;
    const int decimals = p.forcedDecimals + p.optionalDecimals;

    std::string digits; // significant digits after rounding, no leading zeros unless zero
    int exponent = 0;
    if (value != 0.0 && std::isfinite(value)) {
        decimalDigits(std::fabs(value), digits, exponent);
        // Keep the digits down to 10^-decimals; round half away from zero on the next one.
        const int keep = exponent + 1 + decimals;
        if (keep < 0) {
            digits.clear();
        } else if (keep < static_cast<int>(digits.size())) {
            const bool up = digits[keep] >= '5';
            digits.resize(keep);
            if (up) {
                int i = keep - 1;
                while (i >= 0 && digits[i] == '9') {
                    digits[i] = '0';
                    --i;
                }
                if (i >= 0) {
                    ++digits[i];
                } else {
                    digits.insert(digits.begin(), '1');
                    ++exponent;
                }
            }
        }
        if (digits.find_first_not_of('0') == std::string::npos)
            digits.clear();
    }

    // Integer and fraction digits from the significant digits.
    QString integer;
    QString fraction;
    if (!digits.empty()) {
        const int integerCount = exponent + 1;
        for (int i = 0; i < integerCount; ++i)
            integer += QChar(i < static_cast<int>(digits.size()) ? digits[i] : '0');
        for (int i = 0; i < decimals; ++i) {
            const int index = integerCount + i;
            fraction += QChar(index >= 0 && index < static_cast<int>(digits.size()) ? digits[index] : '0');
        }
    } else {
        fraction = QString(decimals, u'0');
    }
    while (integer.size() < p.minIntegerDigits)
        integer.prepend(u'0');
    if (p.grouping)
        integer = groupThousands(integer);
    // Optional decimals drop their trailing zeros.
    while (fraction.size() > p.forcedDecimals && fraction.endsWith(u'0'))
        fraction.chop(1);

    QString out;
    if (negative)
        out += u'-';
    out += integer;
    if (p.hasPoint && (!fraction.isEmpty() || p.forcedDecimals > 0 || p.optionalDecimals > 0))
        out += u'.' + fraction;
    return out;
}

double wholeNumber(double value)
{
    return std::nearbyint(value);
}

float toSingle(const QString &text)
{
    return checkedNumber<float>(text);
}

double readBackSingle(const QString &text)
{
    return static_cast<double>(toSingle(text));
}

bool isNumeric(const QString &text)
{
    return parseNumber<double>(text).has_value();
}

bool isBeyondRange(const QString &text)
{
    return numericText(text).has_value() && !parseNumber<double>(text).has_value();
}

double toDouble(const QString &text)
{
    return checkedNumber<double>(text);
}

qint16 toInt16(const QString &text)
{
    const double rounded = std::nearbyint(toDouble(text));
    if (rounded < std::numeric_limits<qint16>::min() || rounded > std::numeric_limits<qint16>::max())
        throw ConversionError(text);
    return static_cast<qint16>(rounded);
}

QString doubleToText(double value)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, result.ptr - buffer);
}

QString trimBlanks(const QString &text)
{
    qsizetype first = 0, last = text.size();
    while (first < last && text[first] == u' ')
        ++first;
    while (last > first && text[last - 1] == u' ')
        --last;
    return text.mid(first, last - first);
}

QString defaultDate(const QDate &date)
{
    return date.toString(QStringLiteral("M/d/yyyy"));
}

QString defaultTime(const QTime &time)
{
    const int hour12 = time.hour() % 12 == 0 ? 12 : time.hour() % 12;
    return QStringLiteral("%1:%2:%3 %4")
        .arg(hour12)
        .arg(time.minute(), 2, 10, QChar(u'0'))
        .arg(time.second(), 2, 10, QChar(u'0'))
        .arg(time.hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM"));
}

QString defaultDateTime(const QDateTime &value)
{
    const QDate zeroDate(1899, 12, 30);
    const bool midnight = value.time() == QTime(0, 0);
    if (value.date() == zeroDate)
        return defaultTime(value.time());
    if (midnight)
        return defaultDate(value.date());
    return defaultDate(value.date()) + u' ' + defaultTime(value.time());
}

QString formatDate(const QDate &date, QStringView pattern)
{
    QString out;
    qsizetype i = 0;
    const qsizetype n = pattern.size();
    while (i < n) {
        const QChar c = pattern[i].toLower();
        qsizetype run = 1;
        while (i + run < n && pattern[i + run].toLower() == c)
            ++run;
        if (c == u'd') {
            out += run >= 2 ? QStringLiteral("%1").arg(date.day(), 2, 10, QChar(u'0')) : QString::number(date.day());
        } else if (c == u'm') {
            out +=
                run >= 2 ? QStringLiteral("%1").arg(date.month(), 2, 10, QChar(u'0')) : QString::number(date.month());
        } else if (c == u'y') {
            out += run >= 3 ? QStringLiteral("%1").arg(date.year(), 4, 10, QChar(u'0'))
                            : QStringLiteral("%1").arg(date.year() % 100, 2, 10, QChar(u'0'));
        } else {
            out += pattern.mid(i, run);
        }
        i += run;
    }
    return out;
}

int compareBinary(const QString &a, const QString &b)
{
    const int c = QString::compare(a, b, Qt::CaseSensitive);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

} // namespace legacy
