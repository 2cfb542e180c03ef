#include "directory/GroupDirectory.h"

#include "core/NameMatch.h"
#include "directory/DirectoryError.h"
#include "directory/PlateNames.h"
#include "store/DbConnection.h"
#include "store/AuditTrail.h"
#include "store/DbTransaction.h"
#include "store/PlateChanges.h"
#include "store/RunDatabase.h"

#include <QSqlQuery>
#include <QVariantList>

namespace {

// The group's row by its stored spelling (see storedName).
const QString kByName = QStringLiteral(" WHERE GroupName = ?");

AuditEntry groupEntry(const QString &action, const QVariant &groupID)
{
    AuditEntry entry;
    entry.action = action;
    entry.table = QStringLiteral("Groups");
    entry.recordID = groupID.toString();
    return entry;
}

} // namespace

const QStringList &GroupDirectory::columns()
{
    static const QStringList names = {
        QStringLiteral("GroupName"), QStringLiteral("Name"),  QStringLiteral("Company"), QStringLiteral("Address1"),
        QStringLiteral("Address2"),  QStringLiteral("City"),  QStringLiteral("State"),   QStringLiteral("Zip"),
        QStringLiteral("Country"),   QStringLiteral("Phone"), QStringLiteral("Fax"),     QStringLiteral("Email"),
        QStringLiteral("Vet"),
    };
    return names;
}

QStringList GroupDirectory::groupNames() const
{
    QStringList list = tableNames();
    names::sort(list);
    return list;
}

QStringList GroupDirectory::tableNames() const
{
    QStringList list;
    QSqlQuery rows = mDb.query(QStringLiteral("SELECT GroupName FROM Groups WHERE GroupName IS NOT NULL"));
    while (rows.next())
        list << rows.value(0).toString();
    return list;
}

std::optional<QString> GroupDirectory::storedName(const QString &name) const
{
    return names::find(tableNames(), name);
}

bool GroupDirectory::groupNameExists(const QString &name) const
{
    return storedName(name).has_value();
}

std::optional<GroupDirectory::Fields> GroupDirectory::findGroup(const QString &name) const
{
    const std::optional<QString> stored = storedName(name);
    if (!stored)
        return std::nullopt;
    QSqlQuery rows = mDb.query(QStringLiteral("SELECT ") + columns().join(QStringLiteral(", ")) +
                                   QStringLiteral(" FROM Groups") + kByName,
                               {*stored});
    if (!rows.next())
        return std::nullopt;
    Fields fields;
    for (int i = 0; i < kFieldCount; ++i)
        fields[i] = rows.value(i).toString(); // Null reads as empty text
    return fields;
}

bool GroupDirectory::insertGroup(const Fields &fields) const
{
    DbTransaction transaction(mDb);
    // Names are compared here, not by the database: on a server another workstation must
    // not add the same name between the check and the insert.
    lockBeforeNewId(mDb, QStringLiteral("Groups"));
    if (groupNameExists(fields[0]))
        return false;
    const int groupID = getNewGroupID(mDb);
    QVariantList values{groupID};
    for (const QString &field : fields)
        values << field;
    mDb.execute(QStringLiteral("INSERT INTO Groups (GroupID, ") + columns().join(QStringLiteral(", ")) +
                    QStringLiteral(") VALUES (?") + QStringLiteral(", ?").repeated(kFieldCount) + QStringLiteral(")"),
                values);
    AuditEntry entry = groupEntry(AuditTrail::kGroupAdded, groupID);
    entry.field = QStringLiteral("GroupName");
    entry.newValue = fields[0];
    AuditTrail(mDb).record(entry);
    transaction.commit();
    return true;
}

