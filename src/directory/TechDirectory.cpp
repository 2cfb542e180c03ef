#include "directory/TechDirectory.h"

#include "core/NameMatch.h"
#include "directory/DirectoryError.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"
#include "store/RunDatabase.h"

#include <QSqlQuery>

namespace {

// A technician by the stored spelling (see TechDirectory::storedName).
const QString kByName = QStringLiteral(" WHERE TechName = ?");

} // namespace

QStringList TechDirectory::techNames() const
{
    QStringList list = columnNames(QStringLiteral("SELECT TechName FROM Technicians"));
    names::sort(list);
    return list;
}

QStringList TechDirectory::columnNames(const QString &select) const
{
    QStringList list;
    QSqlQuery rows = mDb.query(select);
    while (rows.next()) {
        if (!rows.value(0).isNull())
            list << rows.value(0).toString();
    }
    return list;
}

std::optional<QString> TechDirectory::storedName(const QString &name) const
{
    return names::find(columnNames(QStringLiteral("SELECT TechName FROM Technicians")), name);
}

bool TechDirectory::techNameExists(const QString &name) const
{
    return storedName(name).has_value();
}

std::optional<QString> TechDirectory::findTech(const QString &name) const
{
    return storedName(name);
}

bool TechDirectory::insertTech(const QString &name) const
{
    DbTransaction transaction(mDb);
    // Names are compared here, not by the database: on a server another workstation must
    // not add the same name between the check and the insert.
    lockBeforeNewId(mDb, QStringLiteral("Technicians"));
    if (techNameExists(name))
        return false;
    mDb.execute(QStringLiteral("INSERT INTO Technicians (TechName) VALUES (?)"), {name});
    transaction.commit();
    return true;
}

bool TechDirectory::updateTech(const QString &oldName, const QString &newName) const
{
    DbTransaction transaction(mDb);
    lockBeforeNewId(mDb, QStringLiteral("Technicians"));
    if (techNameExists(newName) && newName != oldName)
        return false;
    const std::optional<QString> stored = storedName(oldName);
    if (!stored)
        throw DirectoryError(QStringLiteral("The technician '") + oldName
                             + QStringLiteral("' is no longer in the database."));
    mDb.execute(QStringLiteral("UPDATE Technicians SET TechName = ?") + kByName, {newName, *stored});
    if (!newName.isEmpty() && newName != oldName) {
        // The plates of the technician by any spelling of the name.
        const QStringList used = columnNames(QStringLiteral("SELECT DISTINCT TechName FROM Plates"));
        for (const QString &spelling : used) {
            if (names::same(spelling, oldName))
                mDb.execute(QStringLiteral("UPDATE Plates SET TechName = ?") + kByName, {newName, spelling});
        }
    }
    transaction.commit();
    return true;
}

void TechDirectory::deleteTech(const QString &name) const
{
    if (const std::optional<QString> stored = storedName(name))
        mDb.execute(QStringLiteral("DELETE FROM Technicians") + kByName, {*stored});
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
