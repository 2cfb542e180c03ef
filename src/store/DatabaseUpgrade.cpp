#include "store/DatabaseUpgrade.h"

#include "platform/Prompt.h"
#include "store/AuditTrail.h"
#include "store/DatabaseError.h"
#include "store/DatabaseSchema.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"
#include "store/FileCopy.h"
#include "store/ProgramFolder.h"
#include "store/RunDatabase.h"
#include "store/SettingsFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

#include <limits>
#include <optional>

namespace {

// Reads every row of the statement; false when it can't be prepared or read.
bool readsWhole(const DbConnection &db, const QString &sql)
{
    QSqlQuery rows = db.query(sql);
    // A forward-only query that seeks past its end steps SQLite through every row, which
    // reads each row whole, without copying the values out into Qt: on a database of
    // thousands of plates that copy was most of the time of a start.
    rows.seek(std::numeric_limits<int>::max());
    return !rows.lastError().isValid();
}

QString upgradeBackupPath(const ProgramFolder &folder, const QString &databasePath)
{
    return QDir(folder.upgradeBackupFolder()).filePath(QFileInfo(databasePath).fileName());
}

} // namespace

bool validateDatabase(const QString &path, int generation, Prompt &prompt)
{
    std::optional<DbConnection> db;
    try {
        db.emplace(path, DbConnection::Mode::ReadOnly);
    } catch (const DatabaseError &) {
        return false;
    }
    try {
        switch (generation) {
        case kFirstGeneration:
            for (const QString &table : generation1Tables()) {
                if (!readsWhole(*db, QStringLiteral("SELECT * FROM ") + table))
                    return false;
            }
            return true;
        case kCurrentGeneration:
            return readsWhole(*db, QStringLiteral("SELECT * FROM Technicians")) &&
                   readsWhole(*db, QStringLiteral("SELECT TechName FROM Plates"));
        default: break;
        }
    } catch (const DatabaseError &) {
        return false;
    }
    db.reset();
    prompt.message(QStringLiteral("Failed database validation - wrong version specified.") + kCrLf +
                   QStringLiteral("Please contact Qorn."));
    return false;
}

bool backupForUpgrade(const ProgramFolder &folder)
{
    const QString path = getDatabasePath(folder);
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return false;
    if (!QDir().mkpath(folder.upgradeBackupFolder()))
        return false;
    return copyFileReplacing(path, upgradeBackupPath(folder, path));
}

bool restoreUpgradeBackup(const ProgramFolder &folder)
{
    const QString path = getDatabasePath(folder);
    if (path.isEmpty())
        return false;
    const QString backup = upgradeBackupPath(folder, path);
    if (!QFileInfo(backup).isFile())
        return false;
    return copyFileReplacing(backup, path);
}

int upgradeDatabase(const QString &path)
{
    try {
        const DbConnection db(path);
        DbTransaction transaction(db);
        db.execute(QStringLiteral("ALTER TABLE Plates ADD TechName char(50)"));
        db.execute(QStringLiteral("UPDATE Plates SET TechName = ?"), {kNoTechnicianSelected});
        db.execute(QStringLiteral("CREATE TABLE Technicians( TechName char(50) PRIMARY KEY )"));
        AuditEntry entry;
        entry.action = AuditTrail::kDatabaseUpgraded;
        entry.table = QStringLiteral("Plates");
        entry.field = QStringLiteral("TechName");
        entry.newValue = kNoTechnicianSelected;
        AuditTrail(db).record(entry);
        transaction.commit();
        return 0;
    } catch (const DatabaseError &error) {
        return error.nativeCode() != 0 ? error.nativeCode() : kUpgradeFailedWithoutNumber;
    }
}

void renameLegacyKit(const ProgramFolder &folder)
{
    const QString former = QStringLiteral("RTUV 419");
    const QString current = QStringLiteral("PZV 419");
    const DbConnection db = openDatabase(folder);
    QList<std::pair<qint64, qint64>> plates;
    {
        QSqlQuery rows = db.query(QStringLiteral("SELECT RunID, PlateID FROM Plates WHERE TestName = ?"), {former});
        while (rows.next())
            plates.append({rows.value(0).toLongLong(), rows.value(1).toLongLong()});
    }
    if (plates.isEmpty())
        return;
    DbTransaction transaction(db);
    db.execute(QStringLiteral("UPDATE Plates SET TestName = ? WHERE TestName = ?"), {current, former});
    const AuditTrail trail(db);
    for (const auto &[runID, plateID] : plates)
        trail.record({AuditTrail::kPlateChanged, QStringLiteral("Plates"), AuditTrail::plateRecord(runID, plateID),
                      QStringLiteral("TestName"), former, current, runID, plateID});
    transaction.commit();
}
