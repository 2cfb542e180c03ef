#include "readers/drivers/BioWhittakerReplies.h"

#include "core/LegacyFormat.h"
#include "core/Wells.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"

#include <cmath>
#include <limits>

namespace BioWhittakerReplies {

QString frame(const QString &text)
{
    return QString(kSTX) + text + QString(kETX);
}

QString testFrame()
{
    return frame(QStringLiteral("G"));
}

QString readFrame(const QString &filterValue)
{
    return frame(QStringLiteral("N 1 ") + filterValue.trimmed());
}

QChar status(const QString &reply)
{
    return reply.size() >= 2 ? reply[1] : QChar();
}

int firstCode(const QString &reply)
{
    return reply.isEmpty() ? 0 : reply[0].unicode();
}

namespace {

// The field as a 32-bit integer, halves rounded to even.
qint32 toLong(const QString &field, int position)
{
    if (legacy::isNumeric(field)) {
        const double value = std::nearbyint(legacy::toDouble(field));
        if (value >= std::numeric_limits<qint32>::min() && value <= std::numeric_limits<qint32>::max())
            return qint32(value);
    }
    throw ReadError(QStringLiteral("The reader's data has \"%1\" at character %2 where a number was expected.")
                        .arg(field)
                        .arg(position));
}

} // namespace

void parse(RecordSet &values, const QString &data)
{
    int position = kFirstValue;
    for (int col = 0; col < wells::kCols; ++col) {
        for (int row = 0; row < wells::kRows; ++row) {
            const qint32 number = toLong(data.mid(position - 1, kValueSize), position);
            WellValues::append(values, QString(), legacy::doubleToText(number / 1000.0));
            position += kValueSize;
        }
        position += 1;
    }
}

DriverMessages::PlateFault plateFault(const QString &data)
{
    using DriverMessages::PlateFault;
    constexpr int plateEnd = kFirstValue - 1 + wells::kCols * (wells::kRows * kValueSize + 1) - 1;
    if (data.size() < plateEnd)
        return PlateFault::Partial;
    RecordSet values = WellValues::create();
    try {
        parse(values, data);
    } catch (const ReadError &) {
        return PlateFault::NotAPlate;
    }
    return PlateFault::None;
}

} // namespace BioWhittakerReplies
