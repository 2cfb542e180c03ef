#include "store/RunCatalog.h"

#include "store/DbConnection.h"
#include "store/PlateChanges.h"
#include "store/PlateRows.h"

#include <QSqlQuery>

#include <algorithm>

RunCatalog::RunCatalog(const DbConnection &db) : mDb(db)
{
}

void RunCatalog::audit(const QString &action, const QString &table, qint64 id, const QString &oldValue,
                       const QString &newValue, std::optional<qint64> runID) const
{
    AuditEntry entry;
    entry.action = action;
    entry.table = table;
    entry.recordID = QString::number(id);
    entry.field = table == QLatin1String("Runs") ? QStringLiteral("RunName") : QStringLiteral("FolderName");
    entry.oldValue = oldValue;
    entry.newValue = newValue;
    entry.runID = runID;
    AuditTrail(mDb).record(entry);
}

QString RunCatalog::nameOf(const QString &table, qint64 id) const
{
    const bool run = table == QLatin1String("Runs");
    return mDb
        .scalar(run ? QStringLiteral("SELECT RunName FROM Runs WHERE RunID = ?")
                    : QStringLiteral("SELECT FolderName FROM Folders WHERE FolderID = ?"),
                {id})
        .toString();
}

QVector<CatalogEntry> RunCatalog::entries(const QString &sql, const QVariantList &values) const
{
    QVector<CatalogEntry> found;
    QSqlQuery rows = mDb.query(sql, values);
    while (rows.next())
        found.append({rows.value(0).toLongLong(), rows.value(1).toString()});
    std::stable_sort(found.begin(), found.end(), [](const CatalogEntry &a, const CatalogEntry &b) {
        const int c = QString::compare(a.name, b.name, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a.name < b.name;
    });
    return found;
}

QVector<CatalogEntry> RunCatalog::folders() const
{
    return entries(QStringLiteral("SELECT FolderID, FolderName FROM Folders ORDER BY FolderID"));
}

QVector<CatalogEntry> RunCatalog::runsInFolder(qint64 folderID) const
{
    return entries(QStringLiteral("SELECT RunID, RunName FROM Runs WHERE FolderID = ? ORDER BY RunID"), {folderID});
}

std::optional<qint64> RunCatalog::findByName(const QVector<CatalogEntry> &entries, const QString &name)
{
    for (const CatalogEntry &e : entries) {
        if (e.name == name)
            return e.id;
    }
    for (const CatalogEntry &e : entries) {
        if (QString::compare(e.name, name, Qt::CaseInsensitive) == 0)
            return e.id;
    }
    return std::nullopt;
}

std::optional<qint64> RunCatalog::findFolder(const QString &name) const
{
    return findByName(folders(), name);
}

std::optional<qint64> RunCatalog::findRun(qint64 folderID, const QString &name) const
{
    return findByName(runsInFolder(folderID), name);
}

bool RunCatalog::runExists(qint64 runID) const
{
    return !mDb.scalar(QStringLiteral("SELECT RunID FROM Runs WHERE RunID = ?"), {runID}).isNull();
}

bool RunCatalog::folderHasRuns(qint64 folderID) const
{
    return !mDb.scalar(QStringLiteral("SELECT RunID FROM Runs WHERE FolderID = ?"), {folderID}).isNull();
}

QString RunCatalog::getNewFolderName() const
{
    const QVector<CatalogEntry> existing = folders();
    for (int n = 1;; ++n) {
        const QString name = QStringLiteral("New Folder %1").arg(n);
        if (!findByName(existing, name))
            return name;
    }
}

void RunCatalog::addFolder(qint64 folderID, const QString &name) const
{
    mDb.execute(QStringLiteral("INSERT INTO Folders (FolderID, FolderName) VALUES (?, ?)"), {folderID, name});
    audit(AuditTrail::kFolderAdded, QStringLiteral("Folders"), folderID, QString(), name);
}

void RunCatalog::renameFolder(qint64 folderID, const QString &name) const
{
    const QString former = nameOf(QStringLiteral("Folders"), folderID);
    mDb.execute(QStringLiteral("UPDATE Folders SET FolderName = ? WHERE FolderID = ?"), {name, folderID});
    audit(AuditTrail::kFolderRenamed, QStringLiteral("Folders"), folderID, former, name);
}

void RunCatalog::addRun(qint64 runID, const QString &name, qint64 folderID) const
{
    mDb.execute(QStringLiteral("INSERT INTO Runs (RunID, RunName, FolderID) VALUES (?, ?, ?)"),
                {runID, name, folderID});
    audit(AuditTrail::kRunSavedAs, QStringLiteral("Runs"), runID, QString(), name, runID);
}

void RunCatalog::renameRun(qint64 runID, const QString &name) const
{
    const QString former = nameOf(QStringLiteral("Runs"), runID);
    mDb.execute(QStringLiteral("UPDATE Runs SET RunName = ? WHERE RunID = ?"), {name, runID});
    audit(AuditTrail::kRunRenamed, QStringLiteral("Runs"), runID, former, name, runID);
}

void RunCatalog::deleteRun(qint64 runID) const
{
    const QString former = nameOf(QStringLiteral("Runs"), runID);
    const AuditTrail trail(mDb);
    trail.record(PlateChanges::allDeleted(PlateRows::read(mDb, runID), runID));
    PlateRows::deleteRun(mDb, runID);
    mDb.execute(QStringLiteral("DELETE FROM Runs WHERE RunID = ?"), {runID});
    audit(AuditTrail::kRunDeleted, QStringLiteral("Runs"), runID, former, QString(), runID);
}

void RunCatalog::deleteFolder(qint64 folderID) const
{
    QVector<qint64> runs;
    {
        QSqlQuery rows = mDb.query(QStringLiteral("SELECT RunID FROM Runs WHERE FolderID = ?"), {folderID});
        while (rows.next())
            runs.append(rows.value(0).toLongLong());
    }
    for (qint64 runID : runs)
        deleteRun(runID);
    const QString former = nameOf(QStringLiteral("Folders"), folderID);
    mDb.execute(QStringLiteral("DELETE FROM Folders WHERE FolderID = ?"), {folderID});
    audit(AuditTrail::kFolderDeleted, QStringLiteral("Folders"), folderID, former, QString());
}
