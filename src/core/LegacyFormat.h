#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>

#include <stdexcept>

// Number and text semantics of the program's history. Kit verdicts, report texts and
// tracking figures depend on them, so they are kept in one place and must stay exact.
namespace legacy {

// Formats a number with a pattern of the legacy format engine: "#0.000", "#0.0", "#0.00",
// "0.000", "00.00", "##,##0.000", "###.000" and the like. Rounding is half away from zero,
// done on the value's decimal form at 15 significant digits (0.1235 -> "0.124"). A negative
// value that rounds to zero keeps its sign ("-0.000"). NaN and infinities give "NaN".
QString format(double value, QStringView pattern);
// The same text appended to a buffer, for callers that build a long text in one piece.
void appendFormatted(QByteArray &out, double value, QStringView pattern);
void appendFormatted(QString &out, double value, QStringView pattern);

// Nearest integer, halves to even (59.5 -> 60, 58.5 -> 58).
double wholeNumber(double value);

// A number read back through a 32-bit float: the text converted to float (correctly
// rounded), widened to double. Text that is not numeric is a conversion failure.
double readBackSingle(const QString &text);
float toSingle(const QString &text);

// True when the trimmed text is an optional sign, digits with an optional decimal point
// and an optional exponent, and its value lies within the range of a double. Empty text
// is not numeric, nor is a value too large ("1e309") or too small to be told from zero
// ("1e-400"): such a text never passes as 0.
bool isNumeric(const QString &text);
// True when the text has the form of a number but its value lies beyond a double's range.
bool isBeyondRange(const QString &text);

// A plain decimal text ("0.165", "-0.005", "12"): an optional leading minus, digits and at
// most one point, nothing else. Converted as toDouble and toSingle convert it; false, and out
// untouched, for any other text. The adjusted ODs are such texts and are read often.
bool readPlainDecimal(QStringView text, double &out);
bool readPlainDecimal(QStringView text, float &out);

// Converts a numeric text to a double; throws ConversionError when it is not numeric.
// toSingle and readBackSingle also throw it for a value beyond the range of a float.
double toDouble(const QString &text);
// Converts a numeric text to a 16-bit integer (rounded halves to even); throws
// ConversionError when it is not numeric or out of range.
qint16 toInt16(const QString &text);

// The shortest text that reads back as the same double, with "." as decimal point.
QString doubleToText(double value);

// Fixed forms of a date or time that has no explicit format: M/d/yyyy and h:mm:ss AM/PM.
QString defaultDate(const QDate &date);
QString defaultTime(const QTime &time);
// A date-time with no explicit format: date alone when the time is midnight, time alone
// when the date is the zero date (12/30/1899), both otherwise.
QString defaultDateTime(const QDateTime &value);

// Explicit date formats of the legacy engine: "mm/dd/yyyy", "m/d/yyyy", "yyyy-mm-dd" ...
// (m is month outside a time part, d day, y year, leading zeros by doubling).
QString formatDate(const QDate &date, QStringView pattern);

// Removes the blanks at both ends (only blanks: tabs and other characters stay), as the
// legacy engine's Trim.
QString trimBlanks(const QString &text);

// Byte-wise (binary) comparison of two texts: negative, 0 or positive.
int compareBinary(const QString &a, const QString &b);

} // namespace legacy

// Thrown where the legacy program stopped on a type-mismatch conversion.
class ConversionError : public std::runtime_error {
public:
    explicit ConversionError(const QString &text)
        : std::runtime_error(("Type mismatch: '" + text + "' is not a number").toStdString())
    {
    }
};
