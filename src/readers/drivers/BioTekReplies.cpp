#include "readers/drivers/BioTekReplies.h"

#include "core/LegacyFormat.h"
#include "core/Wells.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"

#include <QStringList>

namespace BioTekReplies {

namespace {

// The leading whole number of a text (blanks skipped, digits until the first other
// character); 0 when it starts with none.
int leadingNumber(const QString &text)
{
    const QString t = text.trimmed();
    qsizetype i = 0;
    bool negative = false;
    if (i < t.size() && (t[i] == u'-' || t[i] == u'+'))
        negative = t[i++] == u'-';
    qint64 value = 0;
    while (i < t.size() && t[i].isDigit() && value < 1000000)
        value = value * 10 + t[i++].digitValue();
    return int(negative ? -value : value);
}

int digitAt(const QString &text, int position)
{
    return leadingNumber(text.mid(position - 1, 1));
}

int parityCode(QChar letter)
{
    if (letter == u'N')
        return 0;
    if (letter == u'E')
        return 1;
    if (letter == u'O')
        return 2;
    return kUnknownParity;
}

QString formatted(const QString &token)
{
    return legacy::isNumeric(token) ? legacy::format(legacy::toDouble(token), u"0.000") : token;
}

} // namespace

LineSettings parseSettings(const QString &settings)
{
    const QString text = settings.toUpper().trimmed();
    const qsizetype comma = text.indexOf(u',');
    if (comma < 0)
        throw ReadError(QStringLiteral("The line settings \"%1\" can't be given to the Bio-Tek control: they have no "
                                       "comma.")
                            .arg(settings));
    LineSettings parsed;
    parsed.baudRate = leadingNumber(text.left(comma));
    const QString rest = text.mid(comma + 1);
    parsed.parity = parityCode(rest.isEmpty() ? QChar() : rest[0]);
    parsed.dataBits = digitAt(rest, 3);
    parsed.stopBits = digitAt(rest, 5);
    return parsed;
}

bool settingsAreValid(const LineSettings &s)
{
    const bool dataBits = s.dataBits == 7 || s.dataBits == 8;
    const bool baud = s.baudRate == 1200 || s.baudRate == 2400 || s.baudRate == 9600 || s.baudRate == 19200;
    const bool stopBits = s.stopBits == 1 || s.stopBits == 2;
    const bool parity = s.parity >= 0 && s.parity <= 2;
    return dataBits && baud && stopBits && parity;
}

QString plateText(const QList<double> &values)
{
    QStringList texts;
    for (double v : values)
        texts << legacy::format(v, u"0.000");
    return texts.join(u' ');
}

void parse(RecordSet &values, const QString &data)
{
    QString kept[wells::kRows][wells::kCols];
    qsizetype scan = 1;
    for (int row = 0; row < wells::kRows; ++row) {
        for (int col = 0; col < wells::kCols; ++col) {
            const qsizetype space = data.indexOf(u' ', scan - 1);
            QString token;
            if (space >= 0) {
                token = data.mid(scan - 1, space - (scan - 1));
                scan = space + 2;
            } else {
                const qsizetype length = data.size() - scan;
                if (length < 0)
                    throw ReadError(QStringLiteral("The Bio-Tek plate text ends in a space where well %1 was "
                                                   "expected.")
                                        .arg(wells::name(wells::index(row + 1, col + 1))));
                token = data.mid(scan - 1, length);
                scan = 1;
            }
            kept[row][col] = formatted(token);
        }
    }
    for (int col = 0; col < wells::kCols; ++col) {
        for (int row = 0; row < wells::kRows; ++row)
            WellValues::append(values, QString(), kept[row][col]);
    }
}

} // namespace BioTekReplies
