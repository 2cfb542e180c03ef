#include "directory/TechDirectory.h"

#include "core/NameMatch.h"
#include "directory/DirectoryError.h"
#include "store/DbConnection.h"
#include "store/AuditTrail.h"
#include "store/DbTransaction.h"
#include "store/RunDatabase.h"

#include <QSqlQuery>

namespace {

// A technician by the stored spelling (see TechDirectory::storedName).
const QString kByName = QStringLiteral(" WHERE TechName = ?");

AuditEntry techEntry(const QString &action, const QString &name, const QString &oldValue, const QString &newValue)
{
    AuditEntry entry;
    entry.action = action;
    entry.table = QStringLiteral("Technicians");
    entry.recordID = name;
    entry.field = QStringLiteral("TechName");
    entry.oldValue = oldValue;
    entry.newValue = newValue;
    return entry;
}

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
    AuditTrail(mDb).record(techEntry(AuditTrail::kTechnicianAdded, name, QString(), name));
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
        throw DirectoryError(QStringLiteral("The technician '") + oldName +
                             QStringLiteral("' is no longer in the database."));
    mDb.execute(QStringLiteral("UPDATE Technicians SET TechName = ?") + kByName, {newName, *stored});
    const AuditTrail trail(mDb);
    trail.record(techEntry(AuditTrail::kTechnicianRenamed, newName, *stored, newName));
    if (!newName.isEmpty() && newName != oldName) {
        // The plates of the technician by any spelling of the name, each into the trail.
        QList<std::pair<QVariant, QVariant>> reached;
        QList<QString> spellings;
        {
            QSqlQuery plates = mDb.query(QStringLiteral("SELECT RunID, PlateID, TechName FROM Plates"));
            while (plates.next()) {
                if (!plates.value(2).isNull() && names::same(plates.value(2).toString(), oldName)) {
                    reached.append({plates.value(0), plates.value(1)});
                    spellings.append(plates.value(2).toString());
                }
            }
        }
        for (int i = 0; i < reached.size(); ++i) {
            const qint64 runID = reached[i].first.toLongLong();
            const qint64 plateID = reached[i].second.toLongLong();
            mDb.execute(QStringLiteral("UPDATE Plates SET TechName = ? WHERE RunID = ? AND PlateID = ?"),
                        {newName, runID, plateID});
            AuditEntry entry = techEntry(AuditTrail::kPlateChanged, QString(), spellings[i], newName);
            entry.table = QStringLiteral("Plates");
            entry.recordID = AuditTrail::plateRecord(runID, plateID);
            entry.runID = runID;
            entry.plateID = plateID;
            trail.record(entry);
        }
    }
    transaction.commit();
    return true;
}

void TechDirectory::deleteTech(const QString &name) const
{
    const std::optional<QString> stored = storedName(name);
    if (!stored)
        return;
    DbTransaction transaction(mDb);
    mDb.execute(QStringLiteral("DELETE FROM Technicians") + kByName, {*stored});
    AuditTrail(mDb).record(techEntry(AuditTrail::kTechnicianDeleted, *stored, *stored, QString()));
    transaction.commit();
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
