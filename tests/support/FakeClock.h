#pragma once

#include "platform/Clock.h"

// A clock that moves only when told to, and a sleeper that moves it at once: protocol
// waits of minutes run in no time.
class FakeClock : public Clock {
public:
    explicit FakeClock(const QDateTime &start = QDateTime(QDate(2026, 11, 23), QTime(9, 30, 0))) : mNow(start) {}
    QDateTime now() const override { return mNow; }
    void set(const QDateTime &now) { mNow = now; }
    void advance(int milliseconds) { mNow = mNow.addMSecs(milliseconds); }

private:
    QDateTime mNow;
};

class FakeSleeper : public Sleeper {
public:
    explicit FakeSleeper(FakeClock &clock) : mClock(clock) {}
    void sleep(int milliseconds) override
    {
        mTotal += milliseconds;
        ++mCalls;
        mClock.advance(milliseconds);
    }
    qint64 totalSlept() const { return mTotal; }
    int calls() const { return mCalls; }

private:
    FakeClock &mClock;
    qint64 mTotal = 0;
    int mCalls = 0;
};
