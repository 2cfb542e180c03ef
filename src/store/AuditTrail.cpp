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

void AuditTrail::record(const AuditEntry &entry) const
{
    if (!mInsert) {
        // The time comes from the database, so that on a server every workstation writes
        // the server's clock.
        const QString now = mDb.dialect().isServer() ? QStringLiteral("to_char(clock_timestamp() AT TIME ZONE 'UTC', "
                                                                      "'YYYY-MM-DD\"T\"HH24:MI:SS.MS\"Z\"')")
                                                     : QStringLiteral("strftime('%Y-%m-%dT%H:%M:%fZ', 'now')");
        AddedTables::ensure(mDb, kTable);
        mInsert = std::make_unique<PreparedStatement>(
            mDb, QStringLiteral("INSERT INTO AuditTrail (EntryTime, OsUser, Technician, Host, Action, TableName, "
                                "RecordID, RunID, PlateID, FieldName, OldValue, NewValue, Reason) VALUES (") +
                     now + QStringLiteral(", ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    }
    mInsert->run({osUser(), technician(), hostName(), entry.action, entry.table, entry.recordID,
                  optionalID(entry.runID), optionalID(entry.plateID), entry.field, entry.oldValue, entry.newValue,
                  mReason});
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
