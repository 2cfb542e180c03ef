#pragma once

#include "store/DatabaseError.h"
#include "store/DatabaseLocation.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVariantList>

#include <memory>

class DatabaseUseLock;
struct sqlite3;

// One open connection to the run database, for one piece of work. Each object has a
// connection of its own under a unique name, which is closed and removed when the object
// goes. Queries made through it must be gone before it is.
//
// Every statement is prepared and its values are bound ("?" placeholders, in order), so
// names with apostrophes and the like go in and come back as they are. Failures throw
// DatabaseError with the driver's text.
//
// A database held by another program is waited for (busyTimeoutMs()), then the failure
// is told as "in use" (DatabaseError::isInUse()). While it is open, a read-write connection
// holds a shared DatabaseUseLock, so that no compaction or upgrade replaces the file under it.
class DbConnection {
public:
    enum class Mode {
        ReadWrite, // an existing file, read and written
        ReadOnly,  // an existing file, never written
        Create,    // the file is made if it doesn't exist
    };

    // Opens the database at location: a file path or a server URI (DatabaseLocation). A
    // file that doesn't exist is an error (and is not made) except in Create mode. The
    // first connection of the program to a server database prepares it (ServerSchema):
    // an empty one gets the tables and the delivery rows; one of a newer schema, or that
    // isn't ours, is refused.
    explicit DbConnection(const QString &location, Mode mode = Mode::ReadWrite);
    ~DbConnection();

    DbConnection(DbConnection &&other) noexcept;
    DbConnection &operator=(DbConnection &&other) noexcept;
    DbConnection(const DbConnection &) = delete;
    DbConnection &operator=(const DbConnection &) = delete;

    QString path() const { return mPath; }
    const DatabaseLocation &location() const { return mLocation; }
    const SqlDialect &dialect() const { return SqlDialect::of(mLocation.backend()); }
    QString connectionName() const { return mName; }
    QSqlDatabase database() const { return mDb; }
    bool isOpen() const { return mDb.isOpen(); }

    // Runs a statement and returns it with the cursor before the first row (forward
    // only: walk it with next()).
    QSqlQuery query(const QString &sql, const QVariantList &values = {}) const;

    // Runs a statement that changes data or schema; returns the number of rows changed
    // (-1 when the driver can't tell, as for schema statements).
    int execute(const QString &sql, const QVariantList &values = {}) const;

    // The first column of the first row; a null QVariant when there is no row.
    QVariant scalar(const QString &sql, const QVariantList &values = {}) const;

    // Closes and removes the connection now rather than at destruction. A server
    // connection that saw no failure is kept open instead, for the thread's next
    // DbConnection to the same database in the same mode.
    void close();

    // How long every connection waits for a database another program holds, in ms.
    static int busyTimeoutMs();
    static void setBusyTimeoutMs(int ms);

    // The SQLite connection under a file's connection, for statements run on it directly;
    // null on a server.
    sqlite3 *sqliteHandle() const;

    // Closes this thread's idle connections to the file (all files when empty), which hold
    // it open between pieces of work: before the file is folded in, copied or replaced.
    static void closeIdleFiles(const QString &databasePath = QString());

private:
    void open(Mode mode);
    // Takes an idle connection to the same file, when one waits (see the .cpp).
    bool reuseIdleFile();
    bool mayWaitIdle() const;
    // Marks the connection as not to be used again, and gives the error back.
    DatabaseError failed(DatabaseError error) const;

    QString mPath;
    DatabaseLocation mLocation;
    bool mReadOnly = false;
    mutable bool mFailed = false;
    QString mName;
    QSqlDatabase mDb;
    std::unique_ptr<DatabaseUseLock> mUseLock;
};
