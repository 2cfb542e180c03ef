#include "store/PlateRows.h"

#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/PreparedStatement.h"
#include "store/SqlDialect.h"
#include "store/clsPlates.h"

#include <QDate>
#include <QDateTime>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTime>

namespace {

enum class Kind { Date, Time, AlwaysText, NullableText, PlateID, RunID };

Kind kindOf(QStringView field)
{
    // Asked for every value a save writes or compares: the length rules most names out.
    const auto is = [field](const char *name) {
        const QLatin1String candidate(name);
        return field.size() == candidate.size() && field.compare(candidate, Qt::CaseInsensitive) == 0;
    };
    if (is("ExpDate") || is("DateRead"))
        return Kind::Date;
    if (is("TimeRead"))
        return Kind::Time;
    if (is("PlateID"))
        return Kind::PlateID;
    if (is("RunID"))
        return Kind::RunID;
    if (is("FilterUsed") || is("ReaderUsed") || is("LastVersionValidated") || is("CurrentTest") ||
        is("CurrentReader") || is("CurrentFilter"))
        return Kind::NullableText;
    return Kind::AlwaysText;
}

} // namespace

// The columns a save writes, in the order of the statement below.
const QStringList &PlateRows::writtenFields()
{
    // The record's fields but the three that say what is chosen on screen, which are
    // never stored.
    static const QStringList fields = [] {
        QStringList written = clsPlates::fieldNames();
        for (const char *onScreen : {"CurrentTest", "CurrentReader", "CurrentFilter"})
            written.removeOne(QString::fromLatin1(onScreen));
        return written;
    }();
    return fields;
}

namespace {

// The insert of a plate row; with place, the row's place in the insertion order is given.
QString insertStatement(const QString &place = QString())
{
    QStringList fields = PlateRows::writtenFields();
    if (!place.isEmpty())
        fields.prepend(place);
    QStringList marks;
    for (int i = 0; i < fields.size(); ++i)
        marks.append(QStringLiteral("?"));
    return QStringLiteral("INSERT INTO Plates (") + fields.join(QStringLiteral(", ")) + QStringLiteral(") VALUES (") +
           marks.join(QStringLiteral(", ")) + QLatin1Char(')');
}

// The values of a plate's row, in the order of writtenFields().
QVariantList columnsOf(const RecordSet &plates, int row)
{
    QVariantList values;
    values.reserve(PlateRows::writtenFields().size());
    try {
        for (const QString &field : PlateRows::writtenFields())
            values.append(PlateRows::toColumn(field, plates.valueAt(row, field)));
    } catch (const DatabaseError &e) {
        throw DatabaseError(QStringLiteral("Plate '") + plates.valueAt(row, u"PlateName").toString() +
                            QStringLiteral("': ") + e.message());
    }
    return values;
}

// Whether a value to be written is the value stored: both Null, or the same number or
// text, of the same kind (a number stored where a text goes is written again).
bool sameColumn(const QVariant &stored, const QVariant &written)
{
    if (stored.isNull() || written.isNull())
        return stored.isNull() && written.isNull();
    const bool storedText = stored.typeId() == QMetaType::QString;
    if (storedText != (written.typeId() == QMetaType::QString))
        return false;
    return storedText ? stored.toString() == written.toString() : stored.toLongLong() == written.toLongLong();
}

bool sameRow(const QVariantList &stored, const QVariantList &written)
{
    for (int i = 0; i < written.size(); ++i) {
        if (!sameColumn(stored.at(i + 1), written.at(i)))
            return false;
    }
    return true;
}

[[noreturn]] void notA(const char *what, QStringView field, const QVariant &value)
{
    throw DatabaseError(
        QStringLiteral("%1 is not a %2: '%3'").arg(field.toString(), QLatin1String(what), value.toString()));
}

QVariant dateColumn(QStringView field, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDate:
        if (value.toDate().isValid())
            return value.toDate().toString(PlateRows::kDateFormat);
        break;
    case QMetaType::QDateTime:
        if (value.toDateTime().isValid())
            return value.toDateTime().date().toString(PlateRows::kDateFormat);
        break;
    case QMetaType::QString: {
        const QString text = value.toString().trimmed();
        if (text.isEmpty())
            return QVariant();
        const QDate date = QDate::fromString(text, PlateRows::kDateFormat);
        if (date.isValid())
            return date.toString(PlateRows::kDateFormat);
        break;
    }
    default: break;
    }
    notA("date", field, value);
}

