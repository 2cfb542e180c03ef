#include "FakeSerialPort.h"

void FakeSerialPort::reply(const QString &text, int delayMs)
{
    mPending.append({mClock.now().addMSecs(delayMs), text});
}

void FakeSerialPort::setHandshaking(int code)
{
    mHandshaking = code;
    mHandshakingHistory.append(code);
}

bool FakeSerialPort::open()
{
    if (mOpen) {
        mError = QStringLiteral("Port already open");
        return false;
    }
    if (!mOpenFailure.isEmpty()) {
        mError = mOpenFailure;
        return false;
    }
    mOpen = true;
    mError.clear();
    ++mOpens;
    return true;
}

void FakeSerialPort::close()
{
    if (!mOpen)
        return;
    mOpen = false;
    mArrived.clear();
    mPending.clear();
}

void FakeSerialPort::output(const QString &text)
{
    if (!mOpen)
        return;
    mSent.append(text);
    if (mDevice)
        mDevice(*this, text);
}

QString FakeSerialPort::takeDue()
{
    // In order of arrival; replies due at the same moment keep the order they were given.
    std::stable_sort(mPending.begin(), mPending.end(),
                     [](const Pending &a, const Pending &b) { return a.due < b.due; });
    const QDateTime now = mClock.now();
    while (!mPending.isEmpty() && mPending.first().due <= now)
        mArrived += mPending.takeFirst().text;
    if (mNullDiscard)
        mArrived.remove(QChar(0));
    return mArrived;
}

QString FakeSerialPort::input()
{
    if (!mOpen)
        return QString();
    takeDue();
    return std::exchange(mArrived, QString());
}

int FakeSerialPort::inBufferCount()
{
    return mOpen ? int(takeDue().size()) : 0;
}

void FakeSerialPort::discardInput()
{
    ++mDiscards;
    takeDue();
    mArrived.clear();
}
