#pragma once

#include "core/RecordSet.h"

#include <QStringList>

// The plate record set: one row per plate of a run, with the fields of a saved Plates row
// in this order. Field names are found without regard to case.
class clsPlates {
public:
    static const QStringList &fieldNames();

    // A new record set with exactly one plate, "Plate #1" with id 1, of the run given:
    // four well lists of 96 empty items, an empty RawODs and 96 "1" of include flags (the
    // never-stored forms), the cursor on it.
    static RecordSet getNewPlateRecordSet(qint64 runID);

    // Appends a plate with the defaults of a new record, the cursor on it.
    static void addDefaultPlate(RecordSet &plates, int plateID, const QString &plateName, const QVariant &runID);

    // The include flags of a plate that was never stored: 96 "1" without delimiters.
    static QString neverStoredFlags();
};
