#pragma once

#include "readers/ReaderDriver.h"

// Molecular Devices Series I readers, EMAX, VMAX and ThermoMax (model 4). Every command
// character is echoed by the reader; the plate comes as the reply to "ASCRDP". The filter
// is chosen by its position in the reader's list ("SWV" and the number).
class clsTHERMOmaxReader : public ReaderDriver {
public:
    static constexpr int kEchoWaitMs = 100;
    static constexpr int kCommandWaitMs = 100;
    static constexpr int kReadWaitMs = 10000;

    explicit clsTHERMOmaxReader(const ReaderEnvironment &environment);

    // Wakes the reader and has it beep; the beep's echo is the verdict.
    bool testCommunication(SerialPort &comm) override;
    // Mode, filter, read, and back to local control whatever happened.
    bool readData(SerialPort &comm, const QString &filterNo, const QString &filterValue, QString &data) override;
    void fillReaderValues(RecordSet &values, const QString &data) override;

    // Sends the command one character at a time, each followed by 100 ms and a check of
    // its echo; the first wrong echo stops the sending and makes the result false. Then
    // waits waitMs and takes input until none is left. reply gets what came after the
    // last echo. A reader that does not stop sending (ReplyPoller's bounds: 64 polls of
    // 100 ms that find input, 16384 characters) makes the result false.
    //
    // Time bound of a read, whatever the reader sends: the characters of MOD1, SWVn,
    // ASCRDP and LCL at 100 ms each (1.7 s), their waits and the pause after MOD1
    // (10.4 s), and four drains of at most 65 polls of 100 ms (6.5 s): 38.1 s.
    bool sendEchoed(SerialPort &comm, const QString &command, QString &reply, int waitMs);

private:
    ReaderEnvironment mEnvironment;
    bool mFlooded = false; // a sendEchoed of this read met a reader that would not stop
};
