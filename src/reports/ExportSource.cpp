#include "reports/ExportSource.h"

#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/NamedRunStore.h"
#include "store/PlateRows.h"
#include "store/clsPlates.h"

#include <QSqlQuery>

ExportSource::ExportSource(const DbConnection &db) : mDb(db)
{
    QSqlQuery query = mDb.query(QStringLiteral("SELECT RunID, RunName FROM Runs"));
    while (query.next())
        mRunNames.insert(query.value(0).toLongLong(), query.value(1).toString());
}

RecordSet ExportSource::runPlates(const QString &runName, const QString &folderName) const
{
    const NamedRunStore store(mDb);
    if (!folderName.isEmpty()) {
        try {
            return store.open(folderName, runName);
        } catch (const DatabaseError &) {
            throw ExportError(
                QStringLiteral("There is no run named \"%1\" in the folder \"%2\".").arg(runName, folderName));
        }
    }
    QStringList folders;
    for (const NamedRunStore::Folder &folder : store.folders()) {
        if (folder.runNames.contains(runName))
            folders << folder.name;
    }
    if (folders.isEmpty())
        throw ExportError(QStringLiteral("There is no saved run named \"%1\".").arg(runName));
    if (folders.size() > 1)
        throw ExportError(QStringLiteral("Runs named \"%1\" are in the folders \"%2\": name one with --folder.")
                              .arg(runName, folders.join(QStringLiteral("\", \""))));
    return store.open(folders.first(), runName);
}

RecordSet ExportSource::plateById(int plateId, const QString &runName, const QString &folderName) const
{
    RecordSet plates;
    if (!runName.isEmpty()) {
        plates = runPlates(runName, folderName);
    } else {
        QList<qint64> runs;
        QSqlQuery query = mDb.query(QStringLiteral("SELECT RunID FROM Plates WHERE PlateID = ?"), {plateId});
        while (query.next())
            runs << query.value(0).toLongLong();
        if (runs.isEmpty())
            throw ExportError(QStringLiteral("There is no plate with the id %1.").arg(plateId));
        if (runs.size() > 1)
            throw ExportError(QStringLiteral("%1 runs have a plate with the id %2: name the run with --run.")
                                  .arg(runs.size())
                                  .arg(plateId));
        plates = PlateRows::read(mDb, runs.first());
    }
    RecordSet one(clsPlates::fieldNames());
    for (int p = 0; p < plates.recordCount(); ++p) {
        if (plates.valueAt(p, u"PlateID").toInt() != plateId)
            continue;
        one.addNew();
        for (const QString &field : clsPlates::fieldNames())
            one.setValue(field, plates.valueAt(p, field));
    }
    if (one.recordCount() == 0)
        throw ExportError(QStringLiteral("The run \"%1\" has no plate with the id %2.").arg(runName).arg(plateId));
    one.moveFirst();
    return one;
}

RecordSet ExportSource::datedPlates(const QDate &from, const QDate &to) const
{
    if (!from.isValid() || !to.isValid() || from > to)
        throw ExportError(QStringLiteral("The date range is invalid"));
    return PlateRows::readDated(mDb, from, to);
}

ExportTable::RunNamer ExportSource::runNamer() const
{
    const QHash<qint64, QString> names = mRunNames;
    return [names](const QVariant &runID) { return names.value(runID.toLongLong()); };
}
