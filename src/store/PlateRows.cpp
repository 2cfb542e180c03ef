#include "store/PlateRows.h"

#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/SqlDialect.h"
#include "store/clsPlates.h"

#include <QDate>
#include <QDateTime>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTime>

namespace {

enum class Kind { Date, Time, AlwaysText, NullableText, PlateID, RunID };

Kind kindOf(QStringView field)
{
    const auto is = [field](const char *name) { return field.compare(QLatin1String(name), Qt::CaseInsensitive) == 0; };
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

// The columns a save writes, in the order of the statement below.
const QStringList &writtenFields()
{
    static const QStringList fields = {
        QStringLiteral("PlateID"),
        QStringLiteral("PlateName"),
        QStringLiteral("RunID"),
        QStringLiteral("TestName"),
        QStringLiteral("LotNumber"),
        QStringLiteral("ExpDate"),
        QStringLiteral("TimeRead"),
        QStringLiteral("DateRead"),
        QStringLiteral("FilterUsed"),
        QStringLiteral("ReaderUsed"),
        QStringLiteral("LastVersionValidated"),
        QStringLiteral("Groups"),
        QStringLiteral("Samples"),
        QStringLiteral("ODs"),
        QStringLiteral("RawODs"),
        QStringLiteral("Results"),
        QStringLiteral("IncludeExcludeFlags"),
        QStringLiteral("TechName"),
    };
    return fields;
}

QString insertStatement()
{
    const QStringList &fields = writtenFields();
    QStringList marks;
    for (int i = 0; i < fields.size(); ++i)
        marks.append(QStringLiteral("?"));
    return QStringLiteral("INSERT INTO Plates (") + fields.join(QStringLiteral(", ")) + QStringLiteral(") VALUES (") +
           marks.join(QStringLiteral(", ")) + QLatin1Char(')');
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
    const QString sql = insertStatement();
    const QStringList &fields = writtenFields();

    for (int row = 0; row < plates.recordCount(); ++row) {
        QVariantList values;
        values.reserve(fields.size());
        try {
            for (const QString &field : fields)
                values.append(toColumn(field, plates.valueAt(row, field)));
        } catch (const DatabaseError &e) {
            throw DatabaseError(QStringLiteral("Plate '") + plates.valueAt(row, u"PlateName").toString() +
                                QStringLiteral("': ") + e.message());
        }
        db.execute(sql, values);
        if (rowWritten)
            rowWritten(row + 1);
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
    QSqlQuery rows = db.query(
        QStringLiteral("SELECT * FROM Plates WHERE RunID = ? ORDER BY ") + db.dialect().insertionOrder(), {runID});
    const QSqlRecord columns = rows.record();
    QList<QPair<int, QString>> known; // column index, field name
    for (int c = 0; c < columns.count(); ++c) {
        const int f = plates.fieldIndex(columns.fieldName(c));
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
