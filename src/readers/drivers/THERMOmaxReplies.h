#pragma once

#include "core/RecordSet.h"
#include "readers/drivers/DriverMessages.h"

#include <QString>

// What the Molecular Devices readers (EMAX, VMAX, ThermoMax) send back, as pure functions
// over text. A command goes out one character at a time and the reader echoes each one,
// in capitals; there is no terminator, except that the wake-up command is a lone CR.
namespace THERMOmaxReplies {

inline const QString kWakeUp = QStringLiteral("\r");
inline const QString kBeep = QStringLiteral("BEP");
inline const QString kMode = QStringLiteral("MOD1");
inline const QString kReadPlate = QStringLiteral("ASCRDP");
inline const QString kLocal = QStringLiteral("LCL");
// "SWV" and the filter's position in the reader's list.
QString selectFilter(const QString &filterNo);

// The reader's echo of a character is right when the first character of what came back,
// capitalised, is the character sent. A lower-case echo of "B" counts; a lower-case
// character sent never matches.
bool echoMatches(QChar sent, const QString &reply);

// The plate: 8 lines of 84 characters, 12 fields of 7 each; well (row r, column c, from 0)
// is the 6 characters at r x 84 + c x 7, blanks and all. A well past the end is empty.
constexpr int kLineSize = 84;
constexpr int kFieldSize = 7;
constexpr int kValueSize = 6;
void parse(RecordSet &values, const QString &data);
// A whole plate is exactly the 8 lines: less is part of a plate, more is not a plate
// (NUL characters, dropped by the port, make a plate short).
constexpr int kPlateSize = 8 * kLineSize;
DriverMessages::PlateFault plateFault(const QString &data);

} // namespace THERMOmaxReplies
