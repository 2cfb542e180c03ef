#include "store/AuditQuery.h"

#include "store/AddedTables.h"
#include "store/AuditTrail.h"
#include "store/DbConnection.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlQuery>
#include <QVariantList>

namespace {

const QString kColumns = QStringLiteral("EntryID, EntryTime, OsUser, Technician, Host, Action, TableName, RecordID, "
                                        "RunID, PlateID, FieldName, OldValue, NewValue, Reason");

std::optional<qint64> optionalID(const QVariant &value)
{
    return value.isNull() ? std::nullopt : std::optional<qint64>(value.toLongLong());
}

QString csvField(const QString &text)
{
    if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) && !text.contains(QLatin1Char('\n')) &&
        !text.contains(QLatin1Char('\r')))
        return text;
    QString quoted = text;
    quoted.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QString idText(const std::optional<qint64> &id)
{
    return id ? QString::number(*id) : QString();
}

} // namespace

QVector<AuditRow> AuditQuery::rows(const DbConnection &db, const AuditFilter &filter)
{
    QVector<AuditRow> found;
    if (!AddedTables::exists(db, AuditTrail::kTable))
        return found;
    QStringList conditions;
    QVariantList values;
    const auto where = [&](const QString &condition, const QVariant &value) {
        conditions << condition;
        values << value;
    };
    if (filter.runID)
        where(QStringLiteral("RunID = ?"), *filter.runID);
    if (filter.plateID)
        where(QStringLiteral("PlateID = ?"), *filter.plateID);
    if (!filter.osUser.isEmpty())
        where(QStringLiteral("OsUser = ?"), filter.osUser);
    if (!filter.technician.isEmpty())
        where(QStringLiteral("Technician = ?"), filter.technician);
    if (!filter.action.isEmpty())
        where(QStringLiteral("Action = ?"), filter.action);
    if (filter.from.isValid())
        where(QStringLiteral("EntryTime >= ?"), filter.from.toString(Qt::ISODate));
    if (filter.to.isValid())
        where(QStringLiteral("EntryTime < ?"), filter.to.addDays(1).toString(Qt::ISODate));
    QString sql = QStringLiteral("SELECT ") + kColumns + QStringLiteral(" FROM AuditTrail");
    if (!conditions.isEmpty())
        sql += QStringLiteral(" WHERE ") + conditions.join(QStringLiteral(" AND "));
    sql += QStringLiteral(" ORDER BY EntryID");
    QSqlQuery rows = db.query(sql, values);
    while (rows.next()) {
        AuditRow row;
        row.entryID = rows.value(0).toLongLong();
        row.time = rows.value(1).toString();
        row.osUser = rows.value(2).toString();
        row.technician = rows.value(3).toString();
        row.host = rows.value(4).toString();
        row.action = rows.value(5).toString();
        row.table = rows.value(6).toString();
        row.recordID = rows.value(7).toString();
        row.runID = optionalID(rows.value(8));
        row.plateID = optionalID(rows.value(9));
        row.field = rows.value(10).toString();
        row.oldValue = rows.value(11).toString();
        row.newValue = rows.value(12).toString();
        row.reason = rows.value(13).toString();
        found.append(row);
    }
    return found;
}

QStringList AuditQuery::distinct(const DbConnection &db, const QString &column)
{
    QStringList values;
    if (!AddedTables::exists(db, AuditTrail::kTable))
        return values;
    if (column != QLatin1String("OsUser") && column != QLatin1String("Technician") && column != QLatin1String("Action"))
        return values;
    QSqlQuery rows = db.query(QStringLiteral("SELECT DISTINCT ") + column + QStringLiteral(" FROM AuditTrail"));
    while (rows.next()) {
        if (!rows.value(0).toString().isEmpty())
            values << rows.value(0).toString();
    }
    values.sort(Qt::CaseInsensitive);
    return values;
}

QString AuditQuery::jsonLine(const AuditRow &row)
{
    QJsonObject object{
        {QStringLiteral("entryId"), row.entryID}, {QStringLiteral("time"), row.time},
        {QStringLiteral("osUser"), row.osUser},   {QStringLiteral("technician"), row.technician},
        {QStringLiteral("host"), row.host},       {QStringLiteral("action"), row.action},
        {QStringLiteral("table"), row.table},     {QStringLiteral("recordId"), row.recordID},
        {QStringLiteral("field"), row.field},     {QStringLiteral("old"), row.oldValue},
        {QStringLiteral("new"), row.newValue},    {QStringLiteral("reason"), row.reason},
    };
    object.insert(QStringLiteral("runId"), row.runID ? QJsonValue(*row.runID) : QJsonValue());
    object.insert(QStringLiteral("plateId"), row.plateID ? QJsonValue(*row.plateID) : QJsonValue());
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QString AuditQuery::csv(const QVector<AuditRow> &rows)
{
    QString text = QStringLiteral("Time (UTC),User,Technician,Host,Action,Table,Record,Run,Plate,Field,Old value,"
                                  "New value,Reason\r\n");
    for (const AuditRow &row : rows) {
        const QStringList fields = {
            row.time,          row.osUser,          row.technician, row.host,     row.action,   row.table, row.recordID,
            idText(row.runID), idText(row.plateID), row.field,      row.oldValue, row.newValue, row.reason};
        QStringList cells;
        for (const QString &field : fields)
            cells << csvField(field);
        text += cells.join(QLatin1Char(',')) + QStringLiteral("\r\n");
    }
    return text;
}
