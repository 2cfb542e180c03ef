#include "store/RunPlatesWriter.h"

#include "store/AuditTrail.h"
#include "store/DbConnection.h"
#include "store/PlateChanges.h"
#include "store/RawReads.h"

void RunPlatesWriter::rewrite(qint64 runID, RecordSet &plates, const PlateRows::RowWritten &progress) const
{
    // The rows as they are and as they will be, compared in their stored form: a save of
    // 20 plates compares some 10,000 wells.
    const PlateRows::StoredRows stored = PlateRows::readStored(mDb, runID);
    const QList<QVariantList> columns = PlateRows::columns(plates);
    const QList<AuditEntry> entries = PlateChanges::between(stored, columns, runID);
    if (mDb.dialect().isServer()) {
        PlateRows::deleteRun(mDb, runID);
        if (progress)
            progress(0);
        PlateRows::insert(mDb, plates, progress);
    } else {
        // A save rewrites only the plates that changed: a file's fsync costs by the page.
        PlateRows::rewriteChanged(mDb, stored, columns, plates, progress);
    }
    mTrail.record(entries);
    RawReads::store(mDb, mTrail, runID, plates);
}

QStringList RunPlatesWriter::validatedPlatesChanged(qint64 runID, const RecordSet &plates) const
{
    return PlateChanges::validatedPlatesChanged(PlateRows::read(mDb, runID), plates);
}
