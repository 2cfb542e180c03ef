#pragma once

#include "core/RecordSet.h"

#include <QString>
#include <QVariant>
#include <QVector>

// One reported sample: a row of the result table.
struct ResultRow {
    QString group;
    QString sample;
    QString result;
    QString testName;
    QVariant dateRead; // the plate's, as it holds it (a QDate)
    QVariant timeRead; // likewise (a QTime), or Null
    QString runName;
    QString plateName;
    QString platePosition;
    QString od;
    QVariant criticalOD; // text, or Null
    QString calcRatio;
    QString lastVersionValidated;
    QVariant numericSample; // qulonglong, or Null
};
Q_DECLARE_TYPEINFO(ResultRow, Q_RELOCATABLE_TYPE);

// The table of per-sample results that the reports sort and walk, in memory. It sorts by
// the sort strings of the record set ("Group ASC, NumericSample ASC, ...") with the record
// set's rules: stable, Nulls first, numbers as numbers, dates as dates, texts without regard
// to case; and it gives itself as a record set with the fields named as in the strings.
class ResultTable {
public:
    static const QStringList &fieldNames();

    QVector<ResultRow> &rows() { return mRows; }
    const QVector<ResultRow> &rows() const { return mRows; }
    int count() const { return int(mRows.size()); }

    // Throws RecordSetError for a field the table doesn't have.
    void sort(const QString &spec);
    RecordSet toRecordSet() const;

private:
    QVector<ResultRow> mRows;
};
