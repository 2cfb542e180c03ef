#include "store/PlateChanges.h"

#include "core/WellList.h"
#include "core/Wells.h"
#include "store/DatabaseError.h"
#include "store/PlateRows.h"

#include <QHash>
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

QString PlateChanges::wholeRecord(const RecordSet &plates, int row)
{
    QJsonObject object;
    object.insert(QStringLiteral("PlateID"), plates.valueAt(row, u"PlateID").toLongLong());
    for (const QString &field : comparedFields())
        object.insert(field, columnText(plates, row, field));
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QList<AuditEntry> PlateChanges::between(const RecordSet &before, const RecordSet &after, qint64 runID)
{
    QList<AuditEntry> entries;
    const QHash<qint64, int> formerRows = rowsByPlateID(before);
    const QHash<qint64, int> savedRows = rowsByPlateID(after);
    for (int row = 0; row < after.recordCount(); ++row) {
        const qint64 plateID = after.valueAt(row, u"PlateID").toLongLong();
        const auto former = formerRows.constFind(plateID);
        if (former == formerRows.cend()) {
            AuditEntry entry = plateEntry(AuditTrail::kPlateAdded, runID, plateID);
            entry.newValue = after.valueAt(row, u"PlateName").toString();
            entries.append(entry);
            continue;
        }
        for (const QString &field : comparedFields()) {
            const QString was = columnText(before, *former, field);
            const QString is = columnText(after, row, field);
            if (was == is)
                continue;
            AuditEntry entry = plateEntry(AuditTrail::kPlateChanged, runID, plateID);
            entry.field = field;
            if (isWellList(field))
                std::tie(entry.oldValue, entry.newValue) = wellChanges(was, is);
            else
                std::tie(entry.oldValue, entry.newValue) = std::pair(was, is);
            if (!entry.oldValue.isEmpty() || !entry.newValue.isEmpty())
                entries.append(entry);
        }
    }
    for (int row = 0; row < before.recordCount(); ++row) {
        const qint64 plateID = before.valueAt(row, u"PlateID").toLongLong();
        if (savedRows.contains(plateID))
            continue;
        AuditEntry entry = plateEntry(AuditTrail::kPlateDeleted, runID, plateID);
        entry.oldValue = wholeRecord(before, row);
        entries.append(entry);
    }
    return entries;
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
