#include "tracking/TrackingStatistics.h"

#include "evaluation/TestKit.h"
#include "evaluation/clsTests.h"

#include <cmath>

namespace {

// Sum and count of a walk over wells, plates in table order and wells in well order.
struct Walk {
    double sum = 0;
    qint64 count = 0;

    double mean() const { return count == 0 ? -1.0 : sum / double(count); }
    double stdDev() const { return sum > 0 && count > 1 ? std::sqrt(sum / double(count - 1)) : 0.0; }
};

} // namespace

TrackingStatistics::TrackingStatistics(const clsTests &tests) : mTests(tests)
{
}

TrackingStatistics::~TrackingStatistics() = default;

const TestKit &TrackingStatistics::kit(const QString &testName, const QString &version)
{
    std::unique_ptr<TestKit> &slot = mKits[{testName, version}];
    if (!slot)
        slot = mTests.getTestClass(testName, version);
    return *slot;
}

QString TrackingStatistics::ratioControl(const QString &testName, const QString &version)
{
    return kit(testName, version).getCalculationRatioCriticalControl();
}

double TrackingStatistics::trackControlMean(const QList<TrackedPlate> &rows, const QString &controlType)
{
    Walk walk;
    for (const TrackedPlate &plate : rows) {
        for (const double od : plate.countedODs(controlType)) {
            walk.sum += od;
            ++walk.count;
        }
    }
    return walk.mean();
}

double TrackingStatistics::trackRatioMean(const QList<TrackedPlate> &rows, const QString &ratioType, double meanPC,
                                          double meanNC, const QString &testName, const QString &version)
{
    const TestKit &k = kit(testName, version);
    Walk walk;
    for (const TrackedPlate &plate : rows) {
        for (const double od : plate.countedODs(ratioType)) {
            walk.sum += k.getCalculationRatioValue(od, meanPC, meanNC);
            ++walk.count;
        }
    }
    return walk.mean();
}

double TrackingStatistics::trackControlStdDev(const QList<TrackedPlate> &rows, const QString &controlType,
                                              double meanPC, double meanNC)
{
    const double mean = controlType == u"NC" ? meanNC : meanPC;
    Walk walk;
    for (const TrackedPlate &plate : rows) {
        for (const double od : plate.countedODs(controlType)) {
            walk.sum += (od - mean) * (od - mean);
            ++walk.count;
        }
    }
    return walk.stdDev();
}

double TrackingStatistics::trackRatioStdDev(const QList<TrackedPlate> &rows, double meanPC, double meanNC,
                                            double ratioMean, const QString &testName, const QString &version)
{
    const TestKit &k = kit(testName, version);
    const QString ratioType = k.getCalculationRatioCriticalControl();
    Walk walk;
    for (const TrackedPlate &plate : rows) {
        for (const double od : plate.countedODs(ratioType)) {
            const double ratio = k.getCalculationRatioValue(od, meanPC, meanNC);
            walk.sum += (ratio - ratioMean) * (ratio - ratioMean);
            ++walk.count;
        }
    }
    return walk.stdDev();
}

double TrackingStatistics::plateControlMean(const QString &controlType, const TrackedPlate &plate)
{
    Walk walk;
    for (const double od : plate.countedODs(controlType)) {
        walk.sum += od;
        ++walk.count;
    }
    return walk.mean();
}

double TrackingStatistics::plateRatioMean(const TrackedPlate &plate, double meanPC, double meanNC,
                                          const QString &testName, const QString &version)
{
    const TestKit &k = kit(testName, version);
    Walk walk;
    for (const double od : plate.countedODs(k.getCalculationRatioCriticalControl())) {
        walk.sum += k.getCalculationRatioValue(od, meanPC, meanNC);
        ++walk.count;
    }
    return walk.mean();
}