bool GroupDirectory::updateGroup(const QString &oldName, const Fields &fields) const
{
    const QString &newName = fields[0];
    DbTransaction transaction(mDb);
    lockBeforeNewId(mDb, QStringLiteral("Groups"));
    if (groupNameExists(newName) && newName != oldName)
        return false;
    const QVariant groupID =
        mDb.scalar(QStringLiteral("SELECT GroupID FROM Groups") + kByName, {storedName(oldName).value_or(oldName)});
    if (groupID.isNull())
        throw DirectoryError(QStringLiteral("The group '") + oldName +
                             QStringLiteral("' is no longer in the database."));

    const std::optional<Fields> former = findGroup(storedName(oldName).value_or(oldName));
    const AuditTrail trail(mDb);
    for (int i = 0; former && i < kFieldCount; ++i) {
        if ((*former)[i] == fields[i])
            continue;
        AuditEntry entry = groupEntry(AuditTrail::kGroupChanged, groupID);
        entry.field = columns().at(i);
        entry.oldValue = (*former)[i];
        entry.newValue = fields[i];
        trail.record(entry);
    }

    QStringList assignments;
    QVariantList values;
    for (int i = 0; i < kFieldCount; ++i) {
        assignments << columns().at(i) + QStringLiteral(" = ?");
        values << fields[i];
    }
    values << groupID;
    mDb.execute(QStringLiteral("UPDATE Groups SET ") + assignments.join(QStringLiteral(", ")) +
                    QStringLiteral(" WHERE GroupID = ?"),
                values);

    if (!newName.isEmpty() && newName != oldName)
        renameInSavedPlates(oldName, newName);
    transaction.commit();
    return true;
}

void GroupDirectory::renameInSavedPlates(const QString &oldName, const QString &newName) const
{
    struct Row {
        QVariant runID, plateID;
        QString groups;
    };
    QList<Row> rows;
    {
        QSqlQuery plates = mDb.query(QStringLiteral("SELECT RunID, PlateID, Groups FROM Plates"));
        while (plates.next()) {
            if (plates.value(2).isNull())
                continue; // a plate without a list has no group to rename
            rows.append({plates.value(0), plates.value(1), plates.value(2).toString()});
        }
    }
    // Every list is rewritten whole, changed or not; a list that can't be read stops the
    // rename before anything is kept.
    // The plates the rename reached go into the trail, each with the wells it changed.
    const AuditTrail trail(mDb);
    for (const Row &row : rows) {
        const QString renamed = replaceGroupInList(oldName, newName, row.groups);
        mDb.execute(QStringLiteral("UPDATE Plates SET Groups = ? WHERE RunID = ? AND PlateID = ?"),
                    {renamed, row.runID, row.plateID});
        const auto [was, is] = PlateChanges::wellChanges(row.groups, renamed);
        if (was.isEmpty() && is.isEmpty())
            continue;
        AuditEntry entry;
        entry.action = AuditTrail::kPlateChanged;
        entry.table = QStringLiteral("Plates");
        entry.runID = row.runID.toLongLong();
        entry.plateID = row.plateID.toLongLong();
        entry.recordID = AuditTrail::plateRecord(*entry.runID, *entry.plateID);
        entry.field = QStringLiteral("Groups");
        entry.oldValue = was;
        entry.newValue = is;
        trail.record(entry);
    }
}

void GroupDirectory::deleteGroup(const QString &name) const
{
    const std::optional<QString> stored = storedName(name);
    if (!stored)
        return;
    DbTransaction transaction(mDb);
    const QVariant groupID = mDb.scalar(QStringLiteral("SELECT GroupID FROM Groups") + kByName, {*stored});
    AuditEntry entry = groupEntry(AuditTrail::kGroupDeleted, groupID);
    entry.field = QStringLiteral("GroupName");
    if (const std::optional<Fields> former = findGroup(*stored)) {
        QStringList whole;
        for (int i = 0; i < kFieldCount; ++i) {
            if (!(*former)[i].isEmpty())
                whole << columns().at(i) + QLatin1Char('=') + (*former)[i];
        }
        entry.oldValue = whole.join(QStringLiteral("; "));
    }
    mDb.execute(QStringLiteral("DELETE FROM Groups") + kByName, {*stored});
    AuditTrail(mDb).record(entry);
    transaction.commit();
}

bool GroupDirectory::savedPlatesUseGroup(const QString &name) const
{
    QSqlQuery plates = mDb.query(QStringLiteral("SELECT Groups FROM Plates"));
    while (plates.next()) {
        if (wellListHasName(plates.value(0).toString(), name))
            return true;
    }
    return false;
}
