#include "store/NamedRunStore.h"

#include "store/DatabaseError.h"
#include "store/LabPolicy.h"
#include "store/PlateRows.h"
#include "store/RunCatalog.h"
#include "store/RunChangeCounter.h"
#include "store/RunDatabase.h"
#include "store/AuditTrail.h"
#include "store/RunPlatesWriter.h"
#include "store/TransactionRetry.h"
#include "store/clsPlates.h"

namespace {

// A copy of the plates with the run's id and plate ids 1, 2, ... in their order.
RecordSet renumbered(const RecordSet &plates, qint64 runID)
{
    RecordSet copy = copyRecordset(plates);
    for (int row = 0; row < copy.recordCount(); ++row) {
        copy.setValueAt(row, u"RunID", runID);
        copy.setValueAt(row, u"PlateID", row + 1);
    }
    return copy;
}

} // namespace

NamedRunStore::Saved NamedRunStore::save(const QString &folderName, const QString &runName, const RecordSet &plates,
                                         bool replace, const QString &reason) const
{
    if (folderName.trimmed().isEmpty() || runName.trimmed().isEmpty())
        throw DatabaseError(QStringLiteral("A run is saved under a folder name and a run name, neither blank."));
    Saved saved;
    runTransaction(mDb, [&] {
        const RunCatalog catalog(mDb);
        // Two workstations making the same folder at once make it once: the second looks
        // for it after the first has committed.
        lockBeforeNewId(mDb, QStringLiteral("Folders"));
        std::optional<qint64> folderID = catalog.findFolder(folderName);
        if (!folderID) {
            folderID = getNewFolderID(mDb);
            catalog.addFolder(*folderID, folderName);
        }
        std::optional<qint64> runID = catalog.findRun(*folderID, runName);
        if (runID && !replace)
            throw RunExists("The folder \"" + folderName.toStdString() + "\" already has a run \"" +
                            runName.toStdString() + "\" (--replace rewrites it)");
        if (runID) {
            RunChangeCounter::countSave(mDb, *runID); // a workstation that has it open is told at its save
        } else {
            runID = getNewRunID(mDb);
            catalog.addRun(*runID, runName, *folderID);
        }
        RecordSet rows = renumbered(plates, *runID);
        AuditTrail trail(mDb);
        if (replace && LabPolicy::reasonForValidatedChanges(mDb)) {
            const QStringList changed = RunPlatesWriter(mDb, trail).validatedPlatesChanged(*runID, rows);
            if (!changed.isEmpty() && reason.trimmed().isEmpty())
                throw ReasonRequired("the laboratory asks for a reason when the ODs, flags or results of a plate "
                                     "that was read and passed change (" +
                                     changed.join(QStringLiteral(", ")).toStdString() + "): give it with --reason");
        }
        trail.setReason(reason.trimmed());
        RunPlatesWriter(mDb, trail).rewrite(*runID, rows);
        saved.runID = *runID;
        saved.plateIDs.clear();
        for (int row = 0; row < rows.recordCount(); ++row)
            saved.plateIDs.append(row + 1);
    });
    return saved;
}

RecordSet NamedRunStore::open(const QString &folderName, const QString &runName) const
{
    const RunCatalog catalog(mDb);
    const std::optional<qint64> folderID = catalog.findFolder(folderName);
    if (!folderID)
        throw DatabaseError(QStringLiteral("There is no folder \"%1\".").arg(folderName));
    const std::optional<qint64> runID = catalog.findRun(*folderID, runName);
    if (!runID)
        throw DatabaseError(QStringLiteral("The folder \"%1\" has no run \"%2\".").arg(folderName, runName));
    return PlateRows::read(mDb, *runID);
}

QVector<NamedRunStore::Folder> NamedRunStore::folders() const
{
    const RunCatalog catalog(mDb);
    QVector<Folder> result;
    for (const CatalogEntry &folder : catalog.folders()) {
        Folder entry{folder.id, folder.name, {}, {}};
        for (const CatalogEntry &run : catalog.runsInFolder(folder.id)) {
            entry.runIDs.append(run.id);
            entry.runNames.append(run.name);
        }
        result.append(entry);
    }
    return result;
}
