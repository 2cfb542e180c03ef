#pragma once

#include <QString>

// Who has a database file open. Every connection to an SQLite file holds a shared lock on
// the file "<database>-users" beside it for as long as it is open, in whatever program or
// instance it lives; work that replaces the file as a whole (compaction, upgrade) takes
// that lock exclusively, which it gets only while no connection at all is open. So such
// work never swaps the file under a connection whose writes would then be lost, and a
// connection never opens a file that is being replaced.
//
// Taking it exclusively first folds the write-ahead log into the file (SqliteWal::settle),
// so that the file alone is the whole database while it is copied or replaced.
//
// The locks are the operating system's (flock): they go with the process that holds
// them, so a program that crashed leaves no stale lock behind. The file itself stays.
class DatabaseUseLock {
public:
    enum class Kind { Shared, Exclusive };

    // Waits up to waitMs for the lock; isHeld() tells whether it came.
    DatabaseUseLock(const QString &databasePath, Kind kind, int waitMs);
    ~DatabaseUseLock();
    DatabaseUseLock(DatabaseUseLock &&other) noexcept;
    DatabaseUseLock &operator=(DatabaseUseLock &&other) noexcept;
    DatabaseUseLock(const DatabaseUseLock &) = delete;
    DatabaseUseLock &operator=(const DatabaseUseLock &) = delete;

    bool isHeld() const { return mHeld; }
    void release();

    // The file beside the database that carries the locks.
    static QString lockPath(const QString &databasePath);

    // Whether work of this program holds the file exclusively now.
    static bool isHeldExclusivelyHere(const QString &databasePath);

private:
    QString mKey;
    int mHandle = -1;
    Kind mKind = Kind::Shared;
    bool mHeld = false;
    bool mInherited = false; // a connection of the work that holds the file exclusively
};
