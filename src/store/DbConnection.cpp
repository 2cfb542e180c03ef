#include "store/DbConnection.h"

#include "store/DatabaseError.h"
#include "store/ServerSchema.h"

#include <QFileInfo>
#include <QSqlError>

#include <atomic>
#include <utility>

namespace {

QString newConnectionName()
{
    static std::atomic<quint64> counter{0};
    return QStringLiteral("tavimetra-db-%1").arg(++counter);
}

} // namespace

DbConnection::DbConnection(const QString &location, Mode mode) : mPath(location)
{
    if (location.isEmpty())
        throw DatabaseError(QStringLiteral("No database path given"));
    mLocation = DatabaseLocation::parse(location);
    if (!mLocation.isServer() && mode != Mode::Create && !QFileInfo(location).isFile())
        throw DatabaseError(QStringLiteral("The database file does not exist: ") + location);
    open(mode);
}

void DbConnection::open(Mode mode)
{
    mName = newConnectionName();
    mDb = QSqlDatabase::addDatabase(dialect().driverName(), mName);
    mDb.setDatabaseName(mLocation.databaseName());
    if (mLocation.isServer()) {
        mDb.setHostName(mLocation.host());
        mDb.setPort(mLocation.port());
        mDb.setUserName(mLocation.userName());
        mDb.setConnectOptions(mLocation.connectOptions());
    } else if (mode == Mode::ReadOnly) {
        mDb.setConnectOptions(dialect().readOnlyConnectOptions());
    }
    if (!mDb.open()) {
        const QString what = mLocation.isServer()
                                 ? QStringLiteral("connect to ") + mLocation.displayName()
                                 : QStringLiteral("open: ") + mPath;
        const DatabaseError error = DatabaseError::fromSqlError(mDb.lastError(), what);
        close();
        throw error;
    }
    try {
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
    : mPath(std::move(other.mPath)), mLocation(std::move(other.mLocation)), mName(std::exchange(other.mName, QString())),
      mDb(std::exchange(other.mDb, QSqlDatabase()))
{
}

DbConnection &DbConnection::operator=(DbConnection &&other) noexcept
{
    if (this != &other) {
        close();
        mPath = std::move(other.mPath);
        mLocation = std::move(other.mLocation);
        mName = std::exchange(other.mName, QString());
        mDb = std::exchange(other.mDb, QSqlDatabase());
    }
    return *this;
}

void DbConnection::close()
{
    if (mName.isEmpty())
        return;
    mDb.close();
    mDb = QSqlDatabase();
    QSqlDatabase::removeDatabase(mName);
    mName.clear();
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
            throw DatabaseError::fromSqlError(query.lastError(), sql);
        return query;
    }
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
