#include "store/PlateChanges.h"

#include "core/WellList.h"
#include "core/Wells.h"
#include "store/DatabaseError.h"
#include "store/PlateRows.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <array>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// The text a column holds, for comparing and showing. A value the column can't take is
// shown as it is (the insert refuses it, naming the plate).
QString columnText(const RecordSet &plates, int row, const QString &field)
{
    const QVariant value = plates.valueAt(row, field);
    try {
        return PlateRows::toColumn(field, value).toString();
    } catch (const DatabaseError &) {
        return value.toString();
    }
}

// The 96 items of a well list in any of its forms: a list, empty (never read), or 96
// characters without delimiters (the flags of a plate never stored). Empty when the text
// is none of these.
QStringList itemsOf(const QString &text)
{
    if (text.isEmpty())
        return QStringList(wells::kCount);
    if (text.contains(kWellDelimiter)) {
        try {
            return splitWellList(text);
        } catch (const WellListOverflow &) {
            return {};
        }
    }
    if (text.size() == wells::kCount) {
        QStringList items;
        for (QChar c : text)
            items.append(QString(c));
        return items;
    }
    return {};
}

// The same, as views into the text, without copying: false where itemsOf would give none.
bool itemViews(QStringView text, std::array<QStringView, wells::kCount> &items)
{
    items.fill(QStringView());
    if (text.isEmpty())
        return true;
    if (text.contains(kWellDelimiter)) {
        int next = 0;
        qsizetype start = 0;
        for (qsizetype i; (i = text.indexOf(kWellDelimiter, start)) >= 0; start = i + 1) {
            if (next >= wells::kCount)
                return false;
            items[next++] = text.mid(start, i - start);
        }
        return true;
    }
    if (text.size() != wells::kCount)
        return false;
    for (int k = 0; k < wells::kCount; ++k)
        items[k] = text.mid(k, 1);
    return true;
}

QHash<qint64, int> rowsByPlateID(const RecordSet &plates)
{
    QHash<qint64, int> rows;
    for (int row = 0; row < plates.recordCount(); ++row)
        rows.insert(plates.valueAt(row, u"PlateID").toLongLong(), row);
    return rows;
}

// A plate as the comparison sees it: its id and the texts of the compared columns, in the
// order of comparedFields(), as they are (or would be) stored.
struct PlateTexts {
    qint64 plateID = 0;
    QStringList texts;
};

QList<PlateTexts> textsOf(const RecordSet &plates)
{
    QList<PlateTexts> all;
    all.reserve(plates.recordCount());
    for (int row = 0; row < plates.recordCount(); ++row) {
        PlateTexts plate{plates.valueAt(row, u"PlateID").toLongLong(), {}};
        for (const QString &field : PlateChanges::comparedFields())
            plate.texts.append(columnText(plates, row, field));
        all.append(plate);
    }
    return all;
}

// Where each compared field is among the columns a save writes.
const QList<int> &writtenIndexes()
{
    static const QList<int> indexes = [] {
        QList<int> found;
        for (const QString &field : PlateChanges::comparedFields())
            found.append(int(PlateRows::writtenFields().indexOf(field)));
        return found;
    }();
    return indexes;
}

// The plates of columns (the values of rows in the order of writtenFields()), after the
// first `skip` values of each row.
QList<PlateTexts> textsOf(const QList<QVariantList> &rows, int skip, bool asStored)
{
    const int plateID = int(PlateRows::writtenFields().indexOf(QStringLiteral("PlateID")));
    const QStringList &fields = PlateChanges::comparedFields();
    QList<PlateTexts> all;
    all.reserve(rows.size());
    for (const QVariantList &row : rows) {
        PlateTexts plate{row.at(skip + plateID).toLongLong(), {}};
        for (int f = 0; f < fields.size(); ++f) {
            const QVariant &value = row.at(skip + writtenIndexes().at(f));
            plate.texts.append(asStored ? PlateRows::writtenAgain(fields.at(f), value) : value.toString());
        }
        all.append(plate);
    }
    return all;
}

QHash<qint64, int> rowsByPlateID(const QList<PlateTexts> &plates)
{
    QHash<qint64, int> rows;
    for (int row = 0; row < plates.size(); ++row)
        rows.insert(plates.at(row).plateID, row);
    return rows;
}

