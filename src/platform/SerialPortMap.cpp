#include "platform/SerialPortMap.h"

#include "platform/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextStream>

#include <algorithm>

SerialPortMap SerialPortMap::load(const QString &folderPath)
{
    SerialPortMap map;
    if (folderPath.isEmpty())
        return map;
    QFile file(QDir(folderPath).filePath(kFileName));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return map;
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QString line = in.readLine().trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const qsizetype eq = line.indexOf(u'=');
        if (eq <= 0)
            continue;
        bool ok = false;
        const int number = line.left(eq).trimmed().toInt(&ok);
        const QString path = line.mid(eq + 1).trimmed();
        if (ok && number > 0 && number <= 255 && !path.isEmpty())
            map.mNamed.insert(number, path);
    }
    return map;
}

bool SerialPortMap::save(const QString &folderPath) const
{
    QByteArray text("# Serial devices of this workstation: port number=device path\n");
    for (auto it = mNamed.begin(); it != mNamed.end(); ++it)
        text += QByteArray::number(it.key()) + '=' + it.value().toUtf8() + '\n';
    return SafeFile::writeWhole(QDir(folderPath).filePath(kFileName), text);
}

QString SerialPortMap::builtInPath(int number)
{
#ifdef Q_OS_WIN
    return number >= 1 ? QStringLiteral("COM%1").arg(number) : QString();
#else
    if (number >= 1 && number <= 4)
        return QStringLiteral("/dev/ttyS%1").arg(number - 1);
    if (number >= 5 && number <= kBuiltInCount)
        return QStringLiteral("/dev/ttyUSB%1").arg(number - 5);
    return QString();
#endif
}

QString SerialPortMap::devicePath(int number) const
{
    const auto it = mNamed.find(number);
    return it != mNamed.end() ? it.value() : builtInPath(number);
}

int SerialPortMap::count() const
{
    return mNamed.isEmpty() ? kBuiltInCount : std::max(kBuiltInCount, mNamed.lastKey());
}

QStringList SerialPortMap::portNames() const
{
    QStringList names;
    for (int n = 1; n <= count(); ++n) {
        const QString path = devicePath(n);
        names << (path.isEmpty() ? QStringLiteral("COM%1").arg(n) : path);
    }
    return names;
}

int SerialPortMap::numberOf(const QString &nameOrPath) const
{
    const QString wanted = nameOrPath.trimmed();
    if (wanted.isEmpty())
        return 0;
    for (int n = 1; n <= count(); ++n) {
        if (devicePath(n) == wanted)
            return n;
    }
    // "COM3" is port 3 wherever the program runs, as the reader settings have always said.
    static const QRegularExpression com(QStringLiteral("^COM([1-9][0-9]{0,2})$"),
                                        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = com.match(wanted);
    if (m.hasMatch()) {
        const int n = m.captured(1).toInt();
        if (n <= 255 && (n <= kBuiltInCount || !builtInPath(n).isEmpty()))
            return n;
    }
    return 0;
}

int SerialPortMap::addPath(const QString &path)
{
    int number = numberOf(path);
    if (number > 0 && number <= count())
        return number;
    if (number == 0)
        number = count() + 1;
    mNamed.insert(number, path.trimmed());
    return number;
}
