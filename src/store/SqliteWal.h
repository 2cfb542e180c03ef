#pragma once

#include <QString>

#include <optional>

// The write-ahead log of an SQLite database file, held open for the life of the program.
//
// A save in WAL mode with synchronous FULL costs one fsync (of the log) where the rollback
// journal costs four. But SQLite folds the log back into the file and removes it whenever
// the last connection to the file closes, and the store opens a connection per piece of
// work: so the program, once started on a file, keeps it with a keeper, a connection of
// its own that stays open (idle, no transaction) until the program ends or work that needs
// the file whole asks for it (settle); the next read-write connection makes a new keeper.
// The keeper also holds the shared DatabaseUseLock, so no other program compacts or
// upgrades the file while this one may still write to it. A short-lived command (the
// command-line companion) keeps nothing and works on the rollback journal.
//
// At rest the file goes back to the rollback journal: settle() and the program's end fold
// the log in (checkpoint TRUNCATE) and, when no other program has the file open, switch
// its journal mode back, which removes the -wal and -shm files. So the database file alone
// is the whole database once the program is closed, and it opens anywhere, read-only media
// included.
//
// Where WAL can't be used (a read-only folder, a network file system without shared
// memory) the file keeps its rollback journal, with the reason logged once; nothing fails.
namespace SqliteWal {

// Which file a name leads to now: another file put in its place has another identity.
struct FileId {
    quint64 device = 0;
    quint64 inode = 0;
    bool operator==(const FileId &other) const = default;
};
std::optional<FileId> fileIdOf(const QString &path);

// Switches the file to WAL and keeps its log for as long as this program runs.
void keepWhileRunning(const QString &databasePath);

// Called by every read-write connection to a file before its first statement: a file this
// program keeps gets its keeper back after a settle. Keepers of files that were removed or
// replaced since are dropped on the way.
void resume(const QString &databasePath);

// Drops the keepers of files removed or replaced since (as resume() does first): for a
// connection that only reads, before its first statement.
void dropReplaced();

// Folds the log into the file and closes this program's keeper, then, if no other program
// has the file open, leaves it in the rollback journal with no -wal or -shm beside it.
// For work that copies or replaces the file as a whole (compaction, the upgrade's backup,
// copy-db). Never throws: a file that can't be settled is copied through SQLite anyway.
void settle(const QString &databasePath);

// Settles every file this program keeps (the program's end, and before a fork: SQLite's
// connections must not cross one).
void settleAll();

// Whether this program keeps the file in WAL mode now.
bool isKept(const QString &databasePath);

} // namespace SqliteWal
