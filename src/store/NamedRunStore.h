#pragma once

#include "core/RecordSet.h"

#include <QList>
#include <QString>
#include <QVector>

#include <stdexcept>

class DbConnection;

// Runs found and saved by folder and run name, for the command line and for moving a
// database: no dialogs, every write in one transaction (run again when it lost a race on
// a server, see runTransaction).
class NamedRunStore {
public:
    // A run of that name is already in that folder (and was not to be replaced).
    class RunExists : public std::runtime_error {
    public:
        using std::runtime_error::runtime_error;
    };

    // The laboratory asks for a reason when a validated plate changes, and none was given.
    class ReasonRequired : public std::runtime_error {
    public:
        using std::runtime_error::runtime_error;
    };

    struct Saved {
        qint64 runID = 0;
        QList<int> plateIDs;
    };

    struct Folder {
        qint64 id = 0;
        QString name;
        QVector<qint64> runIDs;
        QStringList runNames;
    };

    explicit NamedRunStore(const DbConnection &db) : mDb(db) {}

    // Saves the plates as the run runName of the folder folderName, making the folder when
    // there is none. The plates' own ids are not used: the run gets the smallest free run
    // id and its plates 1, 2, ... in their order. An existing run of that name throws
    // RunExists, unless replace: then it is rewritten under its own id. The plates in hand
    // are not changed. When the laboratory asks for a reason for changes to plates that were
    // read and passed, a replacement that changes such a plate needs one (it goes into the
    // audit trail's rows); without it ReasonRequired is thrown and nothing is saved.
    Saved save(const QString &folderName, const QString &runName, const RecordSet &plates, bool replace,
               const QString &reason = {}) const;

    // The plates of the run, with their stored ids; DatabaseError when there is no such run.
    RecordSet open(const QString &folderName, const QString &runName) const;

    // Every folder with its runs, by name.
    QVector<Folder> folders() const;

private:
    const DbConnection &mDb;
};
