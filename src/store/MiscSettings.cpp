#include "store/MiscSettings.h"

#include "store/DatabaseError.h"
#include "store/DbConnection.h"

#include <QSqlError>
#include <QSqlQuery>

namespace {

QVariant readSetting(const DbConnection &db, const QString &sql)
{
    QSqlQuery row = db.query(sql);
    if (!row.next()) {
        if (row.lastError().isValid())
            throw DatabaseError::fromSqlError(row.lastError(), sql);
        throw DatabaseError(QStringLiteral("MiscSettings has no row [") + sql + QLatin1Char(']'));
    }
    return row.value(0);
}

} // namespace

MiscSettings::MiscSettings(const DbConnection &db) : mDb(db)
{
}

std::optional<int> MiscSettings::lastUserReaderID() const
{
    const QVariant value =
        readSetting(mDb, QStringLiteral("SELECT LastUserReaderID FROM MiscSettings"));
    if (value.isNull())
        return std::nullopt;
    return value.toInt();
}

void MiscSettings::setLastUserReaderID(std::optional<int> id) const
{
    mDb.execute(QStringLiteral("UPDATE MiscSettings SET LastUserReaderID = ?"),
                {id ? QVariant(*id) : QVariant(QMetaType::fromType<int>())});
}

int MiscSettings::lastUserFilterNo() const
{
    return readSetting(mDb, QStringLiteral("SELECT LastUserFilterNo FROM MiscSettings")).toInt();
}

void MiscSettings::setLastUserFilterNo(int listIndex) const
{
    mDb.execute(QStringLiteral("UPDATE MiscSettings SET LastUserFilterNo = ?"), {listIndex});
}

double MiscSettings::changesSinceLastCompact() const
{
    return readSetting(mDb, QStringLiteral("SELECT ChangesSinceLastCompact FROM MiscSettings"))
        .toDouble();
}

void MiscSettings::setChangesSinceLastCompact(double count) const
{
    mDb.execute(QStringLiteral("UPDATE MiscSettings SET ChangesSinceLastCompact = ?"), {count});
}
