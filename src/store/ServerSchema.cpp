#include "store/ServerSchema.h"

#include "store/DatabaseError.h"
#include "store/DatabaseSchema.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"

#include <QMutex>
#include <QSet>

namespace ServerSchema {

namespace {

bool hasVersionTable(const DbConnection &db)
{
    // Read from the catalog as a table, so that a table another workstation has just made
    // is seen once its transaction is committed.
    return db.scalar(QStringLiteral("SELECT COUNT(*) FROM information_schema.tables "
                                    "WHERE table_schema = current_schema() AND table_name = 'tavimetraschema'"))
               .toInt() > 0;
}

int tableCount(const DbConnection &db)
{
    return db
        .scalar(QStringLiteral("SELECT COUNT(*) FROM information_schema.tables "
                               "WHERE table_schema = current_schema()"))
        .toInt();
}

void refuseIfNewer(const DbConnection &db, int version)
{
    if (version > kVersion)
        throw DatabaseError(QStringLiteral("The database %1 was made by a newer version of Tavimetra (database "
                                           "version %2; this version knows versions up to %3). Please install the "
                                           "newer version of Tavimetra on this workstation.")
                                .arg(db.location().displayName())
                                .arg(version)
                                .arg(kVersion));
}

void create(const DbConnection &db)
{
    DbTransaction transaction(db);
    db.execute(db.dialect().lockBeforeNewId(), {SqlDialect::lockSpace(), QStringLiteral("TavimetraSchema")});
    if (hasVersionTable(db)) { // another workstation made it while this one waited
        transaction.commit();
        return;
    }
    if (tableCount(db) > 0)
        throw DatabaseError(QStringLiteral("The database %1 holds tables that are not Tavimetra's. Tavimetra keeps "
                                           "its runs in a database of its own on the server: please name an empty "
                                           "database in settings.txt.")
                                .arg(db.location().displayName()));
    createDatabaseSchema(db);
    insertDeliveryRows(db);
    db.execute(QStringLiteral("CREATE TABLE TavimetraSchema (SchemaVersion INTEGER NOT NULL)"));
    db.execute(QStringLiteral("INSERT INTO TavimetraSchema (SchemaVersion) VALUES (?)"), {kVersion});
    transaction.commit();
}

} // namespace

int versionOf(const DbConnection &db)
{
    if (!hasVersionTable(db))
        return 0;
    return db.scalar(QStringLiteral("SELECT MAX(SchemaVersion) FROM TavimetraSchema")).toInt();
}

void prepare(const DbConnection &db)
{
    if (!hasVersionTable(db)) {
        create(db);
        return;
    }
    refuseIfNewer(db, versionOf(db));
}

void prepareOnce(const DbConnection &db)
{
    static QMutex mutex;
    static QSet<QString> prepared;
    const QString key = db.location().text();
    {
        const QMutexLocker lock(&mutex);
        if (prepared.contains(key))
            return;
    }
    prepare(db);
    const QMutexLocker lock(&mutex);
    prepared.insert(key);
}

} // namespace ServerSchema
