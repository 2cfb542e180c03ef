// The production serial port and its map of port numbers to devices.

#include "PtySimulator.h"
#include "TempProgramFolder.h"

#include "platform/QtSerialPort.h"
#include "platform/SerialLineSettings.h"
#include "platform/SerialPortMap.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

// A device that sends back what it gets, and "\0x\0" on "N".
std::unique_ptr<PtySimulator> echoDevice()
{
    return std::make_unique<PtySimulator>(
        [](const QString &received) {
            if (received == u"N")
                return QList<PtySimulator::Reply>{{QString::fromLatin1("\0x\0", 3), 0}};
            return QList<PtySimulator::Reply>{{received, 0}};
        },
        1);
}

// What comes back for text sent, once count characters are there (waiting briefly, in real time).
QString roundTrip(QtSerialPort &port, const QString &text, int count)
{
    port.output(text);
    QElapsedTimer timer;
    timer.start();
    while (port.inBufferCount() < count && timer.elapsed() < 2000)
        ::usleep(500);
    return port.input();
}

} // namespace

TEST(SerialLineSettings, ReadsTheTextOfTheReaderSettings)
{
    const auto s = SerialLineSettings::parse(QStringLiteral(" 4800 , e ,7, 2"));
    ASSERT_TRUE(s.has_value());
    EXPECT_EQ(s->baudRate, 4800);
    EXPECT_EQ(s->parity, QChar(u'E'));
    EXPECT_EQ(s->dataBits, 7);
    EXPECT_EQ(s->stopBits, 2);
    EXPECT_EQ(s->toText(), QStringLiteral("4800,E,7,2"));
    EXPECT_EQ(SerialLineSettings::parse(QStringLiteral("9600,N,8,1.5"))->toText(), QStringLiteral("9600,N,8,1.5"));
    for (const char *bad : {"", "9600", "9600,N,8", "9600,X,8,1", "fast,N,8,1", "9600,N,9,1", "9600,N,8,3", ",,,"})
        EXPECT_FALSE(SerialLineSettings::parse(QString::fromLatin1(bad)).has_value()) << bad;
}

// Ports are named by device path on Linux: a number stands for a usual device, and a
// typed device becomes the next number, kept for the workstation.
TEST(SerialPortMap, NumbersStandForDevicesAndATypedDeviceIsKept)
{
    const SerialPortMap usual;
#ifndef Q_OS_WIN
    EXPECT_EQ(usual.devicePath(1), QStringLiteral("/dev/ttyS0"));
    EXPECT_EQ(usual.devicePath(5), QStringLiteral("/dev/ttyUSB0"));
    EXPECT_EQ(usual.devicePath(9), QString());
    EXPECT_EQ(usual.numberOf(QStringLiteral("/dev/ttyUSB1")), 6);
#endif
    EXPECT_EQ(usual.numberOf(QStringLiteral("com3")), 3);

    QTemporaryDir dir;
    SerialPortMap map = SerialPortMap::load(dir.path());
    EXPECT_EQ(map.addPath(QStringLiteral("/dev/serial/by-id/usb-FTDI_reader")), 9);
    EXPECT_EQ(map.addPath(QStringLiteral("/dev/serial/by-id/usb-FTDI_reader")), 9);
    EXPECT_EQ(map.addPath(QStringLiteral("/dev/ttyACM0")), 10);
    ASSERT_TRUE(map.save(dir.path()));
    const SerialPortMap again = SerialPortMap::load(dir.path());
    EXPECT_EQ(again.devicePath(9), QStringLiteral("/dev/serial/by-id/usb-FTDI_reader"));
    EXPECT_EQ(again.numberOf(QStringLiteral("/dev/ttyACM0")), 10);
}

