#pragma once

#include "PtySimulator.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

// An MS2 reader as the program meets it on the serial line. A command frame (STX, text,
// ETX) is acknowledged with ACK at once; its answer frame, STX text " OK" ETX, follows
// after kAnswerMs, and once the program has acknowledged it the reader closes the
// exchange with an empty acknowledge frame (STX ACK ETX), whose ACK it takes silently.
// The read, "11", is announced with ENQ when the plate is measured; the program's ACK
// brings the plate (usually a capture from tests/data) as one data answer. An ACK out of
// any exchange (the communication test's) is answered with ACK.
//
// Tests can script a command's answer in place of the exchange, keep the reader silent,
// or switch it off (it then answers each frame with a NUL).
class MS2Instrument {
public:
    using Reply = PtySimulator::Reply;
    using Answer = QList<Reply>;
    static constexpr int kAckMs = 50;
    static constexpr int kAnswerMs = 1600;
    static constexpr int kMeasuredMs = 500;
    static constexpr int kDataMs = 100;

    explicit MS2Instrument(const QString &plate) : mPlate(plate) {}

    QList<Reply> receive(const QString &bytes);

    // The next time the command (frame text) comes, this is the answer, and no exchange
    // is open after it.
    void script(const QString &command, const Answer &answer) { mScript.insert(command, answer); }
    void setSilent(bool silent) { mSilent = silent; }
    void setSwitchedOff(bool off) { mOff = off; }

    // The texts of the frames received, and "ACK" for each ACK out of a frame.
    QStringList received() const { return mReceived; }
    QStringList commands() const;

private:
    enum class Waiting { Nothing, AckOfEnq, AckOfAnswer, AckOfClosing };
    QList<Reply> acknowledged();

    QString mPlate;
    QString mFrame;
    bool mInFrame = false;
    QStringList mReceived;
    QMap<QString, Answer> mScript;
    Waiting mWaiting = Waiting::Nothing;
    bool mSilent = false;
    bool mOff = false;
};