QVariant timeColumn(QStringView field, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QTime:
        if (value.toTime().isValid())
            return value.toTime().toString(PlateRows::kTimeFormat);
        break;
    case QMetaType::QDateTime:
        if (value.toDateTime().isValid())
            return value.toDateTime().time().toString(PlateRows::kTimeFormat);
        break;
    case QMetaType::QString: {
        const QString text = value.toString().trimmed();
        if (text.isEmpty())
            return QVariant();
        const QTime time = QTime::fromString(text, PlateRows::kTimeFormat);
        if (time.isValid())
            return time.toString(PlateRows::kTimeFormat);
        break;
    }
    default: break;
    }
    notA("time", field, value);
}

QVariant idColumn(QStringView field, const QVariant &value)
{
    bool ok = false;
    const qint64 id = value.toLongLong(&ok);
    if (value.isNull() || !ok)
        notA("number", field, value);
    return id;
}

} // namespace

QVariant PlateRows::toColumn(QStringView field, const QVariant &value)
{
    const Kind kind = kindOf(field);
    if (kind == Kind::PlateID || kind == Kind::RunID)
        return idColumn(field, value);
    if (value.isNull())
        return kind == Kind::AlwaysText ? QVariant(QStringLiteral("")) : QVariant();
    switch (kind) {
    case Kind::Date: return dateColumn(field, value);
    case Kind::Time: return timeColumn(field, value);
    default: return value.toString();
    }
}

QVariant PlateRows::fromColumn(QStringView field, const QVariant &value)
{
    if (value.isNull())
        return QVariant();
    switch (kindOf(field)) {
    case Kind::PlateID: return value.toInt();
    case Kind::RunID: return value.toLongLong();
    case Kind::Date: {
        const QDate date = QDate::fromString(value.toString(), kDateFormat);
        return date.isValid() ? QVariant(date) : QVariant(value.toString());
    }
    case Kind::Time: {
        const QTime time = QTime::fromString(value.toString(), kTimeFormat);
        return time.isValid() ? QVariant(time) : QVariant(value.toString());
    }
    default: return value.toString();
    }
}

void PlateRows::insert(const DbConnection &db, RecordSet &plates, const RowWritten &rowWritten)
{
    const bool onRecord = !plates.eof();
    const QString current = onRecord ? plates.text(u"PlateName") : QString();
    PreparedStatement insertRow(db, insertStatement());

    for (int row = 0; row < plates.recordCount(); ++row) {
        insertRow.run(columnsOf(plates, row));
        if (rowWritten)
            rowWritten(row + 1);
    }

    plates.moveFirst();
    if (onRecord)
        plates.findFirst(u"PlateName", current);
}

