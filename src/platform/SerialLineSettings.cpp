#include "platform/SerialLineSettings.h"

#include <QStringList>

std::optional<SerialLineSettings> SerialLineSettings::parse(const QString &text)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 4)
        return std::nullopt;
    SerialLineSettings s;
    bool ok = false;
    s.baudRate = parts[0].trimmed().toInt(&ok);
    if (!ok || s.baudRate <= 0)
        return std::nullopt;

    const QString parity = parts[1].trimmed().toUpper();
    if (parity.size() != 1 || !QStringLiteral("NEOMS").contains(parity[0]))
        return std::nullopt;
    s.parity = parity[0];

    s.dataBits = parts[2].trimmed().toInt(&ok);
    if (!ok || s.dataBits < 5 || s.dataBits > 8)
        return std::nullopt;

    const QString stop = parts[3].trimmed();
    if (stop == u"1")
        s.stopBits = 1;
    else if (stop == u"2")
        s.stopBits = 2;
    else if (stop == u"1.5")
        s.stopBits = kOneAndAHalfStopBits;
    else
        return std::nullopt;
    return s;
}

QString SerialLineSettings::toText() const
{
    const QString stop = stopBits == kOneAndAHalfStopBits ? QStringLiteral("1.5") : QString::number(stopBits);
    return QStringLiteral("%1,%2,%3,%4").arg(baudRate).arg(parity).arg(dataBits).arg(stop);
}
