#include "directory/DirectoryKind.h"

#include "directory/GroupDirectory.h"
#include "directory/PlateNames.h"
#include "directory/TechDirectory.h"

namespace {

GroupDirectory::Fields groupFields(const QStringList &fields)
{
    GroupDirectory::Fields array;
    for (int i = 0; i < GroupDirectory::kFieldCount; ++i)
        array[i] = fields.value(i);
    return array;
}

} // namespace

const DirectoryKind &DirectoryKind::groups()
{
    static const DirectoryKind kind{
        GroupDirectory::kFieldCount,
        QStringLiteral("Add New Group"),
        QStringLiteral("Edit Group"),
        QStringLiteral("Group Name Required"),
        QStringLiteral("A group name is required."),
        QStringLiteral("Group Already Exists"),
        QStringLiteral("This group already exists in the database."),
        true,
        QStringLiteral("Group Name Not Allowed"),
        QStringLiteral("A group name cannot contain the character \"%1\".  Please choose another name."),
        QStringLiteral("The group '%1' is no longer in the database."),
        QStringLiteral("Group Exists in Saved Runs"),
        QStringLiteral("This group exists in the current run.  If you still "
                       "want to delete this run, please remove this group from the "
                       "current run and try again."),
        QStringLiteral("Group Exists in Saved Runs"),
        QStringLiteral("This group exists in previously saved runs.  If you still "
                       "want to delete this run, please delete any saved runs that use "
                       "this group and try again."),
        QStringLiteral("Delete Group?"),
        QStringLiteral("Are you sure you want to delete the group '"),
        [](const DbConnection &db) { return GroupDirectory(db).groupNames(); },
        [](const DbConnection &db, const QString &name) -> std::optional<QStringList> {
            const std::optional<GroupDirectory::Fields> found = GroupDirectory(db).findGroup(name);
            if (!found)
                return std::nullopt;
            return QStringList(found->begin(), found->end());
        },
        [](const DbConnection &db, const QStringList &fields) {
            return GroupDirectory(db).insertGroup(groupFields(fields));
        },
        [](const DbConnection &db, const QString &oldName, const QStringList &fields) {
            return GroupDirectory(db).updateGroup(oldName, groupFields(fields));
        },
        [](const DbConnection &db, const QString &name) { GroupDirectory(db).deleteGroup(name); },
        [](const DbConnection &db, const QString &name) { return GroupDirectory(db).savedPlatesUseGroup(name); },
        platesUseGroup,
        renameGroupInPlates,
    };
    return kind;
}

const DirectoryKind &DirectoryKind::technicians()
{
    static const DirectoryKind kind{
        1,
        QStringLiteral("Add New Tech"),
        QStringLiteral("Edit Tech"),
        QStringLiteral("Technician Name Required"),
        QStringLiteral("A valid technician name is required."),
        QStringLiteral("Tech Already Exists"),
        QStringLiteral("This Tech already exists in the database."),
        false,
        QStringLiteral("Technician Name Not Allowed"),
        QStringLiteral("A technician name cannot contain the character \"%1\".  Please choose another name."),
        QStringLiteral("The technician '%1' is no longer in the database."),
        QStringLiteral("Tech Exists in Saved Runs"),
        QStringLiteral("This technician exists in the current run.  If you still "
                       "want to delete this run, please remove this technician from the "
                       "current run and try again."),
        QStringLiteral("Technician Exists in Saved Runs"),
        QStringLiteral("This technician exists in previously saved runs.  If you still "
                       "want to delete this run, please delete any saved runs that use "
                       "this technician and try again."),
        QStringLiteral("Delete Technician?"),
        QStringLiteral("Are you sure you want to delete the technician '"),
        [](const DbConnection &db) { return TechDirectory(db).techNames(); },
        [](const DbConnection &db, const QString &name) -> std::optional<QStringList> {
            const std::optional<QString> found = TechDirectory(db).findTech(name);
            if (!found)
                return std::nullopt;
            return QStringList{*found};
        },
        [](const DbConnection &db, const QStringList &fields) { return TechDirectory(db).insertTech(fields.value(0)); },
        [](const DbConnection &db, const QString &oldName, const QStringList &fields) {
            return TechDirectory(db).updateTech(oldName, fields.value(0));
        },
        [](const DbConnection &db, const QString &name) { TechDirectory(db).deleteTech(name); },
        [](const DbConnection &db, const QString &name) { return TechDirectory(db).savedPlatesUseTech(name); },
        platesUseTech,
        renameTechInPlates,
    };
    return kind;
}
