#include "store/MiscSettings.h"

#include "store/DatabaseError.h"
#include "store/DbConnection.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSysInfo>

MiscSettings::MiscSettings(const DbConnection &db) : mDb(db)
{
}

QString MiscSettings::workstationName()
{
    const QString named = qEnvironmentVariable("TAVIMETRA_WORKSTATION");
    return named.isEmpty() ? QSysInfo::machineHostName() : named;
}

bool MiscSettings::perWorkstation() const
{
    return mDb.dialect().isServer();
}

QString MiscSettings::rowFilter() const
{
    return perWorkstation() ? QStringLiteral(" WHERE Workstation = ?") : QString();
}

QVariantList MiscSettings::rowKey() const
{
    return perWorkstation() ? QVariantList{workstationName()} : QVariantList{};
}

void MiscSettings::makeRow() const
{
    // A workstation new to the server starts as a new install does: on the first reader.
    mDb.execute(QStringLiteral("INSERT INTO MiscSettings (Workstation, LastUserReaderID, LastUserFilterNo, "
                               "ChangesSinceLastCompact) SELECT ?, MIN(UserReaderID), 0, 0 FROM UserReaders "
                               "ON CONFLICT (Workstation) DO NOTHING"),
                {workstationName()});
}

QVariant MiscSettings::read(const QString &column) const
{
    const QString sql = QStringLiteral("SELECT ") + column + QStringLiteral(" FROM MiscSettings") + rowFilter();
    for (int attempt = 0; attempt < 2; ++attempt) {
        QSqlQuery row = mDb.query(sql, rowKey());
        if (row.next())
            return row.value(0);
        if (row.lastError().isValid())
            throw DatabaseError::fromSqlError(row.lastError(), sql);
        if (!perWorkstation())
            break;
        makeRow();
    }
    throw DatabaseError(QStringLiteral("MiscSettings has no row [") + sql + QLatin1Char(']'));
}

void MiscSettings::write(const QString &column, const QVariant &value) const
{
    if (perWorkstation())
        makeRow();
    mDb.execute(QStringLiteral("UPDATE MiscSettings SET ") + column + QStringLiteral(" = ?") + rowFilter(),
                QVariantList{value} + rowKey());
}

std::optional<int> MiscSettings::lastUserReaderID() const
{
    const QVariant value = read(QStringLiteral("LastUserReaderID"));
    if (value.isNull())
        return std::nullopt;
    return value.toInt();
}

void MiscSettings::setLastUserReaderID(std::optional<int> id) const
{
    write(QStringLiteral("LastUserReaderID"), id ? QVariant(*id) : QVariant(QMetaType::fromType<int>()));
}

int MiscSettings::lastUserFilterNo() const
{
    return read(QStringLiteral("LastUserFilterNo")).toInt();
}

void MiscSettings::setLastUserFilterNo(int listIndex) const
{
    write(QStringLiteral("LastUserFilterNo"), listIndex);
}

double MiscSettings::changesSinceLastCompact() const
{
    // A server keeps its own storage: there is never anything for this program to compact.
    if (perWorkstation())
        return 0.0;
    return read(QStringLiteral("ChangesSinceLastCompact")).toDouble();
}

void MiscSettings::setChangesSinceLastCompact(double count) const
{
    if (perWorkstation())
        return;
    write(QStringLiteral("ChangesSinceLastCompact"), count);
}
