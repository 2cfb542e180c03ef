#pragma once

#include "core/RecordSet.h"

#include <QString>
#include <QVariant>

#include <functional>

class DbConnection;

// The Plates rows of a run and the plate record set: writing a record set as rows and
// reading a run's rows back as a record set.
//
// In a record ExpDate and DateRead are QDate, TimeRead is QTime and Null is a null QVariant;
// in the table they are ISO texts ("yyyy-MM-dd", "HH:mm:ss") so that ranges compare as
// text. toColumn and fromColumn are the one place where the two forms meet.
class PlateRows {
public:
    static inline const QString kDateFormat = QStringLiteral("yyyy-MM-dd");
    static inline const QString kTimeFormat = QStringLiteral("HH:mm:ss");

    // Called after each row written, with the count written so far.
    using RowWritten = std::function<void(int rowsWritten)>;

    // The value of a record field as it goes into its column. Dates and times become ISO
    // texts; a date field that holds no date throws DatabaseError naming the field. The
    // texts that a row always has (PlateName, TestName, LotNumber, the well lists,
    // TechName) go in as empty text when Null; the others stay Null.
    static QVariant toColumn(QStringView field, const QVariant &value);

    // The value of a column as it goes into a record field: ISO texts become QDate or
    // QTime, a text that is not a date stays as it is (nothing is lost), SQL NULL is Null,
    // PlateID and RunID are numbers.
    static QVariant fromColumn(QStringView field, const QVariant &value);

    // The text a stored value would be written as, once read into a record: the stored
    // text itself but for a date or time of another shape than the table's.
    static QString writtenAgain(QStringView field, const QVariant &stored);

    // The rows of a run as they are stored: the row's place in the insertion order, then the
    // values of the columns a save writes, in the order of writtenFields().
    using StoredRows = QList<QVariantList>;
    static const QStringList &writtenFields();

    // Inserts one row per record, in the set's order, with the record's PlateID and RunID.
    // CurrentTest, CurrentReader and CurrentFilter are screen state and are not written.
    // The cursor ends on the record it was on (found again by PlateName). Throws
    // DatabaseError on the first row that can't be written; the caller's transaction
    // keeps the table as it was.
    static void insert(const DbConnection &db, RecordSet &plates, const RowWritten &rowWritten = {});

    // Deletes every row of the run.
    static void deleteRun(const DbConnection &db, qint64 runID);

    // The values of each plate's row, in the order of writtenFields(). Throws DatabaseError
    // naming the first plate with a value its column can't take.
    static QList<QVariantList> columns(const RecordSet &plates);

    // Writes the plates over the run's stored rows (as readStored() gave them) on a file,
    // values being their columns(): the same
    // rows as deleteRun() and insert() would leave, in the same order, but a row that holds
    // what its plate holds is left alone, and a changed plate goes back to its row's place.
    // Plates from the first one whose PlateID differs from its row's on are written anew
    // after the others. rowWritten as for insert(), with 0 once the rows that go are gone.
    static void rewriteChanged(const DbConnection &db, const StoredRows &stored, const QList<QVariantList> &values,
                               RecordSet &plates, const RowWritten &rowWritten = {});

    // The rows of a run, in the order they were written, as a plate record set with the
    // fields of clsPlates; the cursor on the first record.
    static RecordSet read(const DbConnection &db, qint64 runID);

    // The same rows as they are in the table (StoredRows).
    static StoredRows readStored(const DbConnection &db, qint64 runID);

    // The plates of every run read between the two dates (both included), by run and
    // plate, as a plate record set; the cursor on the first record.
    static RecordSet readDated(const DbConnection &db, const QDate &from, const QDate &to);
};
