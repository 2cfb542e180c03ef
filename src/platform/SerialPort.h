#pragma once

#include <QString>

// The serial line to a plate reader, with the operations the reader drivers use. The port
// is chosen by its number (COM1 is 1; the number maps to a device path, see SerialPortMap)
// or by an explicit device path. Texts go over the line byte for byte, one character per
// byte (Latin-1).
//
// Nothing here throws: a port that can't be opened answers false and leaves the reason in
// errorDescription(); sending or reading on a closed port does nothing. Setting the
// modem lines (RTS, DTR) is best effort: a device that refuses it (a pseudo-terminal, some
// adapters) goes on working, and nobody is told.
class SerialPort {
public:
    // Flow control codes, as the reader settings store them.
    enum Handshaking { NoHandshaking = 0, XOnXOff = 1, RequestToSend = 2, RequestToSendXOnXOff = 3 };

    virtual ~SerialPort() = default;

    // The port number (1 for COM1). Choosing a number drops an explicit device path.
    virtual void setCommPort(int number) = 0;
    virtual int commPort() const = 0;
    // An explicit device path ("/dev/ttyUSB0", "COM3"), which the port opens whatever its
    // number; empty to choose by number again. The number stays, for the messages.
    virtual void setPortName(const QString &devicePath) = 0;
    // The device the port opens: the explicit path, or the path of the number.
    virtual QString portName() const = 0;

    // Line settings "baud,parity,data bits,stop bits", e.g. "9600,N,8,1". Taken as they
    // are; a text that can't be used makes the next open fail.
    virtual void setSettings(const QString &settings) = 0;
    virtual QString settings() const = 0;
    // One of the Handshaking codes; applies at once when the port is open.
    virtual void setHandshaking(int code) = 0;
    virtual int handshaking() const = 0;
    virtual void setRTSEnable(bool enable) = 0;
    virtual bool rtsEnable() const = 0;
    virtual void setDTREnable(bool enable) = 0;
    virtual bool dtrEnable() const = 0;
    // When set, NUL characters that arrive are dropped.
    virtual void setNullDiscard(bool discard) = 0;
    virtual bool nullDiscard() const = 0;

    // PortOpen.
    virtual bool portOpen() const = 0;
    // Opens the port with the current settings; false when it can't be opened (or is
    // already open), with the reason in errorDescription().
    virtual bool open() = 0;
    virtual void close() = 0;
    // Why the last open failed; empty after a successful open.
    virtual QString errorDescription() const = 0;

    // Sends the text and waits until it has left.
    virtual void output(const QString &text) = 0;
    // Takes everything that has arrived so far; empty when nothing has.
    virtual QString input() = 0;
    // The number of characters that have arrived and not been taken.
    virtual int inBufferCount() = 0;
    // Drops everything that has arrived and not been taken (InBufferCount = 0).
    virtual void discardInput() = 0;
};
