#include "FaultyLine.h"

FaultyLine::FaultyLine(Fault fault, const QString &plate, Instrument instrument)
    : mFault(fault), mPlate(plate), mInstrument(std::move(instrument))
{
}

void FaultyLine::attach(PtySimulator &simulator)
{
    mSimulator = &simulator;
    if (mFault == Fault::FloodFromStart)
        simulator.flood(kFloodPattern);
}

bool FaultyLine::isPlatePiece(const QString &text) const
{
    return text.size() >= 20 && mPlate.contains(text);
}

QList<PtySimulator::Reply> FaultyLine::receive(const QString &received)
{
    if (mGone || mFault == Fault::Silent)
        return {};
    if (mFault == Fault::HangUpAtStart) {
        mGone = true;
        mSimulator->hangUp();
        return {};
    }
    QList<PtySimulator::Reply> replies;
    for (PtySimulator::Reply r : mInstrument(received)) {
        if (mFault == Fault::Garbage) {
            for (QChar &c : r.text) {
                mRandom = mRandom * 1103515245u + 12345u;
                c = QChar(u'A' + (mRandom >> 16) % 26);
            }
        }
        if (!isPlatePiece(r.text)) {
            replies.append(r);
            continue;
        }
        switch (mFault) {
        case Fault::NulBytes: r.text = QString(r.text.size(), QChar(0)); break;
        case Fault::Flood:
            mSimulator->flood(kFloodPattern);
            mGone = true;
            return replies;
        case Fault::HalfPlateThenSilence:
        case Fault::DisconnectMidRead: {
            const qsizetype left = mPlate.size() / 2 - mPlateSent;
            if (r.text.size() >= left) {
                r.text.truncate(left);
                mGone = true;
                if (mFault == Fault::DisconnectMidRead)
                    mSimulator->hangUp();
            }
            break;
        }
        default: break;
        }
        mPlateSent += r.text.size();
        replies.append(r);
        if (mGone)
            break;
    }
    return replies;
}
