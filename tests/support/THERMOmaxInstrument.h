#pragma once

#include "PtySimulator.h"

#include <QList>
#include <QString>
#include <QStringList>

// A Molecular Devices reader (EMAX, VMAX, ThermoMax) as the program meets it on the serial
// line: every character that arrives is echoed at once, in capitals; a completed
// "ASCRDP" is answered, after its echo, with the plate (usually a capture from
// tests/data). Commands: CR, "BEP", "MOD1", "SWV<n>", "ASCRDP", "LCL".
//
// The instrument only decides what to answer; the FakeSerialPort or a PtySimulator
// delivers it.
class THERMOmaxInstrument {
public:
    using Reply = PtySimulator::Reply;
    static constexpr int kPlateAfterMs = 30;

    explicit THERMOmaxInstrument(const QString &plate) : mPlate(plate) {}

    QList<Reply> receive(const QString &bytes);

    // Some readers echo in lower case.
    void setLowerCaseEcho(bool lower) { mLowerCase = lower; }
    // A reader switched off echoes nothing.
    void setSilent(bool silent) { mSilent = silent; }
    // The echo of this character is replaced by another (a garbled line).
    void garbleEchoOf(QChar c, QChar instead) { mGarbled = c; mInstead = instead; }

    // The commands completed so far ("\r" for the wake-up).
    QStringList commands() const { return mCommands; }
    int filter() const { return mFilter; }

private:
    QString mPlate;
    QString mCommand;
    QStringList mCommands;
    QChar mGarbled;
    QChar mInstead;
    int mFilter = 0;
    bool mLowerCase = false;
    bool mSilent = false;
};
