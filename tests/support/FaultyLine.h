#pragma once

#include "PtySimulator.h"

#include <QString>

#include <functional>

// The one failing line of the serial readers' fault tests: it stands between an
// instrument simulator and the PtySimulator and spoils what the instrument answers, in
// one of the ways instruments and cables fail. What part of the answers is "the plate" it
// tells by the capture the instrument sends: any answer of 20 characters or more that is
// a piece of it.
class FaultyLine {
public:
    enum class Fault {
        None,
        Silent,               // nothing ever comes back
        Garbage,              // every answer is random letters of the same length
        HalfPlateThenSilence, // half the plate, then nothing more
        Flood,                // in place of the plate, bytes without end
        FloodFromStart,       // bytes without end from the moment the line is there
        DisconnectMidRead,    // half the plate, then the far end hangs up
        HangUpAtStart,        // the far end hangs up at the first byte it gets
        NulBytes,             // the plate comes as NUL characters
    };
    using Instrument = std::function<QList<PtySimulator::Reply>(const QString &received)>;

    FaultyLine(Fault fault, const QString &plate, Instrument instrument);

    // Puts the line on the simulator (whose device function calls receive()).
    void attach(PtySimulator &simulator);
    QList<PtySimulator::Reply> receive(const QString &received);

    static inline const QByteArray kFloodPattern = QByteArrayLiteral("\x02"
                                                                     "0123456789 FLOOD 9876543210\r\n\x03");

private:
    bool isPlatePiece(const QString &text) const;

    Fault mFault;
    QString mPlate;
    Instrument mInstrument;
    PtySimulator *mSimulator = nullptr;
    qsizetype mPlateSent = 0;
    quint32 mRandom = 12345;
    bool mGone = false;
};
