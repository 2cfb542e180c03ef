#include "store/DbConnection.h"

#include "store/DatabaseError.h"
#include "store/DatabaseUseLock.h"
#include "store/ServerSchema.h"
#include "store/SqlDialect.h"
#include "store/SqliteWal.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSqlDriver>
#include <QSqlError>

#include <atomic>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include <sqlite3.h>

namespace {

constexpr int kDefaultBusyTimeoutMs = 5000;
std::atomic<int> gBusyTimeoutMs{kDefaultBusyTimeoutMs};

QString newConnectionName()
{
    static std::atomic<quint64> counter{0};
    return QStringLiteral("tavimetra-db-%1").arg(++counter);
}

// Connections to a server cost a new server process each: the connections of a thread that
// ended their work cleanly wait here, by location and mode, for the next piece of work.
// A connection that saw any failure is closed instead.
//
// So do the read-write connections to a file this program keeps in WAL mode (SqliteWal): a
// new SQLite connection reads the whole schema again, about a tenth of a save. One waits
// idle, out of any transaction and with no statement left, holding its use lock as an open
// connection does; it is taken again only for the same file (not one put in its place
// meanwhile) and the same busy timeout. Work that needs the file whole (SqliteWal::settle)
// closes it first, as the program's end and a fork do.
struct IdleFile {
    QString name;
    std::unique_ptr<DatabaseUseLock> lock;
    QString canonicalPath;
    SqliteWal::FileId id;
    int busyTimeoutMs = 0;
};

struct IdleConnections {
    QHash<QString, QStringList> names;              // key: mode and location
    std::map<QString, std::vector<IdleFile>> files; // key: the location as given
    ~IdleConnections()
    {
        for (const QStringList &list : std::as_const(names)) {
            for (const QString &name : list)
                closeNamed(name);
        }
        for (const auto &[path, list] : files) {
            for (const IdleFile &idle : list)
                closeNamed(idle.name);
        }
    }
    static void closeNamed(const QString &name)
    {
        QSqlDatabase::database(name, false).close();
        QSqlDatabase::removeDatabase(name);
    }
};

IdleConnections &idleConnections()
{
    thread_local IdleConnections idle;
    return idle;
}

sqlite3 *handleOf(const QSqlDatabase &db)
{
    const QVariant handle = db.isValid() ? db.driver()->handle() : QVariant();
    return handle.isValid() ? *static_cast<sqlite3 *const *>(handle.constData()) : nullptr;
}

QString poolKey(const QString &location, bool readOnly)
{
    return (readOnly ? QStringLiteral("r:") : QStringLiteral("w:")) + location;
}

} // namespace

DbConnection::DbConnection(const QString &location, Mode mode) : mPath(location)
{
    if (location.isEmpty())
        throw DatabaseError(QStringLiteral("No database path given"));
    mLocation = DatabaseLocation::parse(location);
    if (!mLocation.isServer()) {
        if (mode != Mode::Create && !QFileInfo(location).isFile())
            throw DatabaseError(QStringLiteral("The database file does not exist: ") + location);
        // A connection that may write holds the file against replacement; one that only
        // reads sees the file it opened whole, whatever happens to the name. A server has
        // no file to hold: its storage is its own.
        if (mode == Mode::ReadWrite) {
            if (reuseIdleFile())
                return;
            mUseLock = std::make_unique<DatabaseUseLock>(location, DatabaseUseLock::Kind::Shared, busyTimeoutMs());
            if (!mUseLock->isHeld())
                throw DatabaseError::inUse();
        }
    }
    open(mode);
}

int DbConnection::busyTimeoutMs()
{
    return gBusyTimeoutMs;
}

void DbConnection::setBusyTimeoutMs(int ms)
{
    gBusyTimeoutMs = ms;
}

void DbConnection::open(Mode mode)
{
    mReadOnly = mode == Mode::ReadOnly;
    if (mLocation.isServer()) {
        QStringList &idle = idleConnections().names[poolKey(mPath, mReadOnly)];
        if (!idle.isEmpty()) {
            mName = idle.takeLast();
            mDb = QSqlDatabase::database(mName, false);
            if (mDb.isOpen())
                return;
            close();
        }
    }
    mName = newConnectionName();
    mDb = QSqlDatabase::addDatabase(dialect().driverName(), mName);
    mDb.setDatabaseName(mLocation.databaseName());
    if (mLocation.isServer()) {
        mDb.setHostName(mLocation.host());
        mDb.setPort(mLocation.port());
        mDb.setUserName(mLocation.userName());
        mDb.setConnectOptions(mLocation.connectOptions());
    } else {
        mDb.setConnectOptions(dialect().connectOptions(mReadOnly, busyTimeoutMs()));
    }
    if (!mDb.open()) {
        const QString what = mLocation.isServer() ? QStringLiteral("connect to ") + mLocation.displayName()
                                                  : QStringLiteral("open: ") + mPath;
        const DatabaseError error = DatabaseError::fromSqlError(mDb.lastError(), what);
        close();
        throw error;
    }
    try {
        // Before its first statement: the connection finds the file in WAL mode from the start.
        if (!mLocation.isServer())
            mReadOnly ? SqliteWal::dropReplaced() : SqliteWal::resume(mPath);
        for (const QString &statement : dialect().connectionSetup(mode == Mode::ReadOnly))
            execute(statement);
        if (mLocation.isServer())
            ServerSchema::prepareOnce(*this);
    } catch (...) {
        close();
        throw;
    }
}

DbConnection::~DbConnection()
{
    close();
}

