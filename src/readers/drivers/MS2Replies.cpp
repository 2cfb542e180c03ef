#include "readers/drivers/MS2Replies.h"

#include "core/LegacyFormat.h"
#include "core/Wells.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/drivers/BioWhittakerReplies.h"

namespace MS2Replies {

namespace {

constexpr int kHeaderFrames = 6;
constexpr int kPositionSize = 4;
constexpr int kValueSize = 6;

} // namespace

QStringList commands(const QString &filterNo)
{
    using BioWhittakerReplies::frame;
    return {QString(kACK),
            frame(QStringLiteral("7")),
            frame(QStringLiteral("320")),
            frame(QStringLiteral("30") + filterNo.trimmed()),
            frame(QStringLiteral("11")),
            frame(QStringLiteral("16"))};
}

int replyWaitMs(int entry)
{
    return entry == 4 ? 10000 : 1000;
}

int firstCode(const QString &reply)
{
    return reply.isEmpty() ? 0 : reply.front().unicode();
}

int secondCode(const QString &reply)
{
    return reply.size() < 2 ? 0 : reply[1].unicode();
}

int lastCode(const QString &reply)
{
    return reply.isEmpty() ? 0 : reply.back().unicode();
}

void parse(RecordSet &values, const QString &data)
{
    int position = 1;
    for (int frame = 0; frame < kHeaderFrames; ++frame) {
        const qsizetype found = data.indexOf(BioWhittakerReplies::kETX, position - 1);
        position = found < 0 ? 1 : int(found) + 2;
    }
    for (int col = 0; col < wells::kCols; ++col) {
        for (int row = 0; row < wells::kRows; ++row) {
            const QString field = legacy::trimBlanks(data.mid(position - 1, kPositionSize));
            if (field.size() < 2)
                throw ReadError(QStringLiteral("The reader's data ends too early: there is no position of well %1 at "
                                               "character %2.")
                                    .arg(wells::name(wells::index(row + 1, col + 1)))
                                    .arg(position));
            const QString pos = field.left(field.size() - 2) + field.right(1);
            position += kRecordStep;
            WellValues::append(values, pos, data.mid(position - 1, kValueSize));
            position += kRecordStep;
        }
        position += 1;
    }
}

DriverMessages::PlateFault plateFault(const QString &data)
{
    using DriverMessages::PlateFault;
    RecordSet values = WellValues::create();
    try {
        parse(values, data);
    } catch (const ReadError &) {
        return PlateFault::Partial;
    }
    if (!WellValues::positionsNameTheirWells(values))
        return PlateFault::NotAPlate;
    return WellValues::isWholePlate(values) ? PlateFault::None : PlateFault::Partial;
}

} // namespace MS2Replies
