#include "tracking/ControlTracking.h"

#include "core/LegacyFormat.h"
#include "evaluation/clsTests.h"
#include "evaluation/kits/KitMath.h"
#include "platform/Prompt.h"
#include "store/DbConnection.h"
#include "store/PlateRows.h"
#include "store/PreparedStatement.h"
#include "tracking/TrackingStatistics.h"

#include <QHash>

#include <algorithm>
#include <QVariantList>

namespace {

QString statistic(double value)
{
    return legacy::format(value, TrackingTable::kStatisticFormat);
}

// A failure of a kit on one plate's figures (a division by a mean of 0, a version that
// can't be read) becomes a message that names the plate.
template <typename Fn> auto onPlate(const TrackedPlate &plate, Fn &&fn) -> decltype(fn())
{
    try {
        return fn();
    } catch (const KitDivisionByZero &) {
        throw TrackingDataError(QStringLiteral("The ratio of the plate %1 can't be figured: a control mean it "
                                               "divides by is 0.")
                                    .arg(plate.describe()));
    } catch (const ConversionError &) {
        throw TrackingDataError(QStringLiteral("The plate %1 can't be tracked: its version \"%2\" can't be read.")
                                    .arg(plate.describe(), plate.version));
    }
}

// A date or time column read as PlateRows reads it. The same texts come again and again
// (the plates of a day, a few reading times) and reading one is slow, so each distinct text
// is read once.
class ColumnReader {
public:
    explicit ColumnReader(QStringView field) : mField(field) {}
    QVariant operator()(const QVariant &value)
    {
        if (value.isNull() || value.typeId() != QMetaType::QString)
            return PlateRows::fromColumn(mField, value);
        const QString text = value.toString();
        auto it = mRead.constFind(text);
        if (it == mRead.constEnd())
            it = mRead.insert(text, PlateRows::fromColumn(mField, value));
        return it.value();
    }

private:
    QStringView mField;
    QHash<QString, QVariant> mRead;
};

} // namespace

QList<TrackedPlate> ControlTracking::readPlates(const DbConnection &db, const TrackingCriteria &criteria)
{
    QString sql =
        QStringLiteral("SELECT Plates.PlateName, Plates.TestName, Plates.LotNumber, Plates.TimeRead, "
                       "Plates.DateRead, Plates.LastVersionValidated, Plates.Samples, Plates.ODs, "
                       "Plates.IncludeExcludeFlags, Plates.TechName, Runs.RunName, Plates.RunID, Plates.PlateID "
                       "FROM Plates INNER JOIN Runs ON Runs.RunID = Plates.RunID "
                       "WHERE Plates.TestName = ?");
    QVariantList values{criteria.testName};
    if (criteria.lotNumber) {
        sql += QStringLiteral(" AND Plates.LotNumber = ?");
        values << *criteria.lotNumber;
    }
    if (criteria.techName) {
        sql += QStringLiteral(" AND Plates.TechName = ?");
        values << *criteria.techName;
    }
    sql += QStringLiteral(" AND Plates.DateRead >= ? AND Plates.DateRead <= ?");
    values << criteria.start.toString(PlateRows::kDateFormat) << criteria.end.toString(PlateRows::kDateFormat);
    if (criteria.lastPlates > 0) {
        sql += QStringLiteral(" ORDER BY Plates.DateRead DESC, Plates.TimeRead DESC, Plates.RunID DESC, "
                              "Plates.PlateID DESC LIMIT ?");
        values << criteria.lastPlates;
    } else {
        sql += QStringLiteral(" ORDER BY Plates.DateRead, Plates.TimeRead, Plates.RunID, Plates.PlateID");
    }

    QList<TrackedPlate> plates;
    ColumnReader timeRead(u"TimeRead"), dateRead(u"DateRead");
    // Straight from SQLite on a file: thousands of plates with three long lists each.
    PreparedStatement rows(db, sql);
    rows.query(values);
    while (rows.next()) {
        TrackedPlate plate;
        plate.plateName = rows.value(0).toString();
        plate.testName = rows.value(1).toString();
        plate.lotNumber = rows.value(2).toString();
        plate.timeRead = timeRead(rows.value(3));
        plate.dateRead = dateRead(rows.value(4));
        const QVariant version = rows.value(5);
        plate.version = version.isNull() ? TrackedPlate::kDefaultVersion : version.toString();
        plate.techName = rows.value(9).toString();
        plate.runName = rows.value(10).toString();
        plate.runID = rows.value(11).toLongLong();
        plate.plateID = rows.value(12).toLongLong();
        plate.setWells(rows.value(6).toString(), rows.value(7).toString(), rows.value(8).toString());
        plates.append(std::move(plate));
    }
    if (criteria.lastPlates > 0)
        std::reverse(plates.begin(), plates.end());
    return plates;
}

