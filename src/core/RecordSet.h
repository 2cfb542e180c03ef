#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <stdexcept>

// Raised on a field name the record set doesn't have, or on a read at EOF.
class RecordSetError : public std::runtime_error {
public:
    explicit RecordSetError(const QString &what) : std::runtime_error(what.toStdString()) {}
};

// An in-memory table of rows with named fields and a cursor, tied to no database.
// Field names are compared without regard to case. A null QVariant is Null, distinct
// from an empty text. Plate records, catalogues, report rows and tracking rows use it.
// Copies are deep: a copy shares nothing with its source (the data are value types).
class RecordSet {
public:
    RecordSet() = default;
    explicit RecordSet(const QStringList &fieldNames);

    // Fields.
    void appendField(const QString &name);
    int fieldCount() const { return int(mFields.size()); }
    const QStringList &fieldNames() const { return mFields; }
    int fieldIndex(QStringView name) const; // -1 when absent
    bool hasField(QStringView name) const { return fieldIndex(name) >= 0; }

    // Cursor.
    int recordCount() const { return int(mRows.size()); }
    bool eof() const { return mPos >= recordCount() || mPos < 0; }
    bool bof() const { return mPos < 0 || recordCount() == 0; }
    void moveFirst() { mPos = 0; }
    void moveNext();
    void movePrevious();
    void moveLast() { mPos = recordCount() - 1; }
    int position() const { return mPos; }
    void setPosition(int row);

    // Adds a row of Nulls at the end and puts the cursor on it.
    void addNew();
    // Removes the current row; the cursor stays at the same place, so it points at the
    // row that followed (or EOF).
    void deleteCurrent();
    // Removes every row.
    void clear();

    // Values of the current row.
    QVariant value(QStringView field) const;
    void setValue(QStringView field, const QVariant &value);
    // The value as text; Null reads as empty text.
    QString text(QStringView field) const { return value(field).toString(); }
    bool isNull(QStringView field) const { return value(field).isNull(); }

    // Values of any row.
    QVariant valueAt(int row, QStringView field) const;
    void setValueAt(int row, QStringView field, const QVariant &value);

    // Sorts by a list like "Group ASC, NumericSample DESC, PlateName"; stable, so rows of
    // equal keys keep their order. Nulls come first in ascending order; numbers compare as
    // numbers, dates as dates, texts without regard to case. The cursor goes to the first row.
    void sort(const QString &order);

    // Moves the cursor to the first row whose field equals value (numbers by value, texts
    // exactly, case included); false and EOF when none does.
    bool findFirst(QStringView field, const QVariant &value);

private:
    int requireField(QStringView name) const;
    void requireRow(int row) const;

    QStringList mFields;
    QVector<QVector<QVariant>> mRows;
    int mPos = -1;
};

// A deep copy of a record set, rows, values and cursor.
inline RecordSet copyRecordset(const RecordSet &set)
{
    return set;
}

// Compares two record set values the way sort() does: negative, 0 or positive.
int compareRecordValues(const QVariant &a, const QVariant &b);
