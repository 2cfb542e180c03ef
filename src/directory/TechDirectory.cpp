#include "directory/TechDirectory.h"

#include "directory/DirectoryError.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"

#include <QSqlQuery>

namespace {

// A technician by name, compared as the database compares names.
const QString kByName = QStringLiteral(" WHERE LOWER(TechName) = LOWER(?)");

} // namespace

QStringList TechDirectory::techNames() const
{
    QStringList names;
    QSqlQuery rows = mDb.query(QStringLiteral("SELECT TechName FROM Technicians "
                                              "ORDER BY LOWER(TechName) ASC, TechName ASC"));
    while (rows.next())
        names << rows.value(0).toString();
    return names;
}

bool TechDirectory::techNameExists(const QString &name) const
{
    QSqlQuery rows = mDb.query(QStringLiteral("SELECT TechName FROM Technicians") + kByName, {name});
    return rows.next();
}

std::optional<QString> TechDirectory::findTech(const QString &name) const
{
    QSqlQuery rows = mDb.query(QStringLiteral("SELECT TechName FROM Technicians") + kByName, {name});
    if (!rows.next())
        return std::nullopt;
    return rows.value(0).toString();
}

bool TechDirectory::insertTech(const QString &name) const
{
    DbTransaction transaction(mDb);
    if (techNameExists(name))
        return false;
    mDb.execute(QStringLiteral("INSERT INTO Technicians (TechName) VALUES (?)"), {name});
    transaction.commit();
    return true;
}

bool TechDirectory::updateTech(const QString &oldName, const QString &newName) const
{
    DbTransaction transaction(mDb);
    if (techNameExists(newName) && newName != oldName)
        return false;
    if (!techNameExists(oldName))
        throw DirectoryError(QStringLiteral("The technician '") + oldName
                             + QStringLiteral("' is no longer in the database."));
    mDb.execute(QStringLiteral("UPDATE Technicians SET TechName = ?") + kByName, {newName, oldName});
    if (!newName.isEmpty() && newName != oldName)
        mDb.execute(QStringLiteral("UPDATE Plates SET TechName = ?") + kByName, {newName, oldName});
    transaction.commit();
    return true;
}

void TechDirectory::deleteTech(const QString &name) const
{
    mDb.execute(QStringLiteral("DELETE FROM Technicians") + kByName, {name});
}

bool TechDirectory::savedPlatesUseTech(const QString &name) const
{
    QSqlQuery plates = mDb.query(QStringLiteral("SELECT TechName FROM Plates"));
    while (plates.next()) {
        const QVariant tech = plates.value(0);
        if (!tech.isNull() && tech.toString().trimmed() == name)
            return true;
    }
    return false;
}
