#pragma once

#include <QDateTime>

// The wall clock. Tests use a virtual clock that only moves when told to (or when a
// fake sleeper sleeps).
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

// Waiting. The production sleeper keeps the user interface painting while it waits;
// the test sleeper advances a virtual clock at once.
class Sleeper {
public:
    virtual ~Sleeper() = default;
    virtual void sleep(int milliseconds) = 0;
};

// The real clock of the machine.
class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};
