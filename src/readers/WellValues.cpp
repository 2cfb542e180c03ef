#include "readers/WellValues.h"

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
        throw ReadError(QStringLiteral("The value '%1' of the reader's data is longer than %2 characters.")
                            .arg(val)
                            .arg(kValSize));
    values.addNew();
    values.setValue(u"Pos", pos);
    values.setValue(u"Val", val);
}

} // namespace WellValues
