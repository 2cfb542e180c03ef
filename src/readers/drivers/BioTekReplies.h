#pragma once

#include "core/RecordSet.h"

#include <QList>
#include <QString>

// The Bio-Tek readers' settings and plate texts, as pure functions.
namespace BioTekReplies {

// The line settings as the Bio-Tek control takes them. Parity: 0 for N, 1 for E, 2 for O,
// 100 for any other letter.
struct LineSettings {
    int dataBits = 0;
    int baudRate = 0;
    int stopBits = 0;
    int parity = 0;
    bool operator==(const LineSettings &) const = default;
};
constexpr int kUnknownParity = 100;

// "9600,N,8,2": capitalised and trimmed, the whole number before the first comma is the
// baud rate; after it, the first character is the parity, the third the data bits and
// the fifth the stop bits (a character that is no digit counts 0). A text without a comma
// throws ReadError.
LineSettings parseSettings(const QString &settings);
// 7 or 8 data bits, 1200, 2400, 9600 or 19200 baud, 1 or 2 stop bits, parity N, E or O.
bool settingsAreValid(const LineSettings &settings);

// The text of a plate as the control gives it: the values, row after row (A1, A2 ... A12,
// B1 ...), each formatted "0.000", joined by one space.
QString plateText(const QList<double> &values);

// The well values of that text. The tokens are taken row after row; the last one, having
// no space after it, is cut one character short (0.123 becomes 0.12, shown 0.120), and a
// missing token starts again from the first. Numeric tokens are formatted "0.000", others
// kept as they are. Rows go out column by column, Pos empty.
void parse(RecordSet &values, const QString &data);

} // namespace BioTekReplies
