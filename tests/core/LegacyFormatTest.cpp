#include "core/LegacyFormat.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

using namespace legacy;

struct FormatCase {
    double value;
    const char *pattern;
    const char *expected;
};

TEST(Format, GivesTheLegacyText)
{
    const FormatCase cases[] = {
        // Half away from zero on the decimal form, although the double lies below the half.
        {0.1235, "#0.000", "0.124"},
        {-0.1235, "#0.000", "-0.124"},
        {1.0005, "#0.000", "1.001"},
        {2.675, "#0.00", "2.68"},
        {0.0005, "#0.000", "0.001"},
        {0.00049999, "#0.000", "0.000"},
        {0.95, "#0.0", "1.0"},
        {9.9996, "#0.000", "10.000"},
        {999.9995, "##,##0.000", "1,000.000"},
        // Sign kept on a negative value that rounds to zero.
        {-0.0001, "#0.000", "-0.000"},
        {-0.0004, "###.000", "-.000"},
        {0.0, "#0.000", "0.000"},
        {-0.0, "#0.000", "0.000"},
        // The patterns in use.
        {0.25, "###.000", ".250"},
        {-1.0, "###.000", "-1.000"},
        {0.0, "###.000", ".000"},
        {12.5, "###.000", "12.500"},
        {5.5, "00.00", "05.50"},
        {123.456, "00.00", "123.46"},
        {-5.5, "00.00", "-05.50"},
        {0.2, "0.000", "0.200"},
        {1234567.8915, "##,##0.000", "1,234,567.892"},
        {0.4, "##,##0.000", "0.400"},
        {-1234.5, "##,##0.000", "-1,234.500"},
        {12.36, "#0.00", "12.36"},
        {45.66, "#0.0", "45.7"},
        {3.0, "#0", "3"},
        {2.5, "0", "3"},
        {9999.9999, "#0.000", "10000.000"},
        {0.000123, "#0.000", "0.000"},
        {1e-20, "#0.000", "0.000"},
        {HUGE_VAL, "0.000", "NaN"},
        {-HUGE_VAL, "#0.000", "NaN"},
    };
    for (const FormatCase &c : cases)
        EXPECT_EQ(format(c.value, QString::fromLatin1(c.pattern)), QString::fromLatin1(c.expected))
            << c.value << " with " << c.pattern;
}

// The legacy text worked out the slow way: "%.14e" digits, the value times 10^decimals as
// a digit string, one increment for a next digit of 5 or more, then the pattern's layout.
std::string referenceText(double value, const std::string &pattern)
{
    if (!std::isfinite(value))
        return "NaN";
    const size_t point = pattern.find('.');
    const std::string integerPart = pattern.substr(0, point);
    const std::string fractionPart = point == std::string::npos ? "" : pattern.substr(point + 1);
    const int forced = int(std::count(fractionPart.begin(), fractionPart.end(), '0'));
    const int decimals = forced + int(std::count(fractionPart.begin(), fractionPart.end(), '#'));
    char form[40];
    std::snprintf(form, sizeof form, "%.14e", std::fabs(value));
    const std::string digits = form[0] + std::string(form + 2, 14);
    const int wholeCount = std::atoi(form + 17) + decimals + 1; // digits of value * 10^decimals
    std::string scaled = "0";
    for (int i = 0; i < wholeCount; ++i)
        scaled += i < 15 ? digits[i] : '0';
    if (wholeCount >= 0 && (wholeCount < 15 ? digits[wholeCount] : '0') >= '5') {
        size_t i = scaled.size() - 1;
        for (; scaled[i] == '9'; --i)
            scaled[i] = '0';
        ++scaled[i];
    }
    scaled.erase(0, std::min(scaled.find_first_not_of('0'), scaled.size()));
    scaled.insert(0, std::max<size_t>(decimals, scaled.size()) - scaled.size(), '0');
    std::string integer = scaled.substr(0, scaled.size() - decimals);
    std::string fraction = scaled.substr(scaled.size() - decimals);
    const size_t minInteger = std::count(integerPart.begin(), integerPart.end(), '0');
    integer.insert(0, std::max(minInteger, integer.size()) - integer.size(), '0');
    for (int i = int(integer.size()) - 3; i > 0 && integerPart.find(',') != std::string::npos; i -= 3)
        integer.insert(i, ",");
    while (int(fraction.size()) > forced && fraction.back() == '0')
        fraction.pop_back();
    return (value < 0 ? "-" : "") + integer + (point != std::string::npos && decimals > 0 ? "." + fraction : "");
}

