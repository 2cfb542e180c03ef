#pragma once

#include "readers/drivers/DriverMessages.h"

#include <QString>

// The LabSystems readers' replies and the words the program answers them with: pure
// functions over text, shared by the Multiscan and MC 340 drivers.
//
// Every command is ASCII text and CR LF. The reader answers "OK", or "ER1" (instrument
// malfunction), "ER2" (invalid command sequence), and to a read "ER3" or the plate's data.
namespace LabSystemsReplies {

inline const QString kLineEnd = QStringLiteral("\r\n");
inline const QString kOK = QStringLiteral("OK");
inline const QString kER1 = QStringLiteral("ER1");
inline const QString kER2 = QStringLiteral("ER2");
inline const QString kER3 = QStringLiteral("ER3");

// Removes every CR LF pair (a lone CR or LF stays).
QString removeLineEnds(const QString &text);

// A command's reply after one more poll: the poll's input without CR LF pairs and
// without blanks at its ends, added to what came before (so "O" then "K" is "OK").
QString addCommandInput(const QString &reply, const QString &input);
// A read's data after one more poll: the input without CR LF pairs, blanks kept.
QString addReadInput(const QString &data, const QString &input);

// A reply that has "ER" in it and at least 3 characters.
bool isErrorReply(const QString &reply);
// A command's reply so far ends the wait: "OK" or an error reply.
bool commandReplyComplete(const QString &reply);
// A read's data so far ends the wait: enough characters, or "ER" anywhere in it.
bool readReplyComplete(const QString &data, int completeLength);

// Whether a read's data, long enough to be taken, is one whole plate: the attempt that
// ends the read began with no data (attemptStart 0), and the data is plateLength long.
// Longer data is a reader that would not stop when more is still coming (stillSending).
DriverMessages::PlateFault plateFault(const QString &data, qsizetype attemptStart, int plateLength, bool stillSending);

// The failure texts of the steps. Those of setFilter and blankOnAir depend on the reply;
// that of readPlate too, and is empty after "ER3".
QString setFilterFailure(const QString &reply);
QString blankOnAirFailure(const QString &reply);
QString readPlateFailure(const QString &data);

inline const QString kErrorTitle = QStringLiteral("Error!");
inline const QString kStartRemoteTitle = QStringLiteral("Unable to Read Plate");
extern const QString kStartRemoteFailure;
extern const QString kStopRemoteFailure;

} // namespace LabSystemsReplies
