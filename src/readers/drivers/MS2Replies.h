#pragma once

#include "core/RecordSet.h"
#include "readers/drivers/DriverMessages.h"

#include <QString>
#include <QStringList>

// The MS2 reader's frames and replies, as pure functions over text. A frame is STX, text,
// ETX; the reader acknowledges with ACK (6), refuses with NAK (21) and announces data with
// ENQ (5); the program acknowledges each data frame with ACK.
namespace MS2Replies {

constexpr QChar kACK(6);
constexpr QChar kNAK(21);
constexpr QChar kENQ(5);

// The commands in the order of a read: entry 0 is a lone ACK, which only the
// communication test sends; entries 1 to 5 are the frames of the read, "30" carrying the
// trimmed filter number.
QStringList commands(const QString &filterNo);
// The wait before each entry's reply is read.
int replyWaitMs(int entry);
constexpr int kReadSteps = 5;

// Codes of the first, second and last characters; 0 when there is none.
int firstCode(const QString &reply);
int secondCode(const QString &reply);
int lastCode(const QString &reply);

// The plate in what the read collected: after the sixth ETX, 12 column blocks, each of 8
// records of 14 characters and one spare character. A record holds the position in its
// characters 1 to 4 ("12-A", Pos "12A"), the value in 8 to 13, the line end in 14.
// Fewer than six ETX make the search start over at the first character; a text that ends
// before a well's position throws ReadError.
constexpr int kRecordStep = 7;
void parse(RecordSet &values, const QString &data);
// Whether what a read collected is a whole plate: every well's record there, each
// position naming its well, no value blank.
DriverMessages::PlateFault plateFault(const QString &data);

inline const QString kSettingsProblem = QStringLiteral(
    "There is a communication problem with this communication settings! You have to try some other settings!");
inline const QString kComputerControlQuestion = QStringLiteral("Can you read COMPUTER CONTROL on reader's display");

} // namespace MS2Replies
