#include "store/PreparedStatement.h"

#include "store/DatabaseError.h"
#include "store/DbConnection.h"

#include <QSqlError>
#include <QSqlRecord>

#include <sqlite3.h>

namespace {

// The error as the SQLite driver would have made it, so the words shown stay the same.
DatabaseError sqliteError(sqlite3 *db, int code, const QString &what, const QString &sql)
{
    const QSqlError error(what, QString::fromUtf8(sqlite3_errmsg(db)), QSqlError::StatementError,
                          QString::number(code));
    return DatabaseError::fromSqlError(error, sql);
}

} // namespace

PreparedStatement::PreparedStatement(const DbConnection &db, const QString &sql) : mSql(sql)
{
    if (db.dialect().isServer()) {
        mQuery = std::make_unique<QSqlQuery>(db.database());
        if (!mQuery->prepare(sql))
            throw DatabaseError::fromSqlError(mQuery->lastError(), sql);
        return;
    }
    sqlite3 *connection = db.sqliteHandle();
    const QByteArray text = sql.toUtf8();
    const int code = sqlite3_prepare_v2(connection, text.constData(), int(text.size()), &mStatement, nullptr);
    if (code != SQLITE_OK) {
        sqlite3_finalize(mStatement);
        mStatement = nullptr;
        throw sqliteError(connection, sqlite3_extended_errcode(connection),
                          QStringLiteral("Unable to execute statement"), sql);
    }
}

PreparedStatement::~PreparedStatement()
{
    sqlite3_finalize(mStatement);
}

void PreparedStatement::bind(const QVariantList &values, QList<QByteArray> &texts)
{
    texts.reserve(values.size());
    for (int i = 0; i < values.size(); ++i) {
        const QVariant &value = values.at(i);
        switch (value.isNull() ? QMetaType::UnknownType : value.typeId()) {
        case QMetaType::UnknownType: sqlite3_bind_null(mStatement, i + 1); break;
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::Bool: sqlite3_bind_int64(mStatement, i + 1, value.toLongLong()); break;
        case QMetaType::Double: sqlite3_bind_double(mStatement, i + 1, value.toDouble()); break;
        case QMetaType::QString:
            // A null text is stored as Null, as the driver stores it.
            if (static_cast<const QString *>(value.constData())->isNull()) {
                sqlite3_bind_null(mStatement, i + 1);
                break;
            }
            [[fallthrough]];
        default:
            texts.append(value.toString().toUtf8());
            sqlite3_bind_text(mStatement, i + 1, texts.last().constData(), int(texts.last().size()), SQLITE_STATIC);
        }
    }
}

void PreparedStatement::fail(int stepped)
{
    Q_UNUSED(stepped);
    const int code = sqlite3_reset(mStatement);
    sqlite3_clear_bindings(mStatement);
    throw sqliteError(sqlite3_db_handle(mStatement), code, QStringLiteral("Unable to fetch row"), mSql);
}

void PreparedStatement::run(const QVariantList &values)
{
    if (mQuery) {
        for (int i = 0; i < values.size(); ++i)
            mQuery->bindValue(i, values.at(i));
        if (!mQuery->exec())
            throw DatabaseError::fromSqlError(mQuery->lastError(), mSql);
        mQuery->finish();
        return;
    }
    QList<QByteArray> texts; // alive until the step
    bind(values, texts);
    const int stepped = sqlite3_step(mStatement);
    if (stepped != SQLITE_DONE && stepped != SQLITE_ROW)
        fail(stepped);
    sqlite3_reset(mStatement);
    sqlite3_clear_bindings(mStatement);
}

void PreparedStatement::query(const QVariantList &values)
{
    if (mQuery) {
        mQuery->setForwardOnly(true);
        for (int i = 0; i < values.size(); ++i)
            mQuery->bindValue(i, values.at(i));
        if (!mQuery->exec())
            throw DatabaseError::fromSqlError(mQuery->lastError(), mSql);
        return;
    }
    sqlite3_reset(mStatement);
    mTexts.clear(); // the values bound stay for the steps to come
    bind(values, mTexts);
    const int stepped = sqlite3_step(mStatement);
    if (stepped != SQLITE_DONE && stepped != SQLITE_ROW)
        fail(stepped);
    mPending = stepped == SQLITE_ROW;
    mDone = stepped == SQLITE_DONE;
}

bool PreparedStatement::next()
{
    if (mQuery)
        return mQuery->next();
    if (mPending) {
        mPending = false;
        return true;
    }
    if (mDone)
        return false;
    const int stepped = sqlite3_step(mStatement);
    if (stepped == SQLITE_ROW)
        return true;
    if (stepped != SQLITE_DONE)
        fail(stepped);
    mDone = true;
    return false;
}

QVariant PreparedStatement::value(int column) const
{
    if (mQuery)
        return mQuery->value(column);
    switch (sqlite3_column_type(mStatement, column)) {
    case SQLITE_NULL: return QVariant();
    case SQLITE_INTEGER: return qlonglong(sqlite3_column_int64(mStatement, column));
    case SQLITE_FLOAT: return sqlite3_column_double(mStatement, column);
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char *>(sqlite3_column_blob(mStatement, column)),
                          sqlite3_column_bytes(mStatement, column));
    default:
        return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(mStatement, column)),
                                 sqlite3_column_bytes(mStatement, column));
    }
}

int PreparedStatement::columnCount() const
{
    return mQuery ? mQuery->record().count() : sqlite3_column_count(mStatement);
}

QString PreparedStatement::columnName(int column) const
{
    return mQuery ? mQuery->record().fieldName(column) : QString::fromUtf8(sqlite3_column_name(mStatement, column));
}
