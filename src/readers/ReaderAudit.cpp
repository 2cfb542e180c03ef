#include "readers/ReaderAudit.h"

#include "store/AuditTrail.h"
#include "store/DbConnection.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

namespace {

QString whole(const ReaderAudit::Values &values)
{
    QStringList parts;
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        parts << it.key() + QLatin1Char('=') + it.value();
    return parts.join(QStringLiteral("; "));
}

} // namespace

ReaderAudit::Values ReaderAudit::snapshot(const DbConnection &db, const QVariant &readerID)
{
    Values values;
    {
        QSqlQuery row = db.query(QStringLiteral("SELECT UserReaderName, ReaderModelID, UserCOMPort, UserSettings, "
                                                "UserFlowControl, UserDefaultFilterNo FROM UserReaders "
                                                "WHERE UserReaderID = ?"),
                                 {readerID});
        if (!row.next())
            return values;
        const QSqlRecord columns = row.record();
        for (int c = 0; c < columns.count(); ++c)
            values.insert(columns.fieldName(c), row.value(c).toString());
    }
    QStringList filters;
    QSqlQuery rows = db.query(
        QStringLiteral("SELECT FilterNo, FilterValue FROM UserFilters WHERE UserReaderID = ? ORDER BY FilterNo"),
        {readerID});
    while (rows.next())
        filters << rows.value(0).toString() + QLatin1Char(':') + rows.value(1).toString();
    values.insert(QStringLiteral("Filters"), filters.join(QStringLiteral(", ")));
    return values;
}

void ReaderAudit::record(const DbConnection &db, const QVariant &readerID, const Values &before, const Values &after)
{
    const AuditTrail trail(db);
    AuditEntry entry;
    entry.table = QStringLiteral("UserReaders");
    entry.recordID = readerID.toString();
    if (before.isEmpty() || after.isEmpty()) {
        if (before.isEmpty() && after.isEmpty())
            return;
        entry.action = before.isEmpty() ? AuditTrail::kReaderAdded : AuditTrail::kReaderDeleted;
        entry.oldValue = whole(before);
        entry.newValue = whole(after);
        trail.record(entry);
        return;
    }
    entry.action = AuditTrail::kReaderChanged;
    for (auto it = after.cbegin(); it != after.cend(); ++it) {
        const QString was = before.value(it.key());
        if (was == it.value())
            continue;
        entry.field = it.key();
        entry.oldValue = was;
        entry.newValue = it.value();
        trail.record(entry);
    }
}
