#include "core/RecordSet.h"

#include <QDateTime>

#include <algorithm>

RecordSet::RecordSet(const QStringList &fieldNames)
{
    for (const QString &name : fieldNames)
        appendField(name);
}

void RecordSet::appendField(const QString &name)
{
    if (hasField(name))
        throw RecordSetError(QStringLiteral("Field appears twice: ") + name);
    mFields.append(name);
    for (auto &row : mRows)
        row.append(QVariant());
}

int RecordSet::fieldIndex(QStringView name) const
{
    for (int i = 0; i < mFields.size(); ++i) {
        // Equal without regard to case means equal lengths (folding is one code unit to one).
        if (mFields[i].size() == name.size() && QStringView(mFields[i]).compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

int RecordSet::requireField(QStringView name) const
{
    const int i = fieldIndex(name);
    if (i < 0)
        throw RecordSetError(QStringLiteral("Item cannot be found in the collection: ") + name.toString());
    return i;
}

void RecordSet::requireRow(int row) const
{
    if (row < 0 || row >= recordCount())
        throw RecordSetError(QStringLiteral("Either BOF or EOF is True, or the current record has been deleted."));
}

void RecordSet::moveNext()
{
    if (mPos < recordCount())
        ++mPos;
}

void RecordSet::movePrevious()
{
    if (mPos >= 0)
        --mPos;
}

void RecordSet::setPosition(int row)
{
    mPos = std::clamp(row, -1, recordCount());
}

void RecordSet::addNew()
{
    mRows.append(QVector<QVariant>(mFields.size()));
    mPos = recordCount() - 1;
}

void RecordSet::deleteCurrent()
{
    requireRow(mPos);
    mRows.removeAt(mPos);
}

void RecordSet::clear()
{
    mRows.clear();
    mPos = -1;
}

QVariant RecordSet::value(QStringView field) const
{
    return valueAt(mPos, field);
}

void RecordSet::setValue(QStringView field, const QVariant &value)
{
    setValueAt(mPos, field, value);
}

QVariant RecordSet::valueAt(int row, QStringView field) const
{
    const int f = requireField(field);
    requireRow(row);
    return mRows[row][f];
}

void RecordSet::setValueAt(int row, QStringView field, const QVariant &value)
{
    const int f = requireField(field);
    requireRow(row);
    mRows[row][f] = value;
}

namespace {

bool isNumber(const QVariant &v)
{
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Bool: return true;
    default: return false;
    }
}

bool isDate(const QVariant &v)
{
    return v.typeId() == QMetaType::QDate || v.typeId() == QMetaType::QDateTime || v.typeId() == QMetaType::QTime;
}

QDateTime asDateTime(const QVariant &v)
{
    if (v.typeId() == QMetaType::QDate)
        return QDateTime(v.toDate(), QTime(0, 0));
    if (v.typeId() == QMetaType::QTime)
        return QDateTime(QDate(1899, 12, 30), v.toTime());
    return v.toDateTime();
}

} // namespace

int compareRecordValues(const QVariant &a, const QVariant &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() == b.isNull() ? 0 : (a.isNull() ? -1 : 1);
    if (isNumber(a) && isNumber(b)) {
        const double x = a.toDouble(), y = b.toDouble();
        return x < y ? -1 : (x > y ? 1 : 0);
    }
    if (isDate(a) && isDate(b)) {
        const QDateTime x = asDateTime(a), y = asDateTime(b);
        return x < y ? -1 : (x > y ? 1 : 0);
    }
    return QString::compare(a.toString(), b.toString(), Qt::CaseInsensitive);
}

void RecordSet::sort(const QString &order)
{
    struct Key {
        int field;
        bool descending;
    };
    QVector<Key> keys;
    for (const QString &part : order.split(u',', Qt::SkipEmptyParts)) {
        const QStringList words = part.simplified().split(u' ');
        if (words.isEmpty() || words[0].isEmpty())
            continue;
        const bool descending = words.size() > 1 && words[1].compare(u"DESC", Qt::CaseInsensitive) == 0;
        keys.append({requireField(words[0]), descending});
    }
    std::stable_sort(mRows.begin(), mRows.end(), [&keys](const QVector<QVariant> &x, const QVector<QVariant> &y) {
        for (const Key &k : keys) {
            const int c = compareRecordValues(x[k.field], y[k.field]);
            if (c != 0)
                return k.descending ? c > 0 : c < 0;
        }
        return false;
    });
    mPos = recordCount() > 0 ? 0 : -1;
}

bool RecordSet::findFirst(QStringView field, const QVariant &value)
{
    const int f = requireField(field);
    for (int r = 0; r < recordCount(); ++r) {
        const QVariant &v = mRows[r][f];
        const bool same = (v.isNull() || value.isNull())     ? v.isNull() == value.isNull()
                          : (isNumber(v) && isNumber(value)) ? v.toDouble() == value.toDouble()
                                                             : v.toString() == value.toString();
        if (same) {
            mPos = r;
            return true;
        }
    }
    mPos = recordCount();
    return false;
}
