#pragma once

#include <QString>
#include <QStringList>

class DatabaseError;

// Everything that is particular to the database engine in use: the embedded SQLite file
// (QSQLITE) or a PostgreSQL server (QPSQL). The rest of the store writes portable SQL and
// asks the connection's dialect for the few pieces that differ.
class SqlDialect {
public:
    enum class Backend { SQLite, PostgreSQL };

    static const SqlDialect &of(Backend backend);

    Backend backend() const { return mBackend; }
    bool isServer() const { return mBackend == Backend::PostgreSQL; }

    // The Qt SQL driver.
    QString driverName() const;

    // Connect options of a file connection: how long it waits for a database another
    // connection holds locked, and, for one that must never write (nor create) the file,
    // read-only. Empty on a server: it has no busy timeout to set, and read-only is a
    // setting of the session there (see connectionSetup).
    QString connectOptions(bool readOnly, int busyTimeoutMs) const;

    // Statements run on every new connection. On a file: full syncs for lab data, no
    // foreign keys (the tables refer to each other by name and id, kept in step by the
    // program). On a server: quiet notices, and read-only sessions when asked.
    QStringList connectionSetup(bool readOnly) const;

    // Opens a write transaction. On a file it takes the write lock at once, so that a
    // transaction never fails half-way for want of a lock; on a server each table's ids
    // are guarded by lockBeforeNewId instead.
    QString beginWriteTransaction() const;

    // Column definition of an id allocated by the database on insert, never reused.
    QString counterColumn() const;

    // Column type of a name kept to 50 characters (a server would pad CHAR(50) with
    // blanks).
    QString shortNameColumn() const;

    // An ORDER BY term that gives the rows of the plate table in the order they were
    // inserted, and the column definition that makes it possible ("" when the engine
    // keeps that order itself).
    QString insertionOrder() const;
    QString insertionOrderColumn() const;

    // A statement, with two bound values (lockSpace() and the table's name), that makes
    // the other workstations wait until this transaction ends before they choose a new
    // id of that table; empty when the write transaction already excludes them.
    QString lockBeforeNewId() const;
    static int lockSpace();

    // Whether a transaction that failed with this error may simply be run again:
    // serialization failures, deadlocks, and a duplicate key of an id chosen at the same
    // moment elsewhere.
    bool isRetryable(const DatabaseError &error) const;

    // Writes a complete, compacted copy of the database to a new file; one bound value, the
    // path of the copy, which must not exist yet. Files only.
    QString compactInto() const;

    // Checks the structure of the whole database; its rows are a single "ok" when it is
    // sound. Files only.
    QString integrityCheck() const;
    QString integrityCheckPassed() const;

private:
    explicit SqlDialect(Backend backend) : mBackend(backend) {}

    Backend mBackend;
};
