#pragma once

#include <QMap>
#include <QString>

class DbConnection;

// The audit rows of the reader configuration: a configured reader as a set of named
// values (its columns and its filters), and the rows for the difference between two.
class ReaderAudit {
public:
    using Values = QMap<QString, QString>;

    // The reader's values; empty when there is no such reader.
    static Values snapshot(const DbConnection &db, const QVariant &readerID);

    // Writes a row per value that differs ("Reader changed"), or one row with every
    // value for a reader added (before empty) or deleted (after empty).
    static void record(const DbConnection &db, const QVariant &readerID, const Values &before, const Values &after);
};
