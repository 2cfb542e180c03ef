#pragma once

#include "platform/SerialPort.h"

#include <QSerialPort>

// The serial port of the program, on QSerialPort. Every operation blocks until it is done:
// output() waits until the text has left, input() and inBufferCount() first take in what
// the device has received, so the drivers can poll between their sleeps without an event
// loop (the production sleeper runs one anyway, which does no harm).
//
// Port numbers are turned into devices through the SerialPortMap of the program's folder,
// read at each open, so a device named in the reader configuration counts at once.
class QtSerialPort : public SerialPort {
public:
    // portMapFolder: the folder of "serialports.txt"; empty for the built-in ports only.
    explicit QtSerialPort(const QString &portMapFolder = QString());
    ~QtSerialPort() override;

    void setCommPort(int number) override;
    int commPort() const override { return mCommPort; }
    void setPortName(const QString &devicePath) override;
    QString portName() const override;

    void setSettings(const QString &settings) override;
    QString settings() const override { return mSettings; }
    void setHandshaking(int code) override;
    int handshaking() const override { return mHandshaking; }
    void setRTSEnable(bool enable) override;
    bool rtsEnable() const override { return mRts; }
    void setDTREnable(bool enable) override;
    bool dtrEnable() const override { return mDtr; }
    void setNullDiscard(bool discard) override { mNullDiscard = discard; }
    bool nullDiscard() const override { return mNullDiscard; }

    bool portOpen() const override { return mPort.isOpen(); }
    bool open() override;
    void close() override;
    QString errorDescription() const override { return mError; }

    void output(const QString &text) override;
    QString input() override;
    int inBufferCount() override;
    void discardInput() override;

    // How long output() waits for a text to leave before it gives up on it.
    static constexpr int kWriteTimeoutMs = 5000;
    // The most the port holds of what has arrived and not been taken: a reader that floods
    // the line is held back by the device's own buffer (or loses bytes) beyond it, and no
    // call loops while input keeps coming.
    static constexpr qint64 kMaxBuffered = 65536;

private:
    // Moves what the device holds into the port's buffer, without waiting. A line that
    // has gone (the device unplugged, the far end hung up) closes the port, with the
    // reason in errorDescription(): what came before is still taken by input(), then the
    // reader is silent.
    void takeIn();
    void closeIfGone();
    bool applyLine();
    void applyFlowControl();
    void applyModemLines();

    QSerialPort mPort;
    QString mPortMapFolder;
    int mCommPort = 1;
    QString mExplicitName;
    QString mSettings = QStringLiteral("9600,N,8,1");
    int mHandshaking = NoHandshaking;
    bool mRts = false;
    bool mDtr = false;
    bool mNullDiscard = false;
    QString mError;
    QByteArray mLeftover; // what came before the line went
};
