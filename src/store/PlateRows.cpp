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

// Dates and times are read and written at every save and every run opened: the ISO
// texts of the table are cut and made by hand, Qt's parser and formatter being slow. Any
// text of another shape goes to Qt, so what is read is what QDate::fromString and
// QTime::fromString read.
bool fixedNumbers(QStringView text, char16_t separator, int firstWidth, int (&numbers)[3])
{
    if (text.size() != firstWidth + 6)
        return false;
    qsizetype at = 0;
    for (int n = 0; n < 3; ++n) {
        if (n > 0 && text[at++] != separator)
            return false;
        int value = 0;
        for (int i = 0; i < (n == 0 ? firstWidth : 2); ++i) {
            const char16_t c = text[at++].unicode();
            if (c < u'0' || c > u'9')
                return false;
            value = value * 10 + (c - u'0');
        }
        numbers[n] = value;
    }
    return true;
}

QDate isoDate(const QString &text)
{
    int n[3];
    if (fixedNumbers(text, u'-', 4, n)) {
        const QDate date(n[0], n[1], n[2]);
        if (date.isValid())
            return date;
    }
    return QDate::fromString(text, PlateRows::kDateFormat);
}

QTime isoTime(const QString &text)
{
    int n[3];
    if (fixedNumbers(text, u':', 2, n)) {
        const QTime time(n[0], n[1], n[2]);
        if (time.isValid())
            return time;
    }
    return QTime::fromString(text, PlateRows::kTimeFormat);
}

QString fixedText(int first, int firstWidth, char16_t separator, int second, int third)
{
    QString text(firstWidth + 6, Qt::Uninitialized);
    QChar *out = text.data() + text.size();
    for (int value : {third, second}) {
        *--out = QChar(u'0' + value % 10);
        *--out = QChar(u'0' + value / 10);
        *--out = QChar(separator);
    }
    for (int i = 0; i < firstWidth; ++i, first /= 10)
        *--out = QChar(u'0' + first % 10);
    return text;
}

QString isoText(const QDate &date)
{
    if (date.year() < 1000 || date.year() > 9999)
        return date.toString(PlateRows::kDateFormat);
    return fixedText(date.year(), 4, u'-', date.month(), date.day());
}

QString isoText(const QTime &time)
{
    return fixedText(time.hour(), 2, u':', time.minute(), time.second());
}

QVariant dateColumn(QStringView field, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDate:
        if (value.toDate().isValid())
            return isoText(value.toDate());
        break;
    case QMetaType::QDateTime:
        if (value.toDateTime().isValid())
            return isoText(value.toDateTime().date());
        break;
    case QMetaType::QString: {
        const QString text = value.toString().trimmed();
        if (text.isEmpty())
            return QVariant();
        const QDate date = isoDate(text);
        if (date.isValid())
            return isoText(date);
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
            return isoText(value.toTime());
        break;
    case QMetaType::QDateTime:
        if (value.toDateTime().isValid())
            return isoText(value.toDateTime().time());
        break;
    case QMetaType::QString: {
        const QString text = value.toString().trimmed();
        if (text.isEmpty())
            return QVariant();
        const QTime time = isoTime(text);
        if (time.isValid())
            return isoText(time);
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
        const QDate date = isoDate(value.toString());
        return date.isValid() ? QVariant(date) : QVariant(value.toString());
    }
    case Kind::Time: {
        const QTime time = isoTime(value.toString());
        return time.isValid() ? QVariant(time) : QVariant(value.toString());
    }
    default: return value.toString();
    }
}

QString PlateRows::writtenAgain(QStringView field, const QVariant &stored)
{
    const Kind kind = kindOf(field);
    if (kind != Kind::Date && kind != Kind::Time)
        return stored.toString();
    const QVariant read = fromColumn(field, stored);
    try {
        return toColumn(field, read).toString();
    } catch (const DatabaseError &) {
        return read.toString();
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

QList<QVariantList> PlateRows::columns(const RecordSet &plates)
{
    QList<QVariantList> values;
    values.reserve(plates.recordCount());
    for (int row = 0; row < plates.recordCount(); ++row)
        values.append(columnsOf(plates, row));
    return values;
}

void PlateRows::rewriteChanged(const DbConnection &db, const StoredRows &stored, const QList<QVariantList> &values,
                               RecordSet &plates, const RowWritten &rowWritten)
{
    const bool onRecord = !plates.eof();
    const QString current = onRecord ? plates.text(u"PlateName") : QString();
    const int plateCount = int(values.size());
    const int storedCount = int(stored.size());

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
    for (const auto &[place, row] : writes) {
        if (place.isNull())
            insertAfter.run(row);
        else
            insertAt.run(QVariantList{place} + row);
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

RecordSet PlateRows::read(const DbConnection &db, qint64 runID)
{
    RecordSet plates(clsPlates::fieldNames());
    const QString order = db.dialect().insertionOrder();
    PreparedStatement rows(db, QStringLiteral("SELECT * FROM Plates WHERE RunID = ? ORDER BY ") + order);
    rows.query({runID});
    QList<QPair<int, QString>> known; // column index, field name
    for (int c = 0; c < rows.columnCount(); ++c) {
        const int f = plates.fieldIndex(rows.columnName(c));
        if (f >= 0)
            known.append({c, plates.fieldNames().at(f)});
    }
    while (rows.next()) {
        plates.addNew();
        for (const auto &[column, field] : known)
            plates.setValue(field, fromColumn(field, rows.value(column)));
    }
    plates.moveFirst();
    return plates;
}

PlateRows::StoredRows PlateRows::readStored(const DbConnection &db, qint64 runID)
{
    // A column a database of an older make lacks is read as Null, as read() leaves it.
    const QString order = db.dialect().insertionOrder();
    PreparedStatement rows(db, QStringLiteral("SELECT ") + order +
                                   QStringLiteral(" AS RowPlace, * FROM Plates WHERE RunID = ? ORDER BY ") + order);
    rows.query({runID});
    QList<int> written(writtenFields().size(), -1); // the column of each written field
    for (int c = 1; c < rows.columnCount(); ++c) {
        const QString name = rows.columnName(c);
        for (int w = 0; w < written.size(); ++w) {
            if (written[w] < 0 && name.compare(writtenFields().at(w), Qt::CaseInsensitive) == 0)
                written[w] = c;
        }
    }
    StoredRows stored;
    while (rows.next()) {
        QVariantList row{rows.value(0)};
        row.reserve(1 + written.size());
        for (int column : written)
            row.append(column > 0 ? rows.value(column) : QVariant());
        stored.append(row);
    }
    return stored;
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
