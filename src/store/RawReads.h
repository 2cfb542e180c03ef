#pragma once

#include "core/RecordSet.h"

#include <QString>
#include <QVector>

class AuditTrail;
class DbConnection;

// What a reader sent for a plate, as received, kept with the plate so that its ODs can
// always be derived again (RawReadCheck). A read is held in the plate record (the field
// kPendingField, a JSON list, only in memory) until the run is saved; the save adds each
// read not stored yet to the RawReads table. A read is never replaced: reading a plate
// again adds a record.
struct RawRead {
    QString readAt; // when it was read, ISO 8601 with milliseconds
    int readerModelID = 0;
    QString readerName;
    QString filterUsed;
    QString text;
    QString key = {}; // unique to the read (made by keep), so that each is stored once
};

class RawReads {
public:
    static inline const QString kTable = QStringLiteral("RawReads");
    static inline const QString kPendingField = QStringLiteral("PendingRawReads");

    // Adds a read to the plate record at row (the field is added to the set if needed).
    static void keep(RecordSet &plates, int row, const RawRead &read);
    static QVector<RawRead> pending(const RecordSet &plates, int row);

    // Stores the pending reads of every plate of the set as reads of the run, each once,
    // with a "Plate read" row in the trail; in the caller's transaction.
    static void store(const DbConnection &db, const AuditTrail &trail, qint64 runID, const RecordSet &plates);

    // The reads stored for a plate, oldest first; none when there is no table yet.
    static QVector<RawRead> stored(const DbConnection &db, qint64 runID, qint64 plateID);
};
