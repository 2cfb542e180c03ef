#include "core/LegacyFormat.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>

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
    for (const QChar c : pattern) {
        if (c == u'.' && !p.hasPoint)
            p.hasPoint = true;
        else if (!p.hasPoint && c == u'0')
            ++p.minIntegerDigits;
        else if (!p.hasPoint && c == u',')
            p.grouping = true;
        else if (p.hasPoint && c == u'0')
            ++p.forcedDecimals;
        else if (p.hasPoint && c == u'#')
            ++p.optionalDecimals;
    }
    return p;
}

// The value's decimal form at 15 significant digits, as "%.14e" gives it: digits d1..d15 and
// the exponent of d1 (value = d1.d2d3... x 10^exponent), and the same digits after the
// rounding to the pattern's decimals. Held in a fixed buffer: a figure is formatted often
// (every OD of every plate), so nothing here allocates.
struct DecimalDigits {
    char digits[17]; // digits[0] is kept free for a carry out of the first digit
    int first = 1;
    int count = 0;
    int exponent = 0;

    const char *begin() const { return digits + first; }
    char at(int i) const { return i >= 0 && i < count ? digits[first + i] : '0'; }
};

// 10^0 to 10^19, all a 64-bit integer holds.
constexpr auto kPowersOfTen = [] {
    std::array<std::uint64_t, 20> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

// The 15 digits of a magnitude from 1e-5 to below 1e15 (every OD, ratio and figure the
// program shows), worked out exactly in 128-bit integers: with magnitude = m / 2^s, the
// digits are m * 10^k / 2^s rounded to nearest, ties to even, as "%.14e" rounds. Other
// magnitudes return false and take the general conversion.
bool fastDecimalDigits(double magnitude, DecimalDigits &out)
{
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const int biased = int(bits >> 52);
    if (biased == 0)
        return false; // subnormal
    const std::uint64_t m = (bits & ((1ull << 52) - 1)) | (1ull << 52);
    const int s = 1075 - biased; // magnitude = m / 2^s
    // floor(log10(2^(biased - 1023))): the decimal exponent, or one below it.
    int exponent = ((biased - 1023) * 78913) >> 18;
    if (exponent < -5 || exponent > 14 || s < 0)
        return false;
    using u128 = unsigned __int128;
    u128 product = u128(m) * kPowersOfTen[14 - exponent];
    std::uint64_t q = std::uint64_t(product >> s);
    if (q >= kPowersOfTen[15]) {
        if (++exponent > 14)
            return false;
        product = u128(m) * kPowersOfTen[14 - exponent];
        q = std::uint64_t(product >> s);
    }
    if (s > 0) {
        const u128 rest = product & ((u128(1) << s) - 1);
        const u128 half = u128(1) << (s - 1);
        if (rest > half || (rest == half && (q & 1))) {
            if (++q == kPowersOfTen[15]) {
                q = kPowersOfTen[14];
                ++exponent;
            }
        }
    }
    // Two digits at a time: the digits are written for every figure shown.
    static constexpr char kPairs[] = "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
                                     "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
                                     "8081828384858687888990919293949596979899";
    for (int i = 15; i >= 3; i -= 2) {
        const auto pair = unsigned(q % 100);
        q /= 100;
        out.digits[i - 1] = kPairs[2 * pair];
        out.digits[i] = kPairs[2 * pair + 1];
    }
    out.digits[1] = char('0' + q);
    out.first = 1;
    out.count = 15;
    out.exponent = exponent;
    return true;
}

void decimalDigits(double magnitude, DecimalDigits &out)
{
    if (fastDecimalDigits(magnitude, out))
        return;
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific, 14);
    // buffer: d.dddddddddddddde[+-]xx
    out.first = 1;
    out.count = 0;
    const char *c = buffer;
    for (; c != result.ptr && *c != 'e'; ++c) {
        if (*c >= '0' && *c <= '9')
            out.digits[1 + out.count++] = *c;
    }
    out.exponent = 0;
    if (c != result.ptr)
        std::from_chars(c + (c[1] == '+' ? 2 : 1), result.ptr, out.exponent);
}

// Keeps the digits down to 10^-decimals and rounds half away from zero on the next one;
// no digits are left when the value rounds to zero.
void roundToDecimals(DecimalDigits &d, int decimals)
{
    const int keep = d.exponent + 1 + decimals;
    if (keep < 0) {
        d.count = 0;
    } else if (keep < d.count) {
        const bool up = d.digits[d.first + keep] >= '5';
        d.count = keep;
        if (up) {
            int i = keep - 1;
            while (i >= 0 && d.digits[d.first + i] == '9') {
                d.digits[d.first + i] = '0';
                --i;
            }
            if (i >= 0) {
                ++d.digits[d.first + i];
            } else {
                d.digits[--d.first] = '1';
                ++d.count;
                ++d.exponent;
            }
        }
    }
    if (std::all_of(d.begin(), d.begin() + d.count, [](char c) { return c == '0'; }))
        d.count = 0;
}

