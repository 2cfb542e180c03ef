#include "store/DatabaseCopy.h"

#include "store/AddedTables.h"
#include "store/AuditTrail.h"
#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"
#include "store/SqliteWal.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

namespace {

// Tables in the order they are copied, with the order their rows are read in.
struct Table {
    QString name;
    QString order;
};

const QList<Table> kTables = {
    {QStringLiteral("Folders"), QStringLiteral("FolderID")},
    {QStringLiteral("Runs"), QStringLiteral("RunID")},
    {QStringLiteral("Plates"), QStringLiteral("rowid")},
    {QStringLiteral("Groups"), QStringLiteral("GroupID")},
    {QStringLiteral("Technicians"), QStringLiteral("rowid")},
    {QStringLiteral("UserReaders"), QStringLiteral("UserReaderID")},
    {QStringLiteral("UserFilters"), QStringLiteral("rowid")},
};

int count(const DbConnection &db, const QString &table)
{
    return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ") + table).toInt();
}

// The target holds nothing but what its first connection delivered.
void refuseUnlessEmpty(const DbConnection &target)
{
    QStringList held;
    for (const QString &table :
         {QStringLiteral("Runs"), QStringLiteral("Plates"), QStringLiteral("Groups"), QStringLiteral("Technicians")}) {
        if (count(target, table) > 0)
            held << table;
    }
    if (count(target, QStringLiteral("Folders")) > 1 || count(target, QStringLiteral("UserReaders")) > 2)
        held << QStringLiteral("Folders or UserReaders of its own");
    if (!held.isEmpty())
        throw DatabaseError(QStringLiteral("The database %1 is not empty (it holds %2): a database is only copied "
                                           "into an empty one. Nothing was copied.")
                                .arg(target.location().displayName(), held.join(QStringLiteral(", "))));
}

int copyTable(const DbConnection &source, const DbConnection &target, const Table &table)
{
    QSqlQuery rows =
        source.query(QStringLiteral("SELECT * FROM ") + table.name + QStringLiteral(" ORDER BY ") + table.order);
    const QSqlRecord columns = rows.record();
    QStringList names;
    QStringList marks;
    for (int c = 0; c < columns.count(); ++c) {
        names << columns.fieldName(c);
        marks << QStringLiteral("?");
    }
    const QString insert = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                               .arg(table.name, names.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
    int copied = 0;
    while (rows.next()) {
        QVariantList values;
        for (int c = 0; c < columns.count(); ++c)
            values << rows.value(c);
        target.execute(insert, values);
        ++copied;
    }
    return copied;
}

} // namespace

DatabaseCopy::Counts DatabaseCopy::copy(const QString &fromFile, const QString &toLocation)
{
    if (DatabaseLocation::looksLikeServer(fromFile))
        throw DatabaseError(QStringLiteral("copy-db copies a database file: ") + fromFile +
                            QStringLiteral(" is a server."));
    // The copy reads the file as it stands on the disk, log folded in.
    SqliteWal::settle(fromFile);
    const DbConnection source(fromFile, DbConnection::Mode::ReadOnly);
    if (source
            .scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name = 'Technicians'"))
            .toInt() == 0)
        throw DatabaseError(QStringLiteral("The database ") + fromFile +
                            QStringLiteral(" is of the 1st generation: start Tavimetra on it once to upgrade it, then "
                                           "copy it."));
    const DbConnection target(toLocation);
    if (!target.dialect().isServer())
        throw DatabaseError(QStringLiteral("copy-db copies a file onto a server: ") + toLocation +
                            QStringLiteral(" is not a server address."));

    Counts counts;
    DbTransaction transaction(target);
    refuseUnlessEmpty(target);
    for (const QString &table : {QStringLiteral("UserFilters"), QStringLiteral("UserReaders"),
                                 QStringLiteral("Folders"), QStringLiteral("MiscSettings")})
        target.execute(QStringLiteral("DELETE FROM ") + table);
    for (const Table &table : kTables) {
        const int copied = copyTable(source, target, table);
        if (table.name == QLatin1String("Folders"))
            counts.folders = copied;
        else if (table.name == QLatin1String("Runs"))
            counts.runs = copied;
        else if (table.name == QLatin1String("Plates"))
            counts.plates = copied;
        else if (table.name == QLatin1String("Groups"))
            counts.groups = copied;
        else if (table.name == QLatin1String("Technicians"))
            counts.technicians = copied;
        else if (table.name == QLatin1String("UserReaders"))
            counts.readers = copied;
    }
    for (const AddedTables::Table &table : AddedTables::all()) {
        if (!AddedTables::exists(source, table.name))
            continue;
        AddedTables::ensure(target, table.name);
        copyTable(source, target, {table.name, table.order});
        for (const QString &statement : table.serverAfterCopy)
            target.execute(statement);
    }
    // The copy itself is the server trail's first own row: where the data came from.
    AuditEntry entry;
    entry.action = AuditTrail::kDatabaseCopied;
    entry.oldValue = fromFile;
    entry.newValue =
        QStringLiteral("folders: %1, runs: %2, plates: %3").arg(counts.folders).arg(counts.runs).arg(counts.plates);
    AuditTrail(target).record(entry);
    // New readers go on after the copied ids.
    target.execute(QStringLiteral("SELECT setval(pg_get_serial_sequence('userreaders', 'userreaderid'), "
                                  "COALESCE(MAX(UserReaderID), 0) + 1, false) FROM UserReaders"));
    transaction.commit();
    return counts;
}