void PlateRows::rewriteChanged(const DbConnection &db, const StoredRows &stored, RecordSet &plates,
                               const RowWritten &rowWritten)
{
    const bool onRecord = !plates.eof();
    const QString current = onRecord ? plates.text(u"PlateName") : QString();
    const int plateCount = plates.recordCount();
    const int storedCount = int(stored.size());

    QList<QVariantList> values; // of every plate, so that a value no column takes fails first
    for (int row = 0; row < plateCount; ++row)
        values.append(columnsOf(plates, row));

    // The plates that keep their row's place: as far as the PlateIDs (the first value)
    // agree, in order.
    int inPlace = 0;
    while (inPlace < plateCount && inPlace < storedCount && sameColumn(stored[inPlace].at(1), values[inPlace].at(0)))
        ++inPlace;

    // Like the full rewrite, every row that goes is gone before any is written.
    QList<std::pair<QVariant, QVariantList>> writes; // place (null: after the others), values
    PreparedStatement deleteRow(db, QStringLiteral("DELETE FROM Plates WHERE ") + db.dialect().insertionOrder() +
                                        QStringLiteral(" = ?"));
    for (int row = 0; row < plateCount; ++row) {
        if (row < inPlace && sameRow(stored[row], values[row]))
            continue;
        const QVariant place = row < inPlace ? stored[row].at(0) : QVariant();
        if (row < inPlace)
            deleteRow.run({place});
        writes.append({place, values[row]});
    }
    for (int row = inPlace; row < storedCount; ++row)
        deleteRow.run({stored[row].at(0)});
    if (rowWritten)
        rowWritten(0);

    PreparedStatement insertAt(db, insertStatement(db.dialect().insertionOrder()));
    PreparedStatement insertAfter(db, insertStatement());
    int written = 0;
    for (auto &[place, values] : writes) {
        if (place.isNull()) {
            insertAfter.run(values);
        } else {
            values.prepend(place);
            insertAt.run(values);
        }
        if (rowWritten)
            rowWritten(++written);
    }

    plates.moveFirst();
    if (onRecord)
        plates.findFirst(u"PlateName", current);
}

void PlateRows::deleteRun(const DbConnection &db, qint64 runID)
{
    db.execute(QStringLiteral("DELETE FROM Plates WHERE RunID = ?"), {runID});
}

RecordSet PlateRows::read(const DbConnection &db, qint64 runID, StoredRows *stored)
{
    RecordSet plates(clsPlates::fieldNames());
    const QString order = db.dialect().insertionOrder();
    PreparedStatement rows(db, QStringLiteral("SELECT ") + order +
                                   QStringLiteral(" AS RowPlace, * FROM Plates WHERE RunID = ? ORDER BY ") + order);
    rows.query({runID});
    QList<QPair<int, QString>> known;               // column index, field name
    QList<int> written(writtenFields().size(), -1); // the column of each written field
    for (int c = 1; c < rows.columnCount(); ++c) {
        const QString name = rows.columnName(c);
        const int f = plates.fieldIndex(name);
        if (f >= 0)
            known.append({c, plates.fieldNames().at(f)});
        for (int w = 0; w < written.size(); ++w) {
            if (written[w] < 0 && name.compare(writtenFields().at(w), Qt::CaseInsensitive) == 0)
                written[w] = c;
        }
    }
    while (rows.next()) {
        plates.addNew();
        for (const auto &[column, field] : known)
            plates.setValue(field, fromColumn(field, rows.value(column)));
        if (stored) {
            QVariantList row{rows.value(0)};
            for (int column : written)
                row.append(column > 0 ? rows.value(column) : QVariant());
            stored->append(row);
        }
    }
    plates.moveFirst();
    return plates;
}

RecordSet PlateRows::readDated(const DbConnection &db, const QDate &from, const QDate &to)
{
    RecordSet dated(clsPlates::fieldNames());
    QSqlQuery query =
        db.query(QStringLiteral("SELECT * FROM Plates WHERE DateRead BETWEEN ? AND ? ORDER BY RunID, PlateID"),
                 {from.toString(kDateFormat), to.toString(kDateFormat)});
    const QSqlRecord columns = query.record();
    while (query.next()) {
        dated.addNew();
        for (int c = 0; c < columns.count(); ++c) {
            const QString field = columns.fieldName(c);
            if (dated.hasField(field))
                dated.setValue(field, fromColumn(field, query.value(c)));
        }
    }
    dated.moveFirst();
    return dated;
}
