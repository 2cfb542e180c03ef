#include "readers/RawReadCheck.h"

#include "core/LegacyFormat.h"
#include "core/WellList.h"
#include "core/Wells.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/clsReading.h"
#include "store/DbConnection.h"
#include "store/RawReads.h"

#include <QSqlQuery>

namespace {

constexpr double kNotANumber = 9999.9999; // what a read makes of a value that is no number

QString odText(double value)
{
    return QString::number(value, 'g', 17);
}

} // namespace

RawReadCheck::Result RawReadCheck::check(const DbConnection &db, std::optional<qint64> runID, qint64 plateID,
                                         const ReaderEnvironment &environment)
{
    Result result;
    QList<qint64> runs;
    QSqlQuery rows = db.query(QStringLiteral("SELECT RunID FROM Plates WHERE PlateID = ? ORDER BY RunID"), {plateID});
    while (rows.next()) {
        if (!runID || rows.value(0).toLongLong() == *runID)
            runs.append(rows.value(0).toLongLong());
    }
    if (runs.isEmpty()) {
        result.problem = runID ? QStringLiteral("run %1 has no plate %2").arg(*runID).arg(plateID)
                               : QStringLiteral("no run has a plate %1").arg(plateID);
        return result;
    }
    if (runs.size() > 1) {
        QStringList ids;
        for (qint64 id : runs)
            ids << QString::number(id);
        result.problem =
            QStringLiteral("plate %1 is in runs %2: name one with --run-id").arg(plateID).arg(ids.join(", "));
        return result;
    }
    result.runID = runs.first();
    const QVector<RawRead> reads = RawReads::stored(db, result.runID, plateID);
    if (reads.isEmpty()) {
        result.problem =
            QStringLiteral("plate %1 of run %2 has no raw data of a read kept").arg(plateID).arg(result.runID);
        return result;
    }
    const RawRead &read = reads.last();
    result.readAt = read.readAt;

    clsReading catalogue(environment);
    if (!catalogue.SetReader(read.readerModelID)) {
        result.problem = QStringLiteral("there is no driver for reader model %1").arg(read.readerModelID);
        return result;
    }
    RecordSet values = WellValues::create();
    try {
        catalogue.currentReader->fillReaderValues(values, read.text);
    } catch (const ReadError &e) {
        result.problem = QStringLiteral("the kept raw data can't be read: ") + QString::fromUtf8(e.what());
        return result;
    }
    const QStringList stored = splitWellList(
        db.scalar(QStringLiteral("SELECT RawODs FROM Plates WHERE RunID = ? AND PlateID = ?"), {result.runID, plateID})
            .toString());
    values.moveFirst();
    for (int k = 0; k < wells::kCount && !values.eof(); ++k, values.moveNext()) {
        const QString val = values.text(u"Val");
        const double derived = legacy::isNumeric(val) ? legacy::toDouble(val) : kNotANumber;
        const QString kept = stored.at(k).trimmed();
        if (!legacy::isNumeric(kept) || legacy::toDouble(kept) != derived)
            result.differingWells << QStringLiteral("%1: stored %2, read %3")
                                         .arg(wells::name(k), kept.isEmpty() ? QStringLiteral("nothing") : kept,
                                              odText(derived));
    }
    return result;
}
