#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

// Text forms that the reports write.
namespace ReportText {

// A number in the legacy general form: at most 15 significant digits, no trailing zeros,
// "0" before the point of a number below one, and the exponent form ("1E-05", "1.5E+15")
// below 0.0001 and from 10^15 on: 0.7 / 3 gives "0.233333333333333", 0.2 gives "0.2".
QString legacyNumberText(double value);

// The text of a field value with no explicit format: a date M/d/yyyy, a time h:mm:ss AM/PM,
// a date-time both (or one of them, see legacy::defaultDateTime), a number in the legacy
// general form, text as it stands, Null as the empty text.
QString defaultText(const QVariant &value);

// The text in code page windows-1252, one byte a character; a character that the code
// page doesn't have becomes "?".
QByteArray toWindows1252(QStringView text);
void appendWindows1252(QByteArray &out, QStringView text);
// Writes the text's bytes at `to`, which has room for text.size() bytes; returns how many.
qsizetype encodeWindows1252(QStringView text, char *to);

} // namespace ReportText
