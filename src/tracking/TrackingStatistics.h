#pragma once

#include "tracking/TrackedPlate.h"

#include <QList>
#include <QString>

#include <map>
#include <memory>
#include <utility>

class TestKit;
class clsTests;

// The control statistics of tracking: over a set of saved plates (the super figures) and
// on one plate. Means are taken over wells, not over plate means; a mean with no counted
// well is -1; a standard deviation is the sample form (n - 1) and 0 unless there are two
// wells or more and their squared differences add up to more than 0. Counts are not limited
// to 16 bits: any number of plates can be tracked.
//
// Ratios come from the kit of the test name and version given (getCalculationRatioValue).
// Kits hold no state, so the kit of a test name and version is made once and asked again.
class TrackingStatistics {
public:
    explicit TrackingStatistics(const clsTests &tests);
    ~TrackingStatistics();

    // The mean OD of the counted wells of the control over all plates.
    static double trackControlMean(const QList<TrackedPlate> &rows, const QString &controlType);

    // The mean ratio of the counted wells of ratioType over all plates, each ratio figured
    // with the super means given.
    double trackRatioMean(const QList<TrackedPlate> &rows, const QString &ratioType, double meanPC, double meanNC,
                          const QString &testName, const QString &version);

    // The standard deviation of the counted wells' ODs around the super mean of the
    // control (meanNC for "NC", meanPC for any other).
    static double trackControlStdDev(const QList<TrackedPlate> &rows, const QString &controlType, double meanPC,
                                     double meanNC);

    // The standard deviation of the ratios of the kit's ratio control around ratioMean,
    // each ratio figured with the super means given.
    double trackRatioStdDev(const QList<TrackedPlate> &rows, double meanPC, double meanNC, double ratioMean,
                            const QString &testName, const QString &version);

    // The mean OD of the counted wells of the control on one plate.
    static double plateControlMean(const QString &controlType, const TrackedPlate &plate);

    // The mean ratio of the kit's ratio control on one plate, figured with the plate's own
    // means.
    double plateRatioMean(const TrackedPlate &plate, double meanPC, double meanNC, const QString &testName,
                          const QString &version);

    // The kit's ratio control: "PC", "NC" or empty.
    QString ratioControl(const QString &testName, const QString &version);

private:
    const TestKit &kit(const QString &testName, const QString &version);

    const clsTests &mTests;
    std::map<std::pair<QString, QString>, std::unique_ptr<TestKit>> mKits;
};
