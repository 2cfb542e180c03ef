#include "readers/WellValues.h"

#include "core/Wells.h"
#include "readers/ReadError.h"

namespace WellValues {

RecordSet create()
{
    return RecordSet({QStringLiteral("Pos"), QStringLiteral("Val")});
}

void append(RecordSet &values, const QString &pos, const QString &val)
{
    if (pos.size() > kPosSize)
        throw ReadError(QStringLiteral("The well position '%1' of the reader's data is longer than %2 characters.")
                            .arg(pos)
                            .arg(kPosSize));
    if (val.size() > kValSize)
        throw ReadError(
            QStringLiteral("The value '%1' of the reader's data is longer than %2 characters.").arg(val).arg(kValSize));
    values.addNew();
    values.setValue(u"Pos", pos);
    values.setValue(u"Val", val);
}

bool isWholePlate(const RecordSet &values)
{
    if (values.recordCount() != wells::kCount)
        return false;
    for (int k = 0; k < wells::kCount; ++k) {
        if (values.valueAt(k, u"Val").toString().trimmed().isEmpty())
            return false;
    }
    return true;
}

bool positionsNameTheirWells(const RecordSet &values)
{
    if (values.recordCount() != wells::kCount)
        return false;
    for (int k = 0; k < wells::kCount; ++k) {
        const QString expected = QString::number(k / wells::kRows + 1) + QChar(u'A' + k % wells::kRows);
        if (values.valueAt(k, u"Pos").toString() != expected)
            return false;
    }
    return true;
}

} // namespace WellValues
