#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

class DbConnection;

// The Groups table of the run database, and the saved plates that name its groups.
//
// A group is found by its name without regard to the case of any letter ("ødegård farm"
// finds "Ødegård Farm"), compared here rather than by the database (names::same). The names inside the plates' Groups lists are the
// program's and are compared exactly. Every value is bound, so any text goes in as typed.
// Database failures throw DatabaseError; a write that fails leaves the tables as they were.
class GroupDirectory {
public:
    static constexpr int kFieldCount = 13;
    // GroupName, Name, Company, Address1, Address2, City, State, Zip, Country, Phone, Fax,
    // Email, Vet: the columns behind the boxes txtGroupData 0 to 12.
    using Fields = std::array<QString, kFieldCount>;
    static const QStringList &columns();

    explicit GroupDirectory(const DbConnection &db) : mDb(db) {}

    // Every group name, in alphabetical order without regard to case (names::sort).
    QStringList groupNames() const;

    bool groupNameExists(const QString &name) const;
    // The spelling the table holds for the name; nothing when there is no such group.
    std::optional<QString> storedName(const QString &name) const;
    // Every group name in the table's own order.
    QStringList tableNames() const;

    // The fields of the group of that name (a Null column reads as empty text); nothing
    // when there is no such group.
    std::optional<Fields> findGroup(const QString &name) const;

    // Adds a group under the smallest free GroupID. Returns false, writing nothing, when
    // a group of that name exists.
    bool insertGroup(const Fields &fields) const;

    // Writes the fields of the group now named oldName. Returns false, writing nothing,
    // when the new name differs from oldName and a group of the new name exists. When the
    // name changes, every saved plate's Groups list follows (replaceGroupInList), in the
    // same transaction: the group and the plates change together or not at all. Throws
    // DirectoryError when no group is named oldName.
    bool updateGroup(const QString &oldName, const Fields &fields) const;

    // Removes the group of that name.
    void deleteGroup(const QString &name) const;

    // True when a well of any saved plate belongs to the group (exact comparison).
    bool savedPlatesUseGroup(const QString &name) const;

private:
    void renameInSavedPlates(const QString &oldName, const QString &newName) const;

    const DbConnection &mDb;
};
