#pragma once

#include "store/AuditTrail.h"

#include <QString>
#include <QVariantList>
#include <QVector>

#include <optional>

class DbConnection;

// A folder or a run as the lists show it.
struct CatalogEntry {
    qint64 id = 0;
    QString name;

    bool operator==(const CatalogEntry &) const = default;
};

// The folders and runs of the run database, through one connection. Names are found
// without regard to case, as the lists compare them (a run "abc" and a run "ABC" can't
// share a folder); where several rows differ only in case, the exact spelling wins.
// Every failure throws DatabaseError. Writes that belong together are made in the
// caller's transaction, each with its rows of the audit trail.
class RunCatalog {
public:
    explicit RunCatalog(const DbConnection &db);

    // All folders, and the runs of one folder, sorted by name without regard to case.
    QVector<CatalogEntry> folders() const;
    QVector<CatalogEntry> runsInFolder(qint64 folderID) const;

    std::optional<qint64> findFolder(const QString &name) const;
    std::optional<qint64> findRun(qint64 folderID, const QString &name) const;
    bool runExists(qint64 runID) const;
    bool folderHasRuns(qint64 folderID) const;

    // "New Folder 1", or the first "New Folder n" that no folder is named.
    QString getNewFolderName() const;

    void addFolder(qint64 folderID, const QString &name) const;
    void renameFolder(qint64 folderID, const QString &name) const;
    // A new run: its Runs row (its plates are written by RunPlatesWriter).
    void addRun(qint64 runID, const QString &name, qint64 folderID) const;
    void renameRun(qint64 runID, const QString &name) const;

    // A run with its plate rows.
    void deleteRun(qint64 runID) const;
    // A folder with its runs and their plate rows.
    void deleteFolder(qint64 folderID) const;

    // The entry named so, exact spelling first, then without regard to case.
    static std::optional<qint64> findByName(const QVector<CatalogEntry> &entries, const QString &name);

private:
    QVector<CatalogEntry> entries(const QString &sql, const QVariantList &values = {}) const;
    void audit(const QString &action, const QString &table, qint64 id, const QString &oldValue, const QString &newValue,
               std::optional<qint64> runID = std::nullopt) const;
    QString nameOf(const QString &table, qint64 id) const;

    const DbConnection &mDb;
};
