#include "tracking/QcHistory.h"

#include "evaluation/clsTests.h"
#include "evaluation/kits/KitMath.h"
#include "tracking/TrackingStatistics.h"

QStringList QcHistory::quantitiesOf(const QString &testName, Prompt &prompt)
{
    clsTests tests(prompt);
    TrackingStatistics stats(tests);
    QStringList list = {QStringLiteral("PC"), QStringLiteral("NC")};
    if (!stats.ratioControl(testName, TrackedPlate::kDefaultVersion).isEmpty())
        list << tests.getCalculationRatioHeader(testName, TrackedPlate::kDefaultVersion);
    return list;
}

QcHistory QcHistory::gather(const DbConnection &db, const TrackingCriteria &criteria, Prompt &prompt,
                            const std::optional<TrackedPlate> &latest)
{
    QcHistory history;
    history.testName = criteria.testName;
    history.book = GuideSetStore::read(db, criteria.testName);
    if (history.book.isEmpty())
        return history; // nothing to judge against
    history.quantities = quantitiesOf(criteria.testName, prompt);
    history.rules = GuideSetStore::rules(db, criteria.testName);

    QList<TrackedPlate> plates = ControlTracking::readPlates(db, criteria);
    if (latest) {
        // Its saved row, and plates read after it, are not part of its history.
        auto when = [](const TrackedPlate &p) {
            const QTime time = p.timeRead.toTime();
            return QDateTime(p.dateRead.toDate(), time.isValid() ? time : QTime(0, 0));
        };
        plates.removeIf([&](const TrackedPlate &p) {
            return (latest->runID != 0 && p.runID == latest->runID && p.plateID == latest->plateID) ||
                   when(p) > when(*latest);
        });
        plates.append(*latest);
    }

    clsTests tests(prompt);
    TrackingStatistics stats(tests);
    for (const TrackedPlate &plate : plates) {
        QcRun run{plate, plateValues(plate, history.quantities, stats), {}};
        for (const QString &quantity : history.quantities)
            run.sets.push_back(history.book.inForce(quantity, plate.lotNumber, plate.dateRead.toDate()));
        history.runs.push_back(std::move(run));
    }
    history.flags = WestgardCheck::judge(history.zTable(), history.rules);
    return history;
}

std::vector<std::optional<double>> QcHistory::plateValues(const TrackedPlate &plate, const QStringList &quantities,
                                                          TrackingStatistics &stats)
{
    std::vector<std::optional<double>> values;
    const double meanPC = TrackingStatistics::plateControlMean(QStringLiteral("PC"), plate);
    const double meanNC = TrackingStatistics::plateControlMean(QStringLiteral("NC"), plate);
    for (int q = 0; q < quantities.size(); ++q) {
        double value = q == 0 ? meanPC : meanNC;
        if (q == 2) {
            try {
                value = stats.plateRatioMean(plate, meanPC, meanNC, plate.testName, plate.version);
            } catch (const KitDivisionByZero &) {
                value = -1; // a ratio that can't be figured is not judged
            }
        }
        values.push_back(value == -1 ? std::nullopt : std::optional<double>(value));
    }
    return values;
}

QcZTable QcHistory::zTable() const
{
    QcZTable table;
    table.z.resize(size_t(quantities.size()));
    for (const QcRun &run : runs) {
        for (size_t q = 0; q < table.z.size(); ++q) {
            const std::optional<double> &v = run.values[q];
            const std::optional<GuideSet> &set = run.sets[q];
            table.z[q].push_back(v && set ? std::optional<double>((*v - set->mean) / set->sd) : std::nullopt);
        }
    }
    return table;
}

std::vector<QcFlag> QcHistory::flagsOf(int run) const
{
    std::vector<QcFlag> list;
    for (const QcFlag &flag : flags) {
        if (flag.run == run)
            list.push_back(flag);
    }
    return list;
}
