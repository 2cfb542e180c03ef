#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

// Which device each serial port number stands for. The reader settings keep a port
// number (1 for COM1); this map turns it into the device that is opened.
//
// Built-in: on Windows port N is "COMN". Elsewhere ports 1 to 4 are the serial ports
// /dev/ttyS0 to /dev/ttyS3 and ports 5 to 8 the USB adapters /dev/ttyUSB0 to /dev/ttyUSB3.
// A workstation can name other devices (a /dev/serial/by-id path, /dev/ttyACM0, ...):
// they are kept in "serialports.txt" in the program's folder, one "N=path" per line,
// and get the numbers after the built-in ones. An entry of the file may also redefine a
// built-in number.
class SerialPortMap {
public:
    static inline const QString kFileName = QStringLiteral("serialports.txt");
    static constexpr int kBuiltInCount = 8;

    // The built-in ports only.
    SerialPortMap() = default;
    // The built-in ports and those named in the folder's file (a missing or unreadable
    // file names none; lines that aren't "N=path" are skipped).
    static SerialPortMap load(const QString &folderPath);
    // Writes the named ports to the folder's file; false when it can't be written.
    bool save(const QString &folderPath) const;

    // The built-in device of a number; empty beyond the built-in ones (except on
    // Windows, where every number is a COM port).
    static QString builtInPath(int number);

    // The device of a port number; empty when the number stands for nothing.
    QString devicePath(int number) const;
    // The ports to offer, numbers 1 to count(): their device paths ("COM1".. on Windows).
    int count() const;
    QStringList portNames() const;
    // The number of a device path or port name; 0 when the map doesn't know it.
    int numberOf(const QString &nameOrPath) const;
    // The number of the path, adding it after the last port when it is new (a "COMN" past
    // the list is added as port N).
    int addPath(const QString &path);
    // The ports the file names.
    const QMap<int, QString> &namedPorts() const { return mNamed; }

private:
    QMap<int, QString> mNamed;
};