TEST(SerialPortMap, AFileMayRedefineAPortAndItsOddLinesAreSkipped)
{
    QTemporaryDir dir;
    TempProgramFolder::writeFile(QDir(dir.path()).filePath(SerialPortMap::kFileName),
                                 "# devices\n2=/dev/ttyUSB7\nnonsense\n0=/dev/null\n=x\n12 = /dev/ttyACM1 \n");
    const SerialPortMap map = SerialPortMap::load(dir.path());
    EXPECT_EQ(map.devicePath(2), QStringLiteral("/dev/ttyUSB7"));
    EXPECT_EQ(map.devicePath(12), QStringLiteral("/dev/ttyACM1"));
    EXPECT_EQ(map.count(), 12);
    EXPECT_EQ(map.namedPorts().size(), 2);
}

TEST(QtSerialPort, APortThatCannotBeOpenedSaysWhy)
{
    QTemporaryDir dir;
    QtSerialPort port(dir.path());
    port.setCommPort(2);
    port.setPortName(QStringLiteral("/dev/no-such-reader"));
    EXPECT_FALSE(port.open());
    EXPECT_TRUE(port.errorDescription().startsWith(QStringLiteral("/dev/no-such-reader: ")))
        << port.errorDescription().toStdString();
    // Nothing happens on a closed port.
    port.output(QStringLiteral("R\r\n"));
    EXPECT_EQ(port.input(), QString());

    QtSerialPort unknown(dir.path());
    unknown.setCommPort(40);
    EXPECT_FALSE(unknown.open());
    EXPECT_EQ(unknown.errorDescription(), QStringLiteral("No serial device is known for port number 40"));

    auto device = echoDevice();
    if (!device->isValid())
        GTEST_SKIP() << "no pseudo-terminal available";
    QtSerialPort badSettings;
    badSettings.setPortName(device->slavePath());
    badSettings.setSettings(QStringLiteral("9600,Q,8,1"));
    EXPECT_FALSE(badSettings.open());
    EXPECT_EQ(badSettings.errorDescription(), QStringLiteral("Invalid port settings '9600,Q,8,1'"));
}

TEST(QtSerialPort, ANumberOpensTheDeviceTheWorkstationNamedForIt)
{
    auto device = echoDevice();
    if (!device->isValid())
        GTEST_SKIP() << "no pseudo-terminal available";
    QTemporaryDir dir;
    SerialPortMap map;
    EXPECT_EQ(map.addPath(device->slavePath()), 9);
    ASSERT_TRUE(map.save(dir.path()));
    QtSerialPort port(dir.path());
    port.setCommPort(9);
    // A pseudo-terminal has no RTS or DTR; setting them fails inside the serial layer and does no harm.
    port.setRTSEnable(true);
    port.setDTREnable(true);
    ASSERT_TRUE(port.open()) << port.errorDescription().toStdString();
    EXPECT_EQ(port.errorDescription(), QString());
    port.setHandshaking(SerialPort::RequestToSend);
    // Characters beyond ASCII go over the line as single bytes.
    const QString text = QString::fromLatin1("\x02"
                                             "7\x03\xb0");
    EXPECT_EQ(roundTrip(port, text, 4), text);
    EXPECT_EQ(device->received(), text);
    EXPECT_EQ(port.input(), QString());
    port.close();
    EXPECT_FALSE(port.portOpen());
}

TEST(QtSerialPort, InputCanBeCountedDiscardedAndFreedOfNuls)
{
    auto device = echoDevice();
    if (!device->isValid())
        GTEST_SKIP() << "no pseudo-terminal available";
    QtSerialPort port;
    port.setPortName(device->slavePath());
    ASSERT_TRUE(port.open()) << port.errorDescription().toStdString();
    port.output(QStringLiteral("abc"));
    QElapsedTimer timer;
    timer.start();
    while (port.inBufferCount() < 3 && timer.elapsed() < 2000)
        ::usleep(500);
    EXPECT_EQ(port.inBufferCount(), 3);
    port.discardInput();
    EXPECT_EQ(port.inBufferCount(), 0);

    EXPECT_EQ(roundTrip(port, QStringLiteral("N"), 3), QString::fromLatin1("\0x\0", 3));
    port.setNullDiscard(true);
    EXPECT_EQ(roundTrip(port, QStringLiteral("N"), 3), QStringLiteral("x"));
}
