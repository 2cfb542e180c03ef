#include "readers/drivers/ReplyPoller.h"

#include "platform/Clock.h"
#include "platform/SerialPort.h"

ReplyPoller::ReplyPoller(SerialPort &comm, Sleeper &sleeper, int maxPieces, qsizetype maxChars)
    : mComm(comm), mSleeper(sleeper), mPiecesLeft(maxPieces), mMaxChars(maxChars)
{
}

bool ReplyPoller::keep(QString &buffer, const QString &text)
{
    if (buffer.size() + text.size() > mMaxChars) {
        mEndless = true;
        return false;
    }
    buffer += text;
    return true;
}

bool ReplyPoller::poll(qint16 step, int waitMs, const Rule &rule)
{
    bool verdict = true;
    bool first = true;
    while (!mEndless) {
        mSleeper.sleep(waitMs);
        Answer answer;
        if (mComm.inBufferCount() < 1) {
            answer = rule(step, waitMs, nullptr);
        } else {
            if (mPiecesLeft-- <= 0) {
                mEndless = true;
                mComm.discardInput();
                break;
            }
            const QString input = mComm.input();
            answer = rule(step, waitMs, &input);
        }
        if (first)
            verdict = answer.verdict;
        first = false;
        if (answer.nextWaitMs < 0)
            break;
        step = answer.nextStep;
        waitMs = answer.nextWaitMs;
    }
    return mEndless ? false : verdict;
}
