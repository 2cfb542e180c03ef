#include "store/RawReads.h"

#include "store/AddedTables.h"
#include "store/AuditTrail.h"
#include "store/DbConnection.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlQuery>
#include <QUuid>

void RawReads::keep(RecordSet &plates, int row, const RawRead &read)
{
    if (!plates.hasField(kPendingField))
        plates.appendField(kPendingField);
    QJsonArray reads = QJsonDocument::fromJson(plates.valueAt(row, kPendingField).toString().toUtf8()).array();
    reads.append(QJsonObject{{QStringLiteral("readAt"), read.readAt},
                             {QStringLiteral("model"), read.readerModelID},
                             {QStringLiteral("reader"), read.readerName},
                             {QStringLiteral("filter"), read.filterUsed},
                             {QStringLiteral("text"), read.text},
                             {QStringLiteral("key"), QUuid::createUuid().toString(QUuid::WithoutBraces)}});
    plates.setValueAt(row, kPendingField, QString::fromUtf8(QJsonDocument(reads).toJson(QJsonDocument::Compact)));
}

QVector<RawRead> RawReads::pending(const RecordSet &plates, int row)
{
    QVector<RawRead> reads;
    if (!plates.hasField(kPendingField))
        return reads;
    const QJsonArray list = QJsonDocument::fromJson(plates.valueAt(row, kPendingField).toString().toUtf8()).array();
    for (const QJsonValue &value : list) {
        const QJsonObject o = value.toObject();
        reads.append({o.value("readAt").toString(), o.value("model").toInt(), o.value("reader").toString(),
                      o.value("filter").toString(), o.value("text").toString(), o.value("key").toString()});
    }
    return reads;
}

void RawReads::store(const DbConnection &db, const AuditTrail &trail, qint64 runID, const RecordSet &plates)
{
    if (!plates.hasField(kPendingField))
        return;
    bool ensured = false;
    for (int row = 0; row < plates.recordCount(); ++row) {
        const QVector<RawRead> reads = pending(plates, row);
        if (reads.isEmpty())
            continue;
        if (!ensured) {
            AddedTables::ensure(db, kTable);
            ensured = true;
        }
        const qint64 plateID = plates.valueAt(row, u"PlateID").toLongLong();
        for (const RawRead &read : reads) {
            if (!db.scalar(
                       QStringLiteral("SELECT ReadID FROM RawReads WHERE RunID = ? AND PlateID = ? AND ReadKey = ?"),
                       {runID, plateID, read.key})
                     .isNull())
                continue; // stored by an earlier save
            db.execute(QStringLiteral("INSERT INTO RawReads (RunID, PlateID, ReadAt, ReaderModelID, ReaderName, "
                                      "FilterUsed, RawText, ReadKey) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
                       {runID, plateID, read.readAt, read.readerModelID, read.readerName, read.filterUsed, read.text,
                        read.key});
            trail.record({AuditTrail::kPlateRead, kTable, AuditTrail::plateRecord(runID, plateID),
                          QStringLiteral("RawText"), QString(),
                          read.readAt + QStringLiteral(" ") + read.readerName + QStringLiteral(" ") + read.filterUsed,
                          runID, plateID});
        }
    }
}

QVector<RawRead> RawReads::stored(const DbConnection &db, qint64 runID, qint64 plateID)
{
    QVector<RawRead> reads;
    if (!AddedTables::exists(db, kTable))
        return reads;
    QSqlQuery rows =
        db.query(QStringLiteral("SELECT ReadAt, ReaderModelID, ReaderName, FilterUsed, RawText, ReadKey FROM "
                                "RawReads WHERE RunID = ? AND PlateID = ? ORDER BY ReadID"),
                 {runID, plateID});
    while (rows.next())
        reads.append({rows.value(0).toString(), rows.value(1).toInt(), rows.value(2).toString(),
                      rows.value(3).toString(), rows.value(4).toString(), rows.value(5).toString()});
    return reads;
}