// A formatted number laid out before it is written, so the text is written once into room
// of the exact size.
struct Layout {
    DecimalDigits d;
    bool negative = false;
    bool point = false;
    int leadingDigits = 0; // digits before the point: exponent + 1, negative for a small value
    int integerDigits = 0; // shown before the point, before padding to the pattern's minimum
    int integerWidth = 0;  // after it
    bool grouping = false;
    int fractionDigits = 0;

    qsizetype size() const
    {
        return qsizetype(negative) + integerWidth + (grouping && integerWidth > 0 ? (integerWidth - 1) / 3 : 0) +
               (point ? 1 + fractionDigits : 0);
    }

    template <typename Char> void write(Char *out) const
    {
        if (negative)
            *out++ = Char('-');
        const int padding = integerWidth - integerDigits;
        for (int i = 0; i < integerWidth; ++i) {
            if (grouping && i > 0 && (integerWidth - i) % 3 == 0)
                *out++ = Char(',');
            *out++ = Char(i < padding ? '0' : d.at(i - padding));
        }
        if (point) {
            *out++ = Char('.');
            for (int i = 0; i < fractionDigits; ++i)
                *out++ = Char(d.at(leadingDigits + i));
        }
    }
};

Layout layOut(double value, QStringView pattern)
{
    const Pattern p = parsePattern(pattern);
    const int decimals = p.forcedDecimals + p.optionalDecimals;
    Layout l;
    l.negative = value < 0;
    l.grouping = p.grouping;
    if (value != 0.0) {
        decimalDigits(std::fabs(value), l.d);
        roundToDecimals(l.d, decimals);
    }
    l.leadingDigits = l.d.count == 0 ? 0 : l.d.exponent + 1;
    l.integerDigits = std::max(l.leadingDigits, 0);
    l.integerWidth = std::max(l.integerDigits, p.minIntegerDigits);
    // Optional decimals drop their trailing zeros.
    l.fractionDigits = decimals;
    while (l.fractionDigits > p.forcedDecimals && l.d.at(l.leadingDigits + l.fractionDigits - 1) == '0')
        --l.fractionDigits;
    l.point = p.hasPoint && decimals > 0;
    return l;
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

// Powers of ten held exactly by a double (to 10^22) and by a float (to 10^10).
constexpr double kExactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

template <typename T> bool readPlain(QStringView text, T &out)
{
    char buffer[32];
    const qsizetype n = text.size();
    if (n == 0 || n >= qsizetype(sizeof buffer))
        return false;
    std::uint64_t whole = 0;
    int digits = 0;
    int decimals = 0;
    bool point = false;
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c >= u'0' && c <= u'9') {
            if (++digits <= 19)
                whole = whole * 10 + (c - u'0');
            decimals += point;
        } else if (c == u'.' && !point) {
            point = true;
        } else if (!(c == u'-' && i == 0)) {
            return false;
        }
        buffer[i] = char(c);
    }
    if (digits == 0)
        return false;
    // Digits and power of ten both held exactly: one correctly rounded division gives the
    // correctly rounded value of the text, as from_chars does, for a fraction of the work.
    constexpr bool single = std::is_same_v<T, float>;
    if (digits <= 19 && whole <= (single ? (1ull << 24) : (1ull << 53)) && decimals <= (single ? 10 : 22)) {
        const T value = T(whole) / T(kExactPowersOfTen[decimals]);
        out = text[0] == u'-' ? -value : value;
        return true;
    }
    const auto [end, error] = std::from_chars(buffer, buffer + n, out);
    return error == std::errc() && end == buffer + n;
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
    const Layout layout = layOut(value, pattern);
    QString out(layout.size(), Qt::Uninitialized);
    layout.write(reinterpret_cast<char16_t *>(out.data()));
    return out;
}

void appendFormatted(QByteArray &out, double value, QStringView pattern)
{
    if (!std::isfinite(value)) {
        out.append("NaN");
        return;
    }
    const Layout layout = layOut(value, pattern);
    const qsizetype at = out.size();
    out.resize(at + layout.size());
    layout.write(out.data() + at);
}

void appendFormatted(QString &out, double value, QStringView pattern)
{
    if (!std::isfinite(value)) {
        out.append(QLatin1String("NaN"));
        return;
    }
    const Layout layout = layOut(value, pattern);
    const qsizetype at = out.size();
    out.resize(at + layout.size());
    layout.write(reinterpret_cast<char16_t *>(out.data()) + at);
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

bool readPlainDecimal(QStringView text, double &out)
{
    return readPlain(text, out);
}

bool readPlainDecimal(QStringView text, float &out)
{
    return readPlain(text, out);
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