TEST(Format, AgreesWithTheDecimalFormOnMillionsOfValues)
{
#if defined(__SANITIZE_ADDRESS__)
    const int count = 30000;
#elif defined(__has_feature)
    const int count = __has_feature(address_sanitizer) ? 30000 : 300000;
#else
    const int count = 300000;
#endif
    const std::string patterns[] = {"#0.000",  "##,##0.000", "#0.0", "#0.00",  "0.000", "00.00",
                                    "###.000", "#0",         "0",    "#0.0##", "#,##0"};
    std::mt19937_64 random(20261124);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    for (int i = 0; i < count; ++i) {
        const double half = (double(random() % 2000000000) + 0.5) / std::pow(10.0, int(random() % 8));
        const std::uint64_t bits = random();
        double value = 0;
        switch (i % 5) {
        case 0: // any magnitude
            value = unit(random) * std::pow(10.0, int(random() % 36) - 16);
            break;
        case 1: // halves of the last shown digit, exactly and a few steps either side
            value = std::nextafter(half, double(i % 3) - 1.0);
            break;
        case 2: value = -half; break;
        case 3: // exact halves of the 15th digit (ties), and powers of ten
            value = i % 4 == 1   ? double(bits % 9000000000000000 + 100000000000000) + 0.5
                    : i % 4 == 3 ? double(bits % 90000000000000 + 10000000000000) + (bits >> 63 ? 0.25 : 0.75)
                                 : std::nextafter(std::pow(10.0, int(bits % 40) - 20), unit(random));
            break;
        default: // every finite double, subnormals included
            std::memcpy(&value, &bits, sizeof value);
        }
        for (const std::string &pattern : patterns) {
            const QString text = format(value, QString::fromStdString(pattern));
            const std::string expected = referenceText(value, pattern);
            ASSERT_EQ(text.toStdString(), expected) << std::hexfloat << value << " with " << pattern;
            // Read back as the general conversion reads it, to the last bit.
            double number = 0, numberExpected = 0;
            float single = 0, singleExpected = 0;
            if (pattern.find(',') == std::string::npos && readPlainDecimal(text, number) &&
                readPlainDecimal(text, single)) {
                std::from_chars(expected.data(), expected.data() + expected.size(), numberExpected);
                std::from_chars(expected.data(), expected.data() + expected.size(), singleExpected);
                ASSERT_EQ(std::bit_cast<std::uint64_t>(number), std::bit_cast<std::uint64_t>(numberExpected))
                    << expected;
                ASSERT_EQ(std::bit_cast<std::uint32_t>(single), std::bit_cast<std::uint32_t>(singleExpected))
                    << expected;
            }
            QByteArray appended("x");
            QString appendedText = QStringLiteral("x");
            appendFormatted(appended, value, QString::fromStdString(pattern));
            appendFormatted(appendedText, value, QString::fromStdString(pattern));
            ASSERT_EQ(appended.toStdString(), "x" + expected);
            ASSERT_EQ(appendedText.toStdString(), "x" + expected);
        }
    }
}

TEST(WholeNumber, HalvesGoToEven)
{
    EXPECT_EQ(wholeNumber(59.5), 60.0);
    EXPECT_EQ(wholeNumber(58.5), 58.0);
    EXPECT_EQ(wholeNumber(24.5), 24.0);
    EXPECT_EQ(wholeNumber(25.5), 26.0);
    EXPECT_EQ(wholeNumber(49.5), 50.0);
    EXPECT_EQ(wholeNumber(-2.5), -2.0);
    EXPECT_EQ(wholeNumber(59.50001), 60.0);
}

TEST(SinglePrecision, ReadsTextThroughAFloat)
{
    EXPECT_EQ(readBackSingle(QStringLiteral("0.123")), static_cast<double>(0.123f));
    EXPECT_NE(readBackSingle(QStringLiteral("0.123")), 0.123);
    EXPECT_EQ(readBackSingle(QStringLiteral(" -1.5 ")), -1.5);
    // Correctly rounded from the text, not through a double first.
    EXPECT_EQ(toSingle(QStringLiteral("1.00000005960464477539062500000000001")), 1.00000011920928955078125f);
    EXPECT_THROW(readBackSingle(QString()), ConversionError);
    EXPECT_THROW(readBackSingle(QStringLiteral("POS")), ConversionError);
}

