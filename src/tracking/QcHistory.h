#pragma once

#include "tracking/ControlTracking.h"
#include "tracking/GuideSetStore.h"
#include "tracking/TrackedPlate.h"
#include "tracking/WestgardCheck.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class DbConnection;
class Prompt;
class TrackingStatistics;

// One plate of a kit's quality-control history: the values of the kit's tracked quantities
// (nothing where the plate has no counted well of the control), and the guide set each
// was judged against (nothing: no guide set in force, so the value is not judged).
struct QcRun {
    TrackedPlate plate;
    std::vector<std::optional<double>> values;
    std::vector<std::optional<GuideSet>> sets;
};

// The saved plates of a kit judged by its rules against the guide sets in force when each
// was read. The quantities are the kit's control means, "PC" and "NC", and its ratio under
// the ratio's header ("%I", "S/P", ...), as control tracking figures them.
struct QcHistory {
    QString testName;
    QStringList quantities;
    QList<WestgardRule> rules;
    GuideSetBook book;
    std::vector<QcRun> runs; // in the order of reading
    std::vector<QcFlag> flags;

    // The quantities of the kit: "PC", "NC" and the ratio header when the kit has a ratio.
    static QStringList quantitiesOf(const QString &testName, Prompt &prompt);

    // The plates of the criteria, and then `latest` (a plate not saved yet, or a saved one
    // read again: its saved row, and plates read after it, are left out) when given, judged. Throws DatabaseError and
    // TrackingDataError as control tracking does.
    static QcHistory gather(const DbConnection &db, const TrackingCriteria &criteria, Prompt &prompt,
                            const std::optional<TrackedPlate> &latest = std::nullopt);

    // The values of the quantities (as quantitiesOf gives them) on one plate; nothing where
    // the plate has no counted well of a control or its ratio can't be figured.
    static std::vector<std::optional<double>> plateValues(const TrackedPlate &plate, const QStringList &quantities,
                                                          TrackingStatistics &stats);

    QcZTable zTable() const;

    // The flags of one run (counted from 0), in order.
    std::vector<QcFlag> flagsOf(int run) const;
};