AuditEntry plateEntry(const QString &action, qint64 runID, qint64 plateID)
{
    AuditEntry entry;
    entry.action = action;
    entry.table = QStringLiteral("Plates");
    entry.recordID = AuditTrail::plateRecord(runID, plateID);
    entry.runID = runID;
    entry.plateID = plateID;
    return entry;
}

bool anyItem(const QString &list)
{
    for (const QString &item : itemsOf(list)) {
        if (!item.trimmed().isEmpty())
            return true;
    }
    return false;
}

} // namespace

const QStringList &PlateChanges::comparedFields()
{
    static const QStringList fields = {
        QStringLiteral("PlateName"),  QStringLiteral("TestName"),   QStringLiteral("LotNumber"),
        QStringLiteral("ExpDate"),    QStringLiteral("TimeRead"),   QStringLiteral("DateRead"),
        QStringLiteral("FilterUsed"), QStringLiteral("ReaderUsed"), QStringLiteral("LastVersionValidated"),
        QStringLiteral("Groups"),     QStringLiteral("Samples"),    QStringLiteral("ODs"),
        QStringLiteral("RawODs"),     QStringLiteral("Results"),    QStringLiteral("IncludeExcludeFlags"),
        QStringLiteral("TechName"),
    };
    return fields;
}

