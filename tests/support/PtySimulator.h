#pragma once

#include "platform/Clock.h"

#include <QList>
#include <QString>

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>

class FakeClock;

// A device on the far end of a real pseudo-terminal, so that the production serial layer
// (QtSerialPort on the pty's slave device) talks to it as to an instrument on a serial
// line. A thread reads what arrives on the master side, hands it to the device function
// and writes the answers back after their delays.
//
// Delays are in the virtual milliseconds of the protocol, run timeScale times faster in
// real time; a ScaledSleeper with the same scale keeps the driver's polls in step.
class PtySimulator {
public:
    struct Reply {
        QString text;
        int afterMs = 0;
    };
    using Device = std::function<QList<Reply>(const QString &received)>;

    PtySimulator(Device device, int timeScale);
    ~PtySimulator();

    PtySimulator(const PtySimulator &) = delete;
    PtySimulator &operator=(const PtySimulator &) = delete;

    // False when no pseudo-terminal could be made (the test should be skipped).
    bool isValid() const { return mValid; }
    // The device path to open, "/dev/pts/N".
    QString slavePath() const { return mSlavePath; }
    // Everything received so far.
    QString received() const;

    // Faults of the line, callable from the device function too. flood: from now on the
    // bytes of pattern go out again and again as fast as the line takes them, after any
    // answers due. hangUp: the far end goes away (the master side is closed), as when an
    // instrument is switched off or its cable pulled; the device hears nothing more.
    void flood(const QByteArray &pattern);
    void hangUp() { mHangUp = true; }

private:
    void run();
    bool writeSome(const QByteArray &bytes, qsizetype &written);

    Device mDevice;
    int mTimeScale;
    bool mValid = false;
    int mMaster = -1;
    int mSlave = -1; // kept open so the pty lives on while the port is closed
    QString mSlavePath;
    std::atomic<bool> mStop{false};
    std::atomic<bool> mHangUp{false};
    QByteArray mFlood; // under mMutex
    mutable std::mutex mMutex;
    QString mReceived;
    std::thread mThread;
};

// Sleeps really, timeScale times shorter than asked (at least a little), and moves the
// virtual clock by the full time. Sleeps of a second or more may run faster still
// (longTimeScale), which keeps the long polls of a read short without rushing the quick
// command polls.
class ScaledSleeper : public Sleeper {
public:
    ScaledSleeper(FakeClock &clock, int timeScale, int longTimeScale = 0)
        : mClock(clock), mTimeScale(timeScale), mLongTimeScale(longTimeScale > 0 ? longTimeScale : timeScale)
    {
    }
    void sleep(int milliseconds) override;
    int calls() const { return mCalls; }

private:
    FakeClock &mClock;
    int mTimeScale;
    int mLongTimeScale;
    int mCalls = 0;
};
