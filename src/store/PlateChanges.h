#pragma once

#include "core/RecordSet.h"
#include "store/AuditTrail.h"
#include "store/PlateRows.h"

#include <QList>
#include <QString>
#include <QStringList>

// What a save of a run changes in its plate rows, as audit entries: the plates that the
// run had (its rows before the save) against the plates saved, matched by PlateID.
//
// A plate added gives one row with its name. A plate deleted gives one row with the
// whole former record as its old value, so that nothing recorded is lost. A plate changed
// gives one row per column that changed; for a well list only the wells that changed go
// in ("A1=0.123; C4=NC"), old beside new.
class PlateChanges {
public:
    // The columns compared, in the order their rows are written.
    static const QStringList &comparedFields();
    static bool isWellList(QStringView field);

    static QList<AuditEntry> between(const RecordSet &before, const RecordSet &after, qint64 runID);

    // The same, in a save: the run's rows as they are stored (PlateRows::readStored) against
    // the values of the plates' rows about to be written (PlateRows::columns).
    static QList<AuditEntry> between(const PlateRows::StoredRows &before, const QList<QVariantList> &after,
                                     qint64 runID);

    // The entries of a run's plates all going (a run or folder deleted, a run overwritten).
    static QList<AuditEntry> allDeleted(const RecordSet &before, qint64 runID);

    // The wells of two lists that differ, as "A1=old; B1=old" and "A1=new; B1=new"; two
    // empty texts when no well differs. A text that is not a list of 96 items is
    // compared whole.
    static std::pair<QString, QString> wellChanges(const QString &oldList, const QString &newList);

    // The names of the plates that were read and passed before the save and whose ODs,
    // inclusion flags or results the save would change.
    static QStringList validatedPlatesChanged(const RecordSet &before, const RecordSet &after);
};
