#pragma once

#include <QString>
#include <QStringList>

// Everything that is particular to the database engine in use (SQLite through the QSQLITE
// driver). The rest of the store writes portable SQL, so that a server engine can take
// over by changing this one place.
namespace SqlDialect {

// The Qt SQL driver.
QString driverName();

// Connect options of a connection: how long it waits for a database another connection
// holds locked, and, for one that must never write (nor create) the file, read-only.
QString connectOptions(bool readOnly, int busyTimeoutMs);

// Statements run on every new connection: full syncs for lab data, no foreign keys
// (the tables refer to each other by name and id, kept in step by the program).
QStringList connectionSetup();

// Opens a write transaction that takes the write lock at once, so that a transaction
// never fails half-way for want of a lock.
QString beginWriteTransaction();

// Column definition of an id allocated by the database on insert, never reused.
QString counterColumn();

// An ORDER BY term that gives the rows of a table in the order they were inserted.
QString insertionOrder();

// Writes a complete, compacted copy of the database to a new file; one bound value, the
// path of the copy, which must not exist yet.
QString compactInto();

// Checks the structure of the whole database; its rows are a single "ok" when it is sound.
QString integrityCheck();
QString integrityCheckPassed();

} // namespace SqlDialect
