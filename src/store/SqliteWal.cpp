#include "store/SqliteWal.h"

#include "store/DatabaseUseLock.h"
#include "store/DbConnection.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMutex>
#include <QSet>

#include <map>
#include <memory>
#include <optional>

#include <sqlite3.h>
#include <sys/stat.h>

Q_LOGGING_CATEGORY(lcWal, "tavimetra.store.wal")

using SqliteWal::FileId;
using SqliteWal::fileIdOf;

namespace {

QString keyOf(const QString &path)
{
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? info.absoluteFilePath() : canonical;
}

// The text of the first column of a statement's first row; empty on failure.
QString pragma(sqlite3 *db, const char *sql)
{
    sqlite3_stmt *statement = nullptr;
    QString result;
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) == SQLITE_OK && sqlite3_step(statement) == SQLITE_ROW)
        result = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    return result;
}

// Folds the log into the file and, when this is the only connection left, goes back to the
// rollback journal: SQLite then removes the -wal and -shm files.
void foldIn(sqlite3 *db)
{
    sqlite3_busy_timeout(db, DbConnection::busyTimeoutMs());
    if (pragma(db, "PRAGMA journal_mode") != QLatin1String("wal"))
        return;
    pragma(db, "PRAGMA wal_checkpoint(TRUNCATE)");
    // Another program still has the file open when this can't be done at once: its own end
    // does it then.
    sqlite3_busy_timeout(db, 0);
    pragma(db, "PRAGMA journal_mode=DELETE");
}

struct Keeper {
    QString path;
    FileId id;
    sqlite3 *db = nullptr; // null when the file can't use WAL
    std::unique_ptr<DatabaseUseLock> lock;

    Keeper() = default;
    Keeper(const Keeper &) = delete;
    Keeper &operator=(const Keeper &) = delete;
    ~Keeper() { close(true); }

    // settled: fold the log in first. A keeper of a file removed or replaced under it closes
    // without touching the log, which may be another file's now.
    void close(bool settled)
    {
        if (db) {
            if (settled)
                foldIn(db);
            else
                sqlite3_db_config(db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
            sqlite3_close_v2(db);
            db = nullptr;
        }
        lock.reset();
    }
};

struct Keepers {
    QMutex mutex;
    std::map<QString, std::unique_ptr<Keeper>> byPath;
    QSet<QString> wanted; // the files this program keeps while it runs
    ~Keepers() { byPath.clear(); }
};

Keepers &keepers()
{
    static Keepers all;
    return all;
}

// Drops the keepers whose file is gone or was replaced by another file. The log beside a
// replaced file is the former file's: SQLite would read it into the new one (it takes any
// -wal beside a file for that file's), so it is set aside ("-wal.replaced"), and the index
// beside it, which holds nothing of its own, is removed.
void dropStale(Keepers &all)
{
    for (auto it = all.byPath.begin(); it != all.byPath.end();) {
        const std::optional<FileId> now = fileIdOf(it->second->path);
        if (now && *now == it->second->id) {
            ++it;
            continue;
        }
        const QString path = it->second->path;
        DbConnection::closeIdleFiles(path);
        it->second->close(false);
        it = all.byPath.erase(it);
        if (now && QFile::exists(path + QStringLiteral("-wal"))) {
            const QString aside = path + QStringLiteral("-wal.replaced");
            QFile::remove(aside);
            if (QFile::rename(path + QStringLiteral("-wal"), aside))
                QFile::remove(path + QStringLiteral("-shm"));
            qCWarning(lcWal).noquote() << QStringLiteral("The database %1 was replaced while in use: the former "
                                                         "file's log is kept as %2")
                                              .arg(path, aside);
        }
    }
}

std::unique_ptr<Keeper> openKeeper(const QString &path, const FileId &id)
{
    auto keeper = std::make_unique<Keeper>();
    keeper->path = path;
    keeper->id = id;
    const QString refused = QStringLiteral("The database %1 keeps its rollback journal: ").arg(path);
    auto lock = std::make_unique<DatabaseUseLock>(path, DatabaseUseLock::Kind::Shared, DbConnection::busyTimeoutMs());
    if (!lock->isHeld())
        return keeper; // the connection that asked is refused as "in use" itself
    sqlite3 *db = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        qCWarning(lcWal).noquote() << refused + QString::fromUtf8(sqlite3_errmsg(db));
        sqlite3_close_v2(db);
        return keeper;
    }
    sqlite3_busy_timeout(db, DbConnection::busyTimeoutMs());
    const QString mode = pragma(db, "PRAGMA journal_mode=WAL");
    if (mode != QLatin1String("wal")) {
        const QString why = mode.isEmpty() ? QString::fromUtf8(sqlite3_errmsg(db))
                                           : QStringLiteral("the file system allows no WAL (journal mode stays ") +
                                                 mode + QLatin1Char(')');
        qCWarning(lcWal).noquote() << refused + why;
        sqlite3_close_v2(db);
        return keeper;
    }
    // A first read opens the log; from then on the idle keeper holds the shared lock that
    // makes it count as a connection, so the others' closes leave the log in place.
    pragma(db, "SELECT COUNT(*) FROM sqlite_master");
    keeper->db = db;
    keeper->lock = std::move(lock);
    return keeper;
}

// Opens the file only to fold its log in: for a file this program doesn't keep.
void foldInFile(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return;
    sqlite3 *db = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK)
        foldIn(db);
    sqlite3_close_v2(db);
}

} // namespace

namespace SqliteWal {

std::optional<FileId> fileIdOf(const QString &path)
{
    struct stat info {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return FileId{quint64(info.st_dev), quint64(info.st_ino)};
}

void keepWhileRunning(const QString &databasePath)
{
    {
        Keepers &all = keepers();
        const QMutexLocker locker(&all.mutex);
        all.wanted.insert(keyOf(databasePath));
    }
    resume(databasePath);
}

void dropReplaced()
{
    Keepers &all = keepers();
    const QMutexLocker locker(&all.mutex);
    dropStale(all);
}

void resume(const QString &databasePath)
{
    Keepers &all = keepers();
    const QMutexLocker locker(&all.mutex);
    if (all.wanted.isEmpty())
        return;
    dropStale(all);
    const QString key = keyOf(databasePath);
    // Work that replaces the file runs on the rollback journal.
    if (!all.wanted.contains(key) || all.byPath.count(key) || DatabaseUseLock::isHeldExclusivelyHere(key))
        return;
    const std::optional<FileId> id = fileIdOf(key);
    if (!id)
        return;
    all.byPath.emplace(key, openKeeper(key, *id));
}

void settle(const QString &databasePath)
{
    DbConnection::closeIdleFiles(databasePath);
    Keepers &all = keepers();
    const QMutexLocker locker(&all.mutex);
    const QString key = keyOf(databasePath);
    all.byPath.erase(key);
    foldInFile(key);
}

void settleAll()
{
    DbConnection::closeIdleFiles();
    Keepers &all = keepers();
    const QMutexLocker locker(&all.mutex);
    all.byPath.clear();
}

bool isKept(const QString &databasePath)
{
    Keepers &all = keepers();
    const QMutexLocker locker(&all.mutex);
    const auto found = all.byPath.find(keyOf(databasePath));
    return found != all.byPath.end() && found->second->db;
}

} // namespace SqliteWal
