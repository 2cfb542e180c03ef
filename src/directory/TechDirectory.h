#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class DbConnection;

// The Technicians table of the run database, and the saved plates that name its
// technicians in TechName.
//
// A technician is found by name without regard to the case of any letter (names::same). Every value is bound. Database failures throw DatabaseError; a write
// that fails leaves the tables as they were.
class TechDirectory {
public:
    explicit TechDirectory(const DbConnection &db) : mDb(db) {}

    // Every technician, in alphabetical order without regard to case.
    QStringList techNames() const;

    bool techNameExists(const QString &name) const;

    // The stored name of the technician of that name; nothing when there is none.
    std::optional<QString> findTech(const QString &name) const;

    // Adds a technician. Returns false, writing nothing, when the name exists.
    bool insertTech(const QString &name) const;

    // Renames the technician oldName. Returns false, writing nothing, when newName differs
    // from oldName and a technician of that name exists. When the name changes, every
    // saved plate of the old technician takes the new name, in the same transaction.
    // Throws DirectoryError when no technician is named oldName.
    bool updateTech(const QString &oldName, const QString &newName) const;

    // Removes the technician of that name.
    void deleteTech(const QString &name) const;

    // True when a saved plate names the technician. The stored name is read without the
    // blanks a fixed-width column may pad it with; the comparison is exact.
    bool savedPlatesUseTech(const QString &name) const;

private:
    std::optional<QString> storedName(const QString &name) const;
    QStringList columnNames(const QString &select) const;

    const DbConnection &mDb;
};