bool PlateChanges::isWellList(QStringView field)
{
    for (const char *name : {"Groups", "Samples", "ODs", "RawODs", "Results", "IncludeExcludeFlags"}) {
        if (field.compare(QLatin1String(name), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

std::pair<QString, QString> PlateChanges::wellChanges(const QString &oldList, const QString &newList)
{
    // A save of plates read anew compares thousands of wells: the items are looked at in
    // place, and only those that differ are copied, into one text each side.
    std::array<QStringView, wells::kCount> before;
    std::array<QStringView, wells::kCount> after;
    if (!itemViews(oldList, before) || !itemViews(newList, after))
        return oldList == newList ? std::pair<QString, QString>() : std::pair(oldList, newList);
    static const std::array<QString, wells::kCount> names = [] {
        std::array<QString, wells::kCount> all;
        for (int k = 0; k < wells::kCount; ++k)
            all[k] = wells::name(k) + QLatin1Char('=');
        return all;
    }();
    // Written straight into buffers as large as the most the texts can take, cut to size
    // at the end.
    QString was(oldList.size() + wells::kCount * 6, Qt::Uninitialized);
    QString is(newList.size() + wells::kCount * 6, Qt::Uninitialized);
    QChar *w = was.data();
    QChar *i = is.data();
    const auto put = [](QChar *&to, QStringView text) {
        std::copy(text.begin(), text.end(), to);
        to += text.size();
    };
    bool any = false;
    for (int k = 0; k < wells::kCount; ++k) {
        if (before[k] == after[k])
            continue;
        if (any) {
            put(w, u"; ");
            put(i, u"; ");
        }
        any = true;
        put(w, names[k]);
        put(w, before[k]);
        put(i, names[k]);
        put(i, after[k]);
    }
    if (!any)
        return {};
    was.truncate(w - was.constData());
    is.truncate(i - is.constData());
    return {was, is};
}

namespace {

// A plate record as one text (a JSON object of its stored columns).
QString wholeRecord(const PlateTexts &plate)
{
    QJsonObject object;
    object.insert(QStringLiteral("PlateID"), plate.plateID);
    for (int f = 0; f < PlateChanges::comparedFields().size(); ++f)
        object.insert(PlateChanges::comparedFields().at(f), plate.texts.at(f));
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QList<AuditEntry> changes(const QList<PlateTexts> &before, const QList<PlateTexts> &after, qint64 runID)
{
    static const int plateName = int(PlateChanges::comparedFields().indexOf(QStringLiteral("PlateName")));
    QList<AuditEntry> entries;
    const QHash<qint64, int> formerRows = rowsByPlateID(before);
    const QHash<qint64, int> savedRows = rowsByPlateID(after);
    for (const PlateTexts &plate : after) {
        const auto former = formerRows.constFind(plate.plateID);
        if (former == formerRows.cend()) {
            AuditEntry entry = plateEntry(AuditTrail::kPlateAdded, runID, plate.plateID);
            entry.newValue = plate.texts.at(plateName);
            entries.append(entry);
            continue;
        }
        const QStringList &was = before.at(*former).texts;
        for (int f = 0; f < PlateChanges::comparedFields().size(); ++f) {
            if (was.at(f) == plate.texts.at(f))
                continue;
            const QString &field = PlateChanges::comparedFields().at(f);
            AuditEntry entry = plateEntry(AuditTrail::kPlateChanged, runID, plate.plateID);
            entry.field = field;
            if (PlateChanges::isWellList(field))
                std::tie(entry.oldValue, entry.newValue) = PlateChanges::wellChanges(was.at(f), plate.texts.at(f));
            else
                std::tie(entry.oldValue, entry.newValue) = std::pair(was.at(f), plate.texts.at(f));
            if (!entry.oldValue.isEmpty() || !entry.newValue.isEmpty())
                entries.append(entry);
        }
    }
    for (const PlateTexts &plate : before) {
        if (savedRows.contains(plate.plateID))
            continue;
        AuditEntry entry = plateEntry(AuditTrail::kPlateDeleted, runID, plate.plateID);
        entry.oldValue = wholeRecord(plate);
        entries.append(entry);
    }
    return entries;
}

} // namespace

QList<AuditEntry> PlateChanges::between(const RecordSet &before, const RecordSet &after, qint64 runID)
{
    return changes(textsOf(before), textsOf(after), runID);
}

QList<AuditEntry> PlateChanges::between(const PlateRows::StoredRows &before, const QList<QVariantList> &after,
                                        qint64 runID)
{
    // A plate whose compared values are stored as they are gives no entry: it is left out
    // of both sides before any text is made (most plates of most saves).
    const int plateID = int(PlateRows::writtenFields().indexOf(QStringLiteral("PlateID")));
    QHash<qint64, const QVariantList *> stored;
    for (const QVariantList &row : before)
        stored.insert(row.at(1 + plateID).toLongLong(), &row);
    QSet<qint64> unchanged;
    for (const QVariantList &row : after) {
        const qint64 id = row.at(plateID).toLongLong();
        const QVariantList *former = stored.value(id);
        if (former && std::all_of(writtenIndexes().cbegin(), writtenIndexes().cend(),
                                  [&](int w) { return former->at(1 + w) == row.at(w); }))
            unchanged.insert(id);
    }
    const auto changedOf = [&](const QList<QVariantList> &rows, int skip) {
        QList<QVariantList> changed;
        for (const QVariantList &row : rows) {
            if (!unchanged.contains(row.at(skip + plateID).toLongLong()))
                changed.append(row);
        }
        return changed;
    };
    return changes(textsOf(changedOf(before, 1), 1, true), textsOf(changedOf(after, 0), 0, false), runID);
}

QList<AuditEntry> PlateChanges::allDeleted(const RecordSet &before, qint64 runID)
{
    return between(before, RecordSet(before.fieldNames()), runID);
}

QStringList PlateChanges::validatedPlatesChanged(const RecordSet &before, const RecordSet &after)
{
    QStringList names;
    const QHash<qint64, int> formerRows = rowsByPlateID(before);
    for (int row = 0; row < after.recordCount(); ++row) {
        const auto former = formerRows.constFind(after.valueAt(row, u"PlateID").toLongLong());
        if (former == formerRows.cend())
            continue;
        const bool readAndPassed = anyItem(columnText(before, *former, QStringLiteral("RawODs"))) &&
                                   anyItem(columnText(before, *former, QStringLiteral("Results")));
        if (!readAndPassed)
            continue;
        for (const QString &field : {QStringLiteral("ODs"), QStringLiteral("RawODs"), QStringLiteral("Results"),
                                     QStringLiteral("IncludeExcludeFlags")}) {
            const auto [was, is] = wellChanges(columnText(before, *former, field), columnText(after, row, field));
            if (!was.isEmpty() || !is.isEmpty()) {
                names.append(after.valueAt(row, u"PlateName").toString());
                break;
            }
        }
    }
    return names;
}
