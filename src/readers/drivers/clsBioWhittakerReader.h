#pragma once

#include "readers/ReaderDriver.h"

#include <QtGlobal>

class ReplyPoller;

// BioWhittaker Kinetic-QCL 10 710 (model 3). Framed commands (STX, text, ETX); the reply
// is collected by readReply, which polls, and calls itself for each further piece. The
// filter is sent as its wavelength.
class clsBioWhittakerReader : public ReaderDriver {
public:
    static constexpr int kAfterSendMs = 200;
    static constexpr int kTestWaitMs = 1000;
    static constexpr int kReadWaitMs = 7000;
    static constexpr int kSilentPollMs = 1000;
    static constexpr int kNextPieceMs = 200;
    static constexpr qint16 kSilentPollsBeforeAsking = 20;
    static constexpr int kCompletePlateOver = 513;

    explicit clsBioWhittakerReader(const ReaderEnvironment &environment);

    // Sends "G" and takes the reply; tells the verdict.
    bool testCommunication(SerialPort &comm) override;
    // Sends "N 1" and the wavelength and collects the plate. Only the first reply's
    // verdict counts: what goes wrong in a later piece is told but the read goes on to
    // the parse with what came.
    bool readData(SerialPort &comm, const QString &filterNo, const QString &filterValue, QString &data) override;
    void fillReaderValues(RecordSet &values, const QString &data) override;

    // Waits waitMs and takes the reply into buffer. Silence counts in retryCount: while
    // it is 20 or less another second's poll follows, beyond that the user is asked
    // whether to go on. Each further piece is a poll of its own, whose verdict is dropped.
    //
    // Time bound of a read, whatever the reader sends: 200 ms and the first wait of 7 s,
    // 21 silent polls of 1 s, and at most ReplyPoller::kDefaultMaxPieces polls that find
    // input and the one that finds the bound passed, of 1 s at most each: 93.2 s, and the
    // time the user takes to answer the retry question.
    bool readReply(ReplyPoller &poller, SerialPort &comm, QString &buffer, qint16 step, qint32 waitMs);

    // Silent polls so far; it lives as long as the driver and is only set back by a
    // "not understood" reply or a retry that the user asked for.
    qint16 retryCount = 0;

private:
    ReaderEnvironment mEnvironment;
};
