#include "store/RunDatabase.h"

#include "store/DatabaseError.h"
#include "store/ProgramFolder.h"
#include "store/SettingsFile.h"

#include <QSqlError>
#include <QSqlQuery>

DbConnection openDatabase(const ProgramFolder &folder, const QString &path)
{
    QString databasePath = path;
    if (databasePath.isEmpty()) {
        databasePath = getDatabasePath(folder);
        if (databasePath.isEmpty())
            throw DatabaseError(QStringLiteral("No database is named in ") + folder.settingsPath());
    }
    return DbConnection(databasePath);
}

int firstFreeID(const DbConnection &db, const QString &idsInAscendingOrderSql)
{
    QSqlQuery ids = db.query(idsInAscendingOrderSql);
    qint64 last = 0;
    while (ids.next()) {
        const qint64 id = ids.value(0).toLongLong();
        if (id < 1)
            continue; // no id of ours is below 1; a stray one can't open a hole
        if (id - last > 1)
            break;
        last = id;
    }
    if (ids.lastError().isValid())
        throw DatabaseError::fromSqlError(ids.lastError(), idsInAscendingOrderSql);
    return static_cast<int>(last + 1);
}

void lockBeforeNewId(const DbConnection &db, const QString &table)
{
    const QString lock = db.dialect().lockBeforeNewId();
    if (!lock.isEmpty())
        db.execute(lock, {SqlDialect::lockSpace(), table});
}

int getNewRunID(const DbConnection &db)
{
    lockBeforeNewId(db, QStringLiteral("Runs"));
    return firstFreeID(db, QStringLiteral("SELECT RunID FROM Runs ORDER BY RunID ASC"));
}

int getNewFolderID(const DbConnection &db)
{
    lockBeforeNewId(db, QStringLiteral("Folders"));
    return firstFreeID(db, QStringLiteral("SELECT FolderID FROM Folders ORDER BY FolderID ASC"));
}

int getNewGroupID(const DbConnection &db)
{
    lockBeforeNewId(db, QStringLiteral("Groups"));
    return firstFreeID(db, QStringLiteral("SELECT GroupID FROM Groups ORDER BY GroupID ASC"));
}