DbConnection::DbConnection(DbConnection &&other) noexcept
    : mPath(std::move(other.mPath)), mLocation(std::move(other.mLocation)), mReadOnly(other.mReadOnly),
      mFailed(other.mFailed), mName(std::exchange(other.mName, QString())),
      mDb(std::exchange(other.mDb, QSqlDatabase())), mUseLock(std::move(other.mUseLock))
{
}

DbConnection &DbConnection::operator=(DbConnection &&other) noexcept
{
    if (this != &other) {
        close();
        mPath = std::move(other.mPath);
        mLocation = std::move(other.mLocation);
        mReadOnly = other.mReadOnly;
        mFailed = other.mFailed;
        mName = std::exchange(other.mName, QString());
        mDb = std::exchange(other.mDb, QSqlDatabase());
        mUseLock = std::move(other.mUseLock);
    }
    return *this;
}

sqlite3 *DbConnection::sqliteHandle() const
{
    return mLocation.isServer() ? nullptr : handleOf(mDb);
}

bool DbConnection::reuseIdleFile()
{
    auto found = idleConnections().files.find(mPath);
    if (found == idleConnections().files.end())
        return false;
    std::vector<IdleFile> &idle = found->second;
    while (!idle.empty()) {
        IdleFile last = std::move(idle.back());
        idle.pop_back();
        QSqlDatabase db = QSqlDatabase::database(last.name, false);
        if (db.isOpen() && SqliteWal::fileIdOf(mPath) == last.id && last.busyTimeoutMs == busyTimeoutMs()) {
            SqliteWal::resume(mPath);
            mName = last.name;
            mDb = db;
            mUseLock = std::move(last.lock);
            mReadOnly = false;
            return true;
        }
        // The file was replaced, or the connection is no longer what is asked for.
        if (sqlite3 *handle = handleOf(db))
            sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        db = QSqlDatabase();
        IdleConnections::closeNamed(last.name);
    }
    return false;
}

bool DbConnection::mayWaitIdle() const
{
    if (mLocation.isServer() || mReadOnly || mFailed || !mDb.isOpen() || !mUseLock)
        return false;
    sqlite3 *handle = sqliteHandle();
    return handle && sqlite3_get_autocommit(handle) != 0 && sqlite3_next_stmt(handle, nullptr) == nullptr &&
           SqliteWal::isKept(mPath);
}

void DbConnection::closeIdleFiles(const QString &databasePath)
{
    const QString canonical = databasePath.isEmpty() ? QString() : QFileInfo(databasePath).canonicalFilePath();
    for (auto it = idleConnections().files.begin(); it != idleConnections().files.end();) {
        std::vector<IdleFile> &idle = it->second;
        for (auto entry = idle.begin(); entry != idle.end();) {
            if (!databasePath.isEmpty() && entry->canonicalPath != canonical) {
                ++entry;
                continue;
            }
            IdleConnections::closeNamed(entry->name);
            entry = idle.erase(entry); // its use lock goes with it
        }
        it = idle.empty() ? idleConnections().files.erase(it) : std::next(it);
    }
}

void DbConnection::close()
{
    if (!mName.isEmpty()) {
        const std::optional<SqliteWal::FileId> fileId = mayWaitIdle() ? SqliteWal::fileIdOf(mPath) : std::nullopt;
        if (mLocation.isServer() && !mFailed && mDb.isOpen()) {
            idleConnections().names[poolKey(mPath, mReadOnly)].append(mName);
            mDb = QSqlDatabase();
        } else if (fileId) {
            std::vector<IdleFile> &idle = idleConnections().files[mPath];
            idle.push_back(
                {mName, std::move(mUseLock), QFileInfo(mPath).canonicalFilePath(), *fileId, busyTimeoutMs()});
            mDb = QSqlDatabase();
            // One waiting is enough for one piece of work at a time.
            while (idle.size() > 2) {
                IdleConnections::closeNamed(idle.front().name);
                idle.erase(idle.begin());
            }
        } else {
            // Our handle goes first: Qt warns on stderr of a connection removed while in use.
            mDb.close();
            mDb = QSqlDatabase();
            QSqlDatabase::removeDatabase(mName);
        }
        mName.clear();
    }
    mUseLock.reset();
}

DatabaseError DbConnection::failed(DatabaseError error) const
{
    mFailed = true;
    return error;
}

QSqlQuery DbConnection::query(const QString &sql, const QVariantList &values) const
{
    if (!mDb.isOpen())
        throw DatabaseError(QStringLiteral("The connection is closed [") + sql + QLatin1Char(']'));
    QSqlQuery query(mDb);
    query.setForwardOnly(true);
    // The server driver prepares statements by name on the server, which it can't do for
    // transaction control and settings: a statement without values is sent as it is.
    if (values.isEmpty() && mLocation.isServer()) {
        if (!query.exec(sql))
            throw failed(DatabaseError::fromSqlError(query.lastError(), sql));
        return query;
    }
    if (!query.prepare(sql))
        throw failed(DatabaseError::fromSqlError(query.lastError(), sql));
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values.at(i));
    if (!query.exec())
        throw failed(DatabaseError::fromSqlError(query.lastError(), sql));
    return query;
}

int DbConnection::execute(const QString &sql, const QVariantList &values) const
{
    QSqlQuery done = query(sql, values);
    const int rows = done.numRowsAffected();
    done.finish();
    return rows;
}

QVariant DbConnection::scalar(const QString &sql, const QVariantList &values) const
{
    QSqlQuery found = query(sql, values);
    if (!found.next()) {
        if (found.lastError().isValid())
            throw failed(DatabaseError::fromSqlError(found.lastError(), sql));
        return QVariant();
    }
    return found.value(0);
}
