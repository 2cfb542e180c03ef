#include "reports/PlatesJsonWriter.h"

#include "store/PlateRows.h"
#include "store/clsPlates.h"

#include <QDate>
#include <QJsonArray>
#include <QTime>

namespace {

QJsonValue fieldJson(const QString &field, const QVariant &value)
{
    if (value.isNull())
        return QJsonValue::Null;
    if (field == u"PlateID" || field == u"RunID")
        return QJsonValue(value.toLongLong());
    if (value.metaType() == QMetaType::fromType<QDate>())
        return value.toDate().toString(PlateRows::kDateFormat);
    if (value.metaType() == QMetaType::fromType<QTime>())
        return value.toTime().toString(PlateRows::kTimeFormat);
    return value.toString();
}

} // namespace

QJsonObject PlatesJsonWriter::toJson(const RecordSet &plates)
{
    QJsonArray records;
    for (int row = 0; row < plates.recordCount(); ++row) {
        QJsonObject record;
        for (const QString &field : clsPlates::fieldNames())
            record.insert(field, fieldJson(field, plates.valueAt(row, field)));
        records.append(record);
    }
    return QJsonObject{{QStringLiteral("plates"), records}};
}
