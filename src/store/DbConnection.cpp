#include "store/DbConnection.h"

#include "store/DatabaseError.h"
#include "store/DatabaseUseLock.h"
#include "store/ServerSchema.h"
#include "store/SqlDialect.h"
#include "store/SqliteWal.h"

#include <QFileInfo>
#include <QHash>
#include <QSqlError>

#include <atomic>
#include <utility>

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
struct IdleConnections {
    QHash<QString, QStringList> names; // key: mode and location
    ~IdleConnections()
    {
        for (const QStringList &list : std::as_const(names)) {
            for (const QString &name : list) {
                QSqlDatabase::database(name, false).close();
                QSqlDatabase::removeDatabase(name);
            }
        }
    }
};

IdleConnections &idleConnections()
{
    thread_local IdleConnections idle;
    return idle;
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
        if (!mLocation.isServer() && !mReadOnly)
            SqliteWal::resume(mPath);
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

void DbConnection::close()
{
    if (!mName.isEmpty()) {
        if (mLocation.isServer() && !mFailed && mDb.isOpen()) {
            idleConnections().names[poolKey(mPath, mReadOnly)].append(mName);
            mDb = QSqlDatabase();
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
