#pragma once

#include "core/Wells.h"

#include <QList>
#include <QString>

#include <array>

class Clock;
class RecordSet;
class Workbench;

// What a printed plate map shows of one plate: the run, plate, test, lot, technician and the
// date above the 96 wells, each with its group and sample, controls marked and excluded
// controls struck through.
struct PlateMapPage {
    struct Well {
        QString group;
        QString sample;
        bool control = false;
        bool excluded = false;
    };
    QString run, plate, test, lot, technician, date;
    std::array<Well, wells::kCount> wells;
};

class PlateMap {
public:
    // One page per plate of the run, in the run's order, the plate on screen as it stands.
    static QList<PlateMapPage> fromRun(Workbench &workbench);
    // The page of the plate record at the cursor.
    static PlateMapPage fromRecord(const RecordSet &plates, const QString &runName, const QString &date);
};
