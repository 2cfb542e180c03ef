#include "store/DbConnection.h"

#include "store/DatabaseError.h"
#include "store/DatabaseUseLock.h"
#include "store/SqlDialect.h"

#include <QFileInfo>
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

} // namespace

DbConnection::DbConnection(const QString &path, Mode mode) : mPath(path)
{
    if (path.isEmpty())
        throw DatabaseError(QStringLiteral("No database path given"));
    if (mode != Mode::Create && !QFileInfo(path).isFile())
        throw DatabaseError(QStringLiteral("The database file does not exist: ") + path);
    // A connection that may write holds the file against replacement; one that only reads
    // sees the file it opened whole, whatever happens to the name.
    if (mode == Mode::ReadWrite) {
        mUseLock = std::make_unique<DatabaseUseLock>(path, DatabaseUseLock::Kind::Shared, busyTimeoutMs());
        if (!mUseLock->isHeld())
            throw DatabaseError::inUse();
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
    mName = newConnectionName();
    mDb = QSqlDatabase::addDatabase(SqlDialect::driverName(), mName);
    mDb.setDatabaseName(mPath);
    mDb.setConnectOptions(SqlDialect::connectOptions(mode == Mode::ReadOnly, busyTimeoutMs()));
    if (!mDb.open()) {
        const DatabaseError error =
            DatabaseError::fromSqlError(mDb.lastError(), QStringLiteral("open: ") + mPath);
        close();
        throw error;
    }
    try {
        for (const QString &statement : SqlDialect::connectionSetup())
            execute(statement);
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
    : mPath(std::move(other.mPath)), mName(std::exchange(other.mName, QString())),
      mDb(std::exchange(other.mDb, QSqlDatabase())), mUseLock(std::move(other.mUseLock))
{
}

DbConnection &DbConnection::operator=(DbConnection &&other) noexcept
{
    if (this != &other) {
        close();
        mPath = std::move(other.mPath);
        mName = std::exchange(other.mName, QString());
        mDb = std::exchange(other.mDb, QSqlDatabase());
        mUseLock = std::move(other.mUseLock);
    }
    return *this;
}

void DbConnection::close()
{
    if (!mName.isEmpty()) {
        mDb.close();
        mDb = QSqlDatabase();
        QSqlDatabase::removeDatabase(mName);
        mName.clear();
    }
    mUseLock.reset();
}

QSqlQuery DbConnection::query(const QString &sql, const QVariantList &values) const
{
    if (!mDb.isOpen())
        throw DatabaseError(QStringLiteral("The connection is closed [") + sql + QLatin1Char(']'));
    QSqlQuery query(mDb);
    query.setForwardOnly(true);
    if (!query.prepare(sql))
        throw DatabaseError::fromSqlError(query.lastError(), sql);
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values.at(i));
    if (!query.exec())
        throw DatabaseError::fromSqlError(query.lastError(), sql);
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
            throw DatabaseError::fromSqlError(found.lastError(), sql);
        return QVariant();
    }
    return found.value(0);
}
