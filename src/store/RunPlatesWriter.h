#pragma once

#include "core/RecordSet.h"
#include "store/PlateRows.h"

#include <QStringList>

class AuditTrail;
class DbConnection;

// Writes the plates of a run over its former rows, with the audit rows of what changed
// (PlateChanges), in the caller's transaction: the former rows are read, deleted, the
// plates inserted in their order, then the trail written. The one writer of plate rows
// for the saves.
class RunPlatesWriter {
public:
    RunPlatesWriter(const DbConnection &db, const AuditTrail &trail) : mDb(db), mTrail(trail) {}

    // progress is called with 0 once the former rows are gone, then as PlateRows::insert
    // calls it.
    void rewrite(qint64 runID, RecordSet &plates, const PlateRows::RowWritten &progress = {}) const;

    // The plates of the set that were read and passed in the database and whose ODs,
    // flags or results a rewrite would change (see PlateChanges).
    QStringList validatedPlatesChanged(qint64 runID, const RecordSet &plates) const;

private:
    const DbConnection &mDb;
    const AuditTrail &mTrail;
};
