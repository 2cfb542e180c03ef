#include "platform/QtSerialPort.h"

#include "platform/SerialLineSettings.h"
#include "platform/SerialPortMap.h"

#include <QElapsedTimer>

QtSerialPort::QtSerialPort(const QString &portMapFolder) : mPortMapFolder(portMapFolder)
{
}

QtSerialPort::~QtSerialPort()
{
    close();
}

void QtSerialPort::setCommPort(int number)
{
    mCommPort = number;
    mExplicitName.clear();
}

void QtSerialPort::setPortName(const QString &devicePath)
{
    mExplicitName = devicePath.trimmed();
}

QString QtSerialPort::portName() const
{
    if (!mExplicitName.isEmpty())
        return mExplicitName;
    return SerialPortMap::load(mPortMapFolder).devicePath(mCommPort);
}

void QtSerialPort::setSettings(const QString &settings)
{
    mSettings = settings;
    if (mPort.isOpen())
        applyLine();
}

void QtSerialPort::setHandshaking(int code)
{
    mHandshaking = code;
    if (mPort.isOpen())
        applyFlowControl();
}

void QtSerialPort::setRTSEnable(bool enable)
{
    mRts = enable;
    if (mPort.isOpen())
        applyModemLines();
}

void QtSerialPort::setDTREnable(bool enable)
{
    mDtr = enable;
    if (mPort.isOpen())
        applyModemLines();
}

bool QtSerialPort::open()
{
    if (mPort.isOpen()) {
        mError = QStringLiteral("Port already open");
        return false;
    }
    const QString device = portName();
    if (device.isEmpty()) {
        mError = QStringLiteral("No serial device is known for port number %1").arg(mCommPort);
        return false;
    }
    const std::optional<SerialLineSettings> line = SerialLineSettings::parse(mSettings);
    if (!line) {
        mError = QStringLiteral("Invalid port settings '%1'").arg(mSettings);
        return false;
    }
    mLeftover.clear();
    mPort.setPortName(device);
    mPort.setReadBufferSize(kMaxBuffered);
    if (!mPort.open(QIODevice::ReadWrite)) {
        mError = device + QStringLiteral(": ") + mPort.errorString();
        return false;
    }
    if (!applyLine()) {
        mError =
            device + QStringLiteral(": the line settings '%1' can't be used: ").arg(mSettings) + mPort.errorString();
        mPort.close();
        return false;
    }
    applyFlowControl();
    applyModemLines();
    mPort.clearError();
    mError.clear();
    return true;
}

void QtSerialPort::close()
{
    if (mPort.isOpen())
        mPort.close();
}

bool QtSerialPort::applyLine()
{
    const std::optional<SerialLineSettings> line = SerialLineSettings::parse(mSettings);
    if (!line)
        return false;
    bool ok = mPort.setBaudRate(line->baudRate);
    switch (line->parity.unicode()) {
    case u'E': ok = mPort.setParity(QSerialPort::EvenParity) && ok; break;
    case u'O': ok = mPort.setParity(QSerialPort::OddParity) && ok; break;
    case u'M': ok = mPort.setParity(QSerialPort::MarkParity) && ok; break;
    case u'S': ok = mPort.setParity(QSerialPort::SpaceParity) && ok; break;
    default: ok = mPort.setParity(QSerialPort::NoParity) && ok; break;
    }
    ok = mPort.setDataBits(static_cast<QSerialPort::DataBits>(line->dataBits)) && ok;
    const QSerialPort::StopBits stop = line->stopBits == 2 ? QSerialPort::TwoStop
                                       : line->stopBits == SerialLineSettings::kOneAndAHalfStopBits
                                           ? QSerialPort::OneAndHalfStop
                                           : QSerialPort::OneStop;
    ok = mPort.setStopBits(stop) && ok;
    return ok;
}

void QtSerialPort::applyFlowControl()
{
    // The serial layer has no combined mode: Xon/Xoff with RTS/CTS runs on RTS/CTS alone.
    switch (mHandshaking) {
    case XOnXOff: mPort.setFlowControl(QSerialPort::SoftwareControl); break;
    case RequestToSend:
    case RequestToSendXOnXOff: mPort.setFlowControl(QSerialPort::HardwareControl); break;
    default: mPort.setFlowControl(QSerialPort::NoFlowControl); break;
    }
    mPort.clearError();
}

void QtSerialPort::applyModemLines()
{
    // Refused by pseudo-terminals and some adapters ("Inappropriate ioctl for device"), and
    // by the port while hardware flow control owns RTS; the line works on without them.
    mPort.setDataTerminalReady(mDtr);
    if (mPort.flowControl() != QSerialPort::HardwareControl)
        mPort.setRequestToSend(mRts);
    mPort.clearError();
}

void QtSerialPort::output(const QString &text)
{
    if (!mPort.isOpen() || text.isEmpty())
        return;
    mPort.write(text.toLatin1());
    QElapsedTimer timer;
    timer.start();
    while (mPort.bytesToWrite() > 0 && timer.elapsed() < kWriteTimeoutMs) {
        if (!mPort.waitForBytesWritten(int(kWriteTimeoutMs - timer.elapsed())))
            break;
    }
    closeIfGone();
}

void QtSerialPort::takeIn()
{
    if (!mPort.isOpen())
        return;
    // A zero wait reads what the device holds and returns at once; a flood can't keep it
    // going past the buffer's size.
    while (mPort.bytesAvailable() < kMaxBuffered && mPort.waitForReadyRead(0)) {
    }
    closeIfGone();
}

void QtSerialPort::closeIfGone()
{
    if (mPort.error() == QSerialPort::ResourceError) {
        mError = mPort.portName() + QStringLiteral(": ") + mPort.errorString();
        mLeftover += mPort.readAll();
        mPort.close();
    }
    mPort.clearError();
}

QString QtSerialPort::input()
{
    takeIn();
    QByteArray bytes = std::exchange(mLeftover, QByteArray());
    if (mPort.isOpen())
        bytes += mPort.read(kMaxBuffered);
    if (mNullDiscard)
        bytes.replace('\0', QByteArray());
    return QString::fromLatin1(bytes);
}

int QtSerialPort::inBufferCount()
{
    takeIn();
    return int(mLeftover.size() + (mPort.isOpen() ? mPort.bytesAvailable() : 0));
}

void QtSerialPort::discardInput()
{
    mLeftover.clear();
    if (!mPort.isOpen())
        return;
    takeIn();
    mLeftover.clear();
    if (!mPort.isOpen())
        return;
    mPort.readAll();
    mPort.clear(QSerialPort::Input);
    mPort.clearError();
}
