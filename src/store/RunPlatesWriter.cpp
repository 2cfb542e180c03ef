#include "store/RunPlatesWriter.h"

#include "store/AuditTrail.h"
#include "store/PlateChanges.h"
#include "store/RawReads.h"

void RunPlatesWriter::rewrite(qint64 runID, RecordSet &plates, const PlateRows::RowWritten &progress) const
{
    const RecordSet former = PlateRows::read(mDb, runID);
    const QList<AuditEntry> entries = PlateChanges::between(former, plates, runID);
    PlateRows::deleteRun(mDb, runID);
    if (progress)
        progress(0);
    PlateRows::insert(mDb, plates, progress);
    for (const AuditEntry &entry : entries)
        mTrail.record(entry);
    RawReads::store(mDb, mTrail, runID, plates);
}

QStringList RunPlatesWriter::validatedPlatesChanged(qint64 runID, const RecordSet &plates) const
{
    return PlateChanges::validatedPlatesChanged(PlateRows::read(mDb, runID), plates);
}
