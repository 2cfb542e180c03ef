#pragma once

#include "FakeClock.h"

#include "platform/SerialPort.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

// A serial port for unit tests, on the virtual clock. What the code under test sends goes
// to a device function, which answers through reply(): each answer arrives after its
// delay on the virtual clock, so a FakeSleeper that moves the clock lets a driver poll
// for minutes in no time.
//
//     FakeClock clock;
//     FakeSleeper sleeper(clock);
//     FakeSerialPort port(clock);
//     port.setDevice([](FakeSerialPort &p, const QString &sent) { p.reply("OK\r\n", 150); });
class FakeSerialPort : public SerialPort {
public:
    using Device = std::function<void(FakeSerialPort &port, const QString &sent)>;

    explicit FakeSerialPort(FakeClock &clock) : mClock(clock) {}

    void setDevice(Device device) { mDevice = std::move(device); }
    // The next opens fail with this description (empty: they succeed again).
    void failOpen(const QString &description) { mOpenFailure = description; }

    // Called by the device: text that arrives delayMs after now.
    void reply(const QString &text, int delayMs = 0);

    // What happened.
    QStringList sent() const { return mSent; }
    QString sentText() const { return mSent.join(QString()); }
    int opens() const { return mOpens; }
    int discards() const { return mDiscards; }
    QList<int> handshakingHistory() const { return mHandshakingHistory; }

    void setCommPort(int number) override
    {
        mCommPort = number;
        mName.clear();
    }
    int commPort() const override { return mCommPort; }
    void setPortName(const QString &devicePath) override { mName = devicePath; }
    QString portName() const override { return mName.isEmpty() ? QStringLiteral("COM%1").arg(mCommPort) : mName; }
    void setSettings(const QString &settings) override { mSettings = settings; }
    QString settings() const override { return mSettings; }
    void setHandshaking(int code) override;
    int handshaking() const override { return mHandshaking; }
    void setRTSEnable(bool enable) override { mRts = enable; }
    bool rtsEnable() const override { return mRts; }
    void setDTREnable(bool enable) override { mDtr = enable; }
    bool dtrEnable() const override { return mDtr; }
    void setNullDiscard(bool discard) override { mNullDiscard = discard; }
    bool nullDiscard() const override { return mNullDiscard; }

    bool portOpen() const override { return mOpen; }
    bool open() override;
    void close() override;
    QString errorDescription() const override { return mError; }

    void output(const QString &text) override;
    QString input() override;
    int inBufferCount() override;
    void discardInput() override;

private:
    struct Pending {
        QDateTime due;
        QString text;
    };
    QString takeDue();

    FakeClock &mClock;
    Device mDevice;
    QList<Pending> mPending;
    QString mArrived;
    QStringList mSent;
    QString mOpenFailure;
    QString mError;
    QString mName;
    QString mSettings = QStringLiteral("9600,N,8,1");
    QList<int> mHandshakingHistory;
    int mCommPort = 1;
    int mHandshaking = 0;
    int mOpens = 0;
    int mDiscards = 0;
    bool mOpen = false;
    bool mRts = false;
    bool mDtr = false;
    bool mNullDiscard = false;
};
