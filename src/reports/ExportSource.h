#pragma once

#include "core/RecordSet.h"
#include "reports/ExportTable.h"

#include <QDate>
#include <QHash>
#include <QString>

class DbConnection;

// The saved plates an export is asked for by name or date, and the names of the runs
// they belong to. Every miss throws ExportError with a message for the user.
class ExportSource {
public:
    explicit ExportSource(const DbConnection &db);

    // The plates of a saved run. Without a folder the run name must be found in exactly
    // one folder.
    RecordSet runPlates(const QString &runName, const QString &folderName) const;
    // The plate with that id; within the run given, or the one plate of the database with
    // that id when no run is named.
    RecordSet plateById(int plateId, const QString &runName, const QString &folderName) const;
    // Plates read from one day to another, both included, of every run.
    RecordSet datedPlates(const QDate &from, const QDate &to) const;

    // The run names of the database by run id.
    ExportTable::RunNamer runNamer() const;

private:
    const DbConnection &mDb;
    QHash<qint64, QString> mRunNames;
};
