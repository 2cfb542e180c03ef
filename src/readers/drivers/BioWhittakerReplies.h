#pragma once

#include "core/RecordSet.h"
#include "readers/drivers/DriverMessages.h"

#include <QString>

// The framed readers' texts and the BioWhittaker Kinetic-QCL's replies, as pure functions
// over text. A command is STX, text, ETX. A reply's second character is its status: "-"
// not understood, "+" accepted (its data from the seventh character), "W" a data block.
namespace BioWhittakerReplies {

constexpr QChar kSTX(2);
constexpr QChar kETX(3);

// STX, the text, ETX.
QString frame(const QString &text);
// The communication test, "G".
QString testFrame();
// The read at a wavelength: "N 1 " and the trimmed filter value.
QString readFrame(const QString &filterValue);

// The status character of a reply (its second character; none in a shorter one).
QChar status(const QString &reply);
// The code of the first character; 0 for an empty text, as for a NUL.
int firstCode(const QString &reply);

// The plate: after 18 characters of header, for each column eight 5-digit numbers (the
// OD times 1000) and one spare character. Val is the number divided by 1000, as the
// shortest text of the quotient ("0.123"); Pos stays empty. A field that is not a number
// (the data ended early, a garbled block) throws ReadError.
constexpr int kFirstValue = 19;
constexpr int kValueSize = 5;
void parse(RecordSet &values, const QString &data);
// Whether what a read collected is a whole plate: partial when it ends before the last
// field, not a plate when a field is no number.
DriverMessages::PlateFault plateFault(const QString &data);

// The boxes of the framed readers (the MS2 driver asks and tells in the same words).
inline const QString kProblemTitle = QStringLiteral("Communication Problem");
inline const QString kRetryQuestion = QStringLiteral("There could be a communication problem!\r\n"
                                                     "Do you want to retry reading operation!");
inline const QString kNotUnderstood =
    QStringLiteral("Reader didn't understand the command! This procedure must be terminated!");
inline const QString kTurnedOff =
    QStringLiteral("Reader is turned off or not connected with computer! Check it and try again!");

} // namespace BioWhittakerReplies
