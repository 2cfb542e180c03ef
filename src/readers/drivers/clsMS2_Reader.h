#pragma once

#include "readers/ReaderDriver.h"

#include <QtGlobal>

class ReplyPoller;

// The MS2 reader (model 2). Framed commands acknowledged by the reader; the read is five
// frames in a row, and the data frames that come back are collected in the data text. The
// filter is chosen by its position in the reader's list.
class clsMS2_Reader : public ReaderDriver {
public:
    static constexpr int kAfterSendMs = 200;
    static constexpr int kNextReplyMs = 1000;

    explicit clsMS2_Reader(const ReaderEnvironment &environment);

    // An ACK and the first frame of the read, then the user is asked whether the reader
    // shows it is under computer control. Only what the reader answered makes the result.
    bool testCommunication(SerialPort &comm) override;
    // Sends the five frames whatever each one's outcome; the last one's is the result.
    bool readData(SerialPort &comm, const QString &filterNo, const QString &filterValue, QString &data) override;
    void fillReaderValues(RecordSet &values, const QString &data) override;

    // Waits waitMs and answers what came: a silence asks the user at once whether to go
    // on; an ENQ is acknowledged and the data is waited for; a data frame is added to
    // buffer and acknowledged. Step 1 to 5 is the command just sent, 0 a reply that
    // follows. Each further reply is a poll of its own, whose verdict is dropped.
    //
    // Time bound of a read, whatever the reader sends: five frames of 200 ms and their
    // waits (1 + 1 + 1 + 10 + 1 s), plus at most ReplyPoller::kDefaultMaxPieces further
    // polls of 1 s for the whole read and the one that finds the bound passed: 80 s, and
    // the time the user takes to answer the retry question of a silence.
    bool readReply(ReplyPoller &poller, SerialPort &comm, QString &buffer, qint16 step, qint32 waitMs);

private:
    ReaderEnvironment mEnvironment;
};
