#include "readers/drivers/THERMOmaxReplies.h"

#include "core/Wells.h"
#include "readers/WellValues.h"

namespace THERMOmaxReplies {

QString selectFilter(const QString &filterNo)
{
    return QStringLiteral("SWV") + filterNo.trimmed();
}

bool echoMatches(QChar sent, const QString &reply)
{
    return !reply.isEmpty() && reply.left(1).toUpper() == QString(sent);
}

void parse(RecordSet &values, const QString &data)
{
    for (int col = 0; col < wells::kCols; ++col) {
        for (int row = 0; row < wells::kRows; ++row)
            WellValues::append(values, QString(), data.mid(row * kLineSize + col * kFieldSize, kValueSize));
    }
}

DriverMessages::PlateFault plateFault(const QString &data)
{
    using DriverMessages::PlateFault;
    if (data.size() < kPlateSize)
        return PlateFault::Partial;
    return data.size() == kPlateSize ? PlateFault::None : PlateFault::NotAPlate;
}

} // namespace THERMOmaxReplies
