#pragma once

#include "FakeSerialPort.h"
#include "PtySimulator.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

// The serial plate readers as the program meets them on the line. The instrument only
// decides what to answer and when; a FakeSerialPort (attach) on the virtual clock or a
// PtySimulator on a real pseudo-terminal delivers it. The plate is usually a capture from
// tests/data.
//
//  Multiscan, MC340: ASCII commands ending in CR LF. "R" takes the reader under remote
//    control, "Q" releases it; "F<1-8>", "A" and the read ("P", "M12") answer "ER2"
//    unless it is remote; another filter is "ER1". The plate comes line by line.
//  MS2: frames (STX text ETX), acknowledged with ACK at once and answered STX text " OK"
//    ETX later; once that is acknowledged the reader closes with STX ACK ETX. The read
//    "11" is announced with ENQ; the program's ACK brings the plate. A lone ACK out of an
//    exchange is answered with ACK.
//  BioWhittaker: frames. "G" is answered STX "+0000READY" ETX, "N 1 <nm>" with the plate
//    once measured, anything else STX "-" ETX.
//  THERMOmax: each character echoed at once in capitals; "ASCRDP" is followed by the plate.
class SerialInstrument {
public:
    enum class Model { Multiscan, MC340, MS2, BioWhittaker, THERMOmax };
    using Reply = PtySimulator::Reply;
    using Answer = QList<Reply>;

    SerialInstrument(Model model, const QString &plate) : mModel(model), mPlate(plate) {}

    // Bytes that came down the line; returns what to answer.
    QList<Reply> receive(const QString &bytes);
    // Answers through the fake port from now on.
    void attach(FakeSerialPort &port);

    // The next answers to a command, one per time it comes, in place of the normal one.
    // For LabSystems "F" stands for any filter, and a scripted "OK" has the command's effect.
    void script(const QString &command, const QList<Answer> &answers);
    // A silent reader answers nothing; one switched off answers each command with NULs.
    void setSilent(bool silent) { mSilent = silent; }
    void setSwitchedOff(bool off) { mOff = off; }
    // The echo of this character is another (a garbled line).
    void garbleEchoOf(QChar c, QChar instead)
    {
        mGarbled = c;
        mInstead = instead;
    }

    // The commands received (frame texts, LabSystems commands without CR LF, THERMOmax
    // commands with "\r" for the wake-up).
    QStringList commands() const { return mCommands; }
    int count(const QString &command) const;
    bool remote() const { return mRemote; }
    QString readCommand() const { return mModel == Model::MC340 ? QStringLiteral("M12") : QStringLiteral("P"); }

    static Answer answer(const QString &text, int afterMs = 40) { return {Reply{text, afterMs}}; }
    static QString framed(const QString &text);

private:
    QString key(const QString &command) const;
    QList<Reply> completed(const QString &command);
    Answer normalAnswer(const QString &command);
    Answer labSystemsAnswer(const QString &command);
    QList<Reply> ms2Acknowledged();
    QList<Reply> echo(const QString &bytes);

    enum class Waiting { Nothing, AckOfEnq, AckOfAnswer, AckOfClosing };
    Model mModel;
    QString mPlate;
    QString mLine;
    bool mInFrame = false;
    QStringList mCommands;
    QMap<QString, QList<Answer>> mScript;
    Waiting mWaiting = Waiting::Nothing;
    QChar mGarbled;
    QChar mInstead;
    bool mSilent = false;
    bool mOff = false;
    bool mRemote = false;
};