TrackingData ControlTracking::gather(const DbConnection &db, const TrackingCriteria &criteria)
{
    TrackingData data;
    data.rows = TrackingTable::create();

    const QList<TrackedPlate> plates = readPlates(db, criteria);
    if (plates.isEmpty())
        return data;

    clsTests tests(mPrompt);
    TrackingStatistics stats(tests);
    const TrackedPlate &first = plates.first();
    const QString testName = first.testName;
    const QString version = first.version;

    data.criticalType = onPlate(first, [&] { return tests.getCriticalControl(testName, version); });
    if (data.criticalType != u"NC" && data.criticalType != u"PC") {
        mPrompt.message(kNoCriticalText, kNoCriticalTitle, MsgIcon::Critical);
        data.criticalType.clear();
        return data;
    }
    data.ratioHeader = tests.getCalculationRatioHeader(testName, version);
    data.ratioCriticalType = stats.ratioControl(testName, version);
    data.controlChartTitle = QStringLiteral("Control ODs for Test ") + criteria.testName;
    data.ratioChartTitle = data.ratioHeader + QStringLiteral(" for Test ") + criteria.testName;

    // The super statistics, with the first plate's kit and version for every ratio.
    const double superPC = TrackingStatistics::trackControlMean(plates, QStringLiteral("PC"));
    const double superNC = TrackingStatistics::trackControlMean(plates, QStringLiteral("NC"));
    const double superStdDevControl =
        TrackingStatistics::trackControlStdDev(plates, data.criticalType, superPC, superNC);
    const double superRatio = onPlate(first, [&] {
        return stats.trackRatioMean(plates, data.ratioCriticalType, superPC, superNC, testName, version);
    });
    const double superStdDevRatio =
        onPlate(first, [&] { return stats.trackRatioStdDev(plates, superPC, superNC, superRatio, testName, version); });

    const QString superMeanControlText = statistic(data.criticalType == u"PC" ? superPC : superNC);
    const QString superStdDevControlText = statistic(superStdDevControl);
    const QString superMeanRatioText = statistic(superRatio);
    const QString superStdDevRatioText = statistic(superStdDevRatio);

    RecordSet &rows = data.rows;
    double meanRatio = 0; // stays 0 for a kit without a ratio
    for (const TrackedPlate &plate : plates) {
        const double meanPC = TrackingStatistics::plateControlMean(QStringLiteral("PC"), plate);
        const double meanNC = TrackingStatistics::plateControlMean(QStringLiteral("NC"), plate);
        if (!data.ratioCriticalType.isEmpty())
            meanRatio = onPlate(
                plate, [&] { return stats.plateRatioMean(plate, meanPC, meanNC, plate.testName, plate.version); });
        rows.addNew();
        rows.setValue(u"MeanControl", statistic(data.criticalType == u"PC" ? meanPC : meanNC));
        rows.setValue(u"MeanCalcRatio", statistic(meanRatio));
        rows.setValue(u"DateRead", plate.dateRead);
        rows.setValue(u"TimeRead", plate.timeRead);
        rows.setValue(u"PlateName", plate.plateName);
        rows.setValue(u"RunName", plate.runName);
        rows.setValue(u"TechName", plate.techName);
        rows.setValue(u"LotNumber", plate.lotNumber);
        rows.setValue(u"SuperStdDevCalcRatio", superStdDevRatioText);
        rows.setValue(u"SuperStdDevControl", superStdDevControlText);
        rows.setValue(u"SuperMeanControl", superMeanControlText);
        rows.setValue(u"SuperMeanCalcRatio", superMeanRatioText);
    }
    rows.moveFirst();
    data.ok = true;
    return data;
}
