#pragma once

#include "tracking/TrackedPlate.h"
#include "tracking/TrackingData.h"

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

class DbConnection;
class Prompt;

// Which saved plates to track: one kit, optionally one lot and one technician, read on a
// day from start to end (both included).
struct TrackingCriteria {
    QString testName;
    std::optional<QString> lotNumber; // none: any lot
    std::optional<QString> techName;  // none: any technician
    QDate start;
    QDate end;
    int lastPlates = 0; // above 0: only that many plates, the latest read
};

// Gathers the tracking data of saved plates: reads the plates that fit the criteria,
// computes the super statistics over all of them and the means of each, and fills the
// tracking table. Every plate that fits counts, whatever version validated it and whether
// it passed or not.
class ControlTracking {
public:
    static inline const QString kNoCriticalTitle = QStringLiteral("Could not Find critical Mean");
    static inline const QString kNoCriticalText =
        QStringLiteral("No critical mean control type could be found.  Please Contact Qorn.");

    explicit ControlTracking(Prompt &prompt) : mPrompt(prompt) {}

    // ok is false when no plate fits, and after the box above when the kit names no
    // critical control. Throws DatabaseError when the database can't be read, and
    // TrackingDataError, naming the plate, when a plate's data can't be read or its ratio
    // can't be figured; UnknownTestKit after the kit dispatch's boxes.
    TrackingData gather(const DbConnection &db, const TrackingCriteria &criteria);

    // The plates that fit, in the order of reading: date, time, then run and plate id.
    // Dates are compared as dates: the column holds ISO dates and is compared with ISO
    // dates.
    static QList<TrackedPlate> readPlates(const DbConnection &db, const TrackingCriteria &criteria);

private:
    Prompt &mPrompt;
};
