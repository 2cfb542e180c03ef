#pragma once

#include "core/RecordSet.h"

#include <QStringList>

// The per-well lists of one plate record (groups, samples, results, ODs, inclusion
// flags), each split once for everyone who reads the plate.
struct PlateLists {
    QStringList groups;
    QStringList samples;
    QStringList results;
    QStringList ods;
    QStringList flags;

    // The lists of row `plate` of the set; WellListOverflow for a list of more than 96.
    static PlateLists of(const RecordSet &plates, int plate);
};
