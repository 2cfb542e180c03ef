#include "MS2Instrument.h"

namespace {

constexpr QChar kSTX(2);
constexpr QChar kETX(3);
constexpr QChar kENQ(5);
constexpr QChar kACK(6);

QString framed(const QString &text)
{
    return QString(kSTX) + text + QString(kETX);
}

} // namespace

QStringList MS2Instrument::commands() const
{
    QStringList frames;
    for (const QString &r : mReceived) {
        if (r != u"ACK")
            frames << r;
    }
    return frames;
}

QList<MS2Instrument::Reply> MS2Instrument::acknowledged()
{
    switch (mWaiting) {
    case Waiting::AckOfEnq:
        mWaiting = Waiting::AckOfAnswer;
        return {Reply{mPlate, kDataMs}};
    case Waiting::AckOfAnswer:
        mWaiting = Waiting::AckOfClosing;
        return {Reply{framed(QString(kACK)), kAckMs}};
    case Waiting::AckOfClosing:
        mWaiting = Waiting::Nothing;
        return {};
    case Waiting::Nothing:
        break;
    }
    return {Reply{QString(kACK), kAckMs}};
}

QList<MS2Instrument::Reply> MS2Instrument::receive(const QString &bytes)
{
    QList<Reply> replies;
    for (const QChar c : bytes) {
        if (c == kSTX) {
            mInFrame = true;
            mFrame.clear();
            continue;
        }
        if (mInFrame && c != kETX) {
            mFrame += c;
            continue;
        }
        if (!mInFrame && c != kACK)
            continue;
        const bool isFrame = mInFrame;
        mInFrame = false;
        mReceived << (isFrame ? mFrame : QStringLiteral("ACK"));
        if (mSilent)
            continue;
        if (mOff) {
            replies.append(Reply{QString(QChar(0)), kAckMs});
            continue;
        }
        if (!isFrame) {
            replies += acknowledged();
            continue;
        }
        if (mScript.contains(mFrame)) {
            replies += mScript.take(mFrame);
            mWaiting = Waiting::Nothing;
            continue;
        }
        replies.append(Reply{QString(kACK), kAckMs});
        if (mFrame == u"11") {
            replies.append(Reply{QString(kENQ), kMeasuredMs});
            mWaiting = Waiting::AckOfEnq;
        } else {
            replies.append(Reply{framed(mFrame + QStringLiteral(" OK")), kAnswerMs});
            mWaiting = Waiting::AckOfAnswer;
        }
    }
    return replies;
}
