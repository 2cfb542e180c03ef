#pragma once

#include "FakeClock.h"

#include <QCoreApplication>

// A sleeper on the virtual clock that lets pending events through at each sleep, as the
// production sleeper's local event loop does: what a driver waits for by event arrives,
// and the wait costs no real time.
class EventPumpingSleeper : public Sleeper {
public:
    explicit EventPumpingSleeper(FakeClock &clock) : mClock(clock) {}
    void sleep(int milliseconds) override
    {
        ++mCalls;
        mClock.advance(milliseconds);
        QCoreApplication::processEvents();
    }
    int calls() const { return mCalls; }

private:
    FakeClock &mClock;
    int mCalls = 0;
};
