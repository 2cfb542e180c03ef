#include "store/AuditTrail.h"

#include "store/AddedTables.h"
#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/PreparedStatement.h"

#include <QSqlError>

#include <QSysInfo>
#include <QVariantList>

namespace {

QString &workstationTechnician()
{
    static QString name;
    return name;
}

QVariant optionalID(const std::optional<qint64> &id)
{
    return id ? QVariant(*id) : QVariant();
}

} // namespace

AuditTrail::AuditTrail(const DbConnection &db) : mDb(db)
{
}

AuditTrail::~AuditTrail() = default;

namespace {

// The time comes from the database, so that on a server every workstation writes the
// server's clock.
QString insertOf(const DbConnection &db, int rows)
{
    const QString now = db.dialect().isServer() ? QStringLiteral("to_char(clock_timestamp() AT TIME ZONE 'UTC', "
                                                                 "'YYYY-MM-DD\"T\"HH24:MI:SS.MS\"Z\"')")
                                                : QStringLiteral("strftime('%Y-%m-%dT%H:%M:%fZ', 'now')");
    const QString row = QStringLiteral("(") + now + QStringLiteral(", ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    QString sql = QStringLiteral("INSERT INTO AuditTrail (EntryTime, OsUser, Technician, Host, Action, TableName, "
                                 "RecordID, RunID, PlateID, FieldName, OldValue, NewValue, Reason) VALUES ");
    for (int r = 0; r < rows; ++r)
        sql += (r > 0 ? QStringLiteral(", ") : QString()) + row;
    return sql;
}

// The rows a statement takes on a server: 600 values, far below the engine's limit.
constexpr int kRowsAtOnce = 50;

} // namespace

void AuditTrail::appendValues(QVariantList &values, const AuditEntry &entry) const
{
    values << osUser() << technician() << hostName() << entry.action << entry.table << entry.recordID
           << optionalID(entry.runID) << optionalID(entry.plateID) << entry.field << entry.oldValue << entry.newValue
           << mReason;
}

void AuditTrail::record(const AuditEntry &entry) const
{
    if (!mInsert) {
        AddedTables::ensure(mDb, kTable);
        mInsert = std::make_unique<PreparedStatement>(mDb, insertOf(mDb, 1));
    }
    QVariantList values;
    appendValues(values, entry);
    mInsert->run(values);
}

void AuditTrail::record(const QList<AuditEntry> &entries) const
{
    if (!mDb.dialect().isServer() || entries.size() < 2) {
        for (const AuditEntry &entry : entries)
            record(entry);
        return;
    }
    AddedTables::ensure(mDb, kTable);
    for (qsizetype first = 0; first < entries.size(); first += kRowsAtOnce) {
        const qsizetype rows = std::min<qsizetype>(kRowsAtOnce, entries.size() - first);
        QVariantList values;
        values.reserve(rows * 12);
        for (qsizetype r = first; r < first + rows; ++r)
            appendValues(values, entries[r]);
        mDb.execute(insertOf(mDb, int(rows)), values);
    }
}

void AuditTrail::setTechnician(const QString &name)
{
    workstationTechnician() = name;
}

QString AuditTrail::technician()
{
    return workstationTechnician();
}

QString AuditTrail::osUser()
{
    static const QString user = [] {
        for (const char *variable : {"USER", "USERNAME", "LOGNAME"}) {
            const QString value = qEnvironmentVariable(variable);
            if (!value.isEmpty())
                return value;
        }
        return QString();
    }();
    return user;
}

QString AuditTrail::hostName()
{
    static const QString host = QSysInfo::machineHostName();
    return host;
}

QString AuditTrail::plateRecord(qint64 runID, qint64 plateID)
{
    return QString::number(runID) + QLatin1Char('/') + QString::number(plateID);
}