TEST(Numeric, AcceptsSignDigitsPointAndExponent)
{
    for (const char *yes : {"1", " 1 ", "-0.5", "+3.", ".5", "1e3", "1.5E-02", "0009"})
        EXPECT_TRUE(isNumeric(QString::fromLatin1(yes))) << yes;
    for (const char *no : {"", "  ", "-", ".", "1.2.3", "1e", "abc", "1,5", "0x10", "1 2", "e5"})
        EXPECT_FALSE(isNumeric(QString::fromLatin1(no))) << no;
}

TEST(Numeric, ValuesBeyondTheRangeAreNotNumbers)
{
    // A value that does not fit is no number at all, never 0.
    for (const char *no : {"1e309", "-1e309", "1e-400", "1.8e308", "1e99999999999999999999"}) {
        EXPECT_FALSE(isNumeric(QString::fromLatin1(no))) << no;
        EXPECT_TRUE(isBeyondRange(QString::fromLatin1(no))) << no;
        EXPECT_THROW(toDouble(QString::fromLatin1(no)), ConversionError) << no;
    }
    EXPECT_THROW(toDouble(QString(400, u'9')), ConversionError);
    EXPECT_EQ(toDouble(QStringLiteral("1.7976931348623157e308")), 1.7976931348623157e308);
    EXPECT_EQ(toDouble(QStringLiteral("0e999")), 0.0);
    EXPECT_FALSE(isBeyondRange(QStringLiteral("high")));
    EXPECT_THROW(toSingle(QStringLiteral("1e39")), ConversionError);
    EXPECT_EQ(toDouble(QStringLiteral("1e39")), 1e39);
}

TEST(Numeric, ConversionsFailOnText)
{
    EXPECT_DOUBLE_EQ(toDouble(QStringLiteral(" 0.25")), 0.25);
    EXPECT_THROW(toDouble(QStringLiteral("")), ConversionError);
    EXPECT_EQ(toInt16(QStringLiteral("450")), 450);
    EXPECT_EQ(toInt16(QStringLiteral("2.5")), 2);
    EXPECT_THROW(toInt16(QStringLiteral("40000")), ConversionError);
    EXPECT_THROW(toInt16(QStringLiteral("nm")), ConversionError);
}

TEST(DoubleToText, ShortestFormThatReadsBack)
{
    EXPECT_EQ(doubleToText(0.123), QStringLiteral("0.123"));
    EXPECT_EQ(doubleToText(0.0), QStringLiteral("0"));
    EXPECT_EQ(doubleToText(-0.01), QStringLiteral("-0.01"));
    EXPECT_EQ(doubleToText(9999.9999), QStringLiteral("9999.9999"));
    for (double v : {0.1 + 0.2, 1.0 / 3.0, 2.675, -0.7071067811865476, 1e-7}) {
        EXPECT_EQ(toDouble(doubleToText(v)), v) << doubleToText(v).toStdString();
    }
}

TEST(Dates, FixedAndExplicitForms)
{
    const QDate date(2026, 3, 7);
    EXPECT_EQ(defaultDate(date), QStringLiteral("3/7/2026"));
    EXPECT_EQ(formatDate(date, u"mm/dd/yyyy"), QStringLiteral("03/07/2026"));
    EXPECT_EQ(formatDate(date, u"m/d/yy"), QStringLiteral("3/7/26"));
    EXPECT_EQ(defaultTime(QTime(0, 5, 9)), QStringLiteral("12:05:09 AM"));
    EXPECT_EQ(defaultTime(QTime(13, 0, 0)), QStringLiteral("1:00:00 PM"));
    EXPECT_EQ(defaultTime(QTime(12, 30, 1)), QStringLiteral("12:30:01 PM"));
    EXPECT_EQ(defaultDateTime(QDateTime(date, QTime(0, 0))), QStringLiteral("3/7/2026"));
    EXPECT_EQ(defaultDateTime(QDateTime(QDate(1899, 12, 30), QTime(9, 15, 0))), QStringLiteral("9:15:00 AM"));
    EXPECT_EQ(defaultDateTime(QDateTime(date, QTime(9, 15, 0))), QStringLiteral("3/7/2026 9:15:00 AM"));
}

TEST(BinaryCompare, OrdersByCharacterCodes)
{
    EXPECT_LT(compareBinary(QStringLiteral("10.000"), QStringLiteral("2.000")), 0);
    EXPECT_LT(compareBinary(QStringLiteral("-0.010"), QStringLiteral("0.400")), 0);
    EXPECT_LT(compareBinary(QStringLiteral("ABC"), QStringLiteral("abc")), 0);
    EXPECT_EQ(compareBinary(QStringLiteral("0.250"), QStringLiteral("0.250")), 0);
}
