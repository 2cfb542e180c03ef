#include "reports/ResultTable.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace {

// The sort rank of each row's value of one field: rows whose values compare equal share a
// rank. Texts compare without regard to case, other values as the record set compares them.
using Ranks = std::vector<qint64>;

template <typename Value, typename Key, typename Compare>
Ranks ranksOf(const QVector<ResultRow> &rows, Value value, Key key, Compare compare)
{
    QHash<QString, int> distinct; // exact value -> index into firstRow
    std::vector<int> firstRow;
    std::vector<int> valueOfRow(rows.size());
    for (qsizetype r = 0; r < rows.size(); ++r) {
        const QString k = key(rows[r]);
        auto it = distinct.find(k);
        if (it == distinct.end()) {
            it = distinct.insert(k, int(firstRow.size()));
            firstRow.push_back(int(r));
        }
        valueOfRow[r] = it.value();
    }
    std::vector<int> byOrder(firstRow.size());
    for (size_t i = 0; i < byOrder.size(); ++i)
        byOrder[i] = int(i);
    std::stable_sort(byOrder.begin(), byOrder.end(),
                     [&](int a, int b) { return compare(value(rows[firstRow[a]]), value(rows[firstRow[b]])) < 0; });
    std::vector<int> rankOfValue(firstRow.size());
    int rank = 0;
    for (size_t i = 0; i < byOrder.size(); ++i) {
        if (i > 0 && compare(value(rows[firstRow[byOrder[i - 1]]]), value(rows[firstRow[byOrder[i]]])) != 0)
            ++rank;
        rankOfValue[byOrder[i]] = rank;
    }
    Ranks ranks(rows.size());
    for (qsizetype r = 0; r < rows.size(); ++r)
        ranks[r] = rankOfValue[valueOfRow[r]];
    return ranks;
}

template <QString ResultRow::*field> Ranks textRanks(const QVector<ResultRow> &rows)
{
    return ranksOf(
        rows, [](const ResultRow &row) -> const QString & { return row.*field; },
        [](const ResultRow &row) { return row.*field; },
        [](const QString &a, const QString &b) { return QString::compare(a, b, Qt::CaseInsensitive); });
}

template <QVariant ResultRow::*field> Ranks valueRanks(const QVector<ResultRow> &rows)
{
    return ranksOf(
        rows, [](const ResultRow &row) -> const QVariant & { return row.*field; },
        [](const ResultRow &row) {
            const QVariant &v = row.*field;
            return v.isNull() ? QString() : QString::number(v.typeId()) + u':' + v.toString();
        },
        [](const QVariant &a, const QVariant &b) { return compareRecordValues(a, b); });
}

Ranks ranksFor(QStringView field, const QVector<ResultRow> &rows)
{
    const auto is = [field](const char *name) { return field.compare(QLatin1String(name), Qt::CaseInsensitive) == 0; };
    if (is("Group"))
        return textRanks<&ResultRow::group>(rows);
    if (is("Sample"))
        return textRanks<&ResultRow::sample>(rows);
    if (is("Result"))
        return textRanks<&ResultRow::result>(rows);
    if (is("TestName"))
        return textRanks<&ResultRow::testName>(rows);
    if (is("DateRead"))
        return valueRanks<&ResultRow::dateRead>(rows);
    if (is("TimeRead"))
        return valueRanks<&ResultRow::timeRead>(rows);
    if (is("RunName"))
        return textRanks<&ResultRow::runName>(rows);
    if (is("PlateName"))
        return textRanks<&ResultRow::plateName>(rows);
    if (is("PlatePosition"))
        return textRanks<&ResultRow::platePosition>(rows);
    if (is("OD"))
        return textRanks<&ResultRow::od>(rows);
    if (is("CriticalOD"))
        return valueRanks<&ResultRow::criticalOD>(rows);
    if (is("CalcRatio"))
        return textRanks<&ResultRow::calcRatio>(rows);
    if (is("LastVersionValidated"))
        return textRanks<&ResultRow::lastVersionValidated>(rows);
    if (is("NumericSample")) {
        // Whole numbers from 1, or Null, which sorts first.
        Ranks ranks(rows.size());
        for (qsizetype r = 0; r < rows.size(); ++r)
            ranks[r] = rows[r].numericSample.isNull() ? -1 : qint64(rows[r].numericSample.toULongLong());
        return ranks;
    }
    throw RecordSetError(QStringLiteral("Item cannot be found in the collection: ") + field.toString());
}

} // namespace

const QStringList &ResultTable::fieldNames()
{
    static const QStringList fields = {
        QStringLiteral("Group"),
        QStringLiteral("Sample"),
        QStringLiteral("Result"),
        QStringLiteral("TestName"),
        QStringLiteral("DateRead"),
        QStringLiteral("TimeRead"),
        QStringLiteral("RunName"),
        QStringLiteral("PlateName"),
        QStringLiteral("PlatePosition"),
        QStringLiteral("OD"),
        QStringLiteral("CriticalOD"),
        QStringLiteral("CalcRatio"),
        QStringLiteral("LastVersionValidated"),
        QStringLiteral("NumericSample"),
    };
    return fields;
}

void ResultTable::sort(const QString &spec)
{
    struct Key {
        Ranks ranks;
        bool descending;
    };
    std::vector<Key> keys;
    for (const QString &part : spec.split(u',', Qt::SkipEmptyParts)) {
        const QStringList words = part.simplified().split(u' ');
        if (words.isEmpty() || words[0].isEmpty())
            continue;
        keys.push_back(
            {ranksFor(words[0], mRows), words.size() > 1 && words[1].compare(u"DESC", Qt::CaseInsensitive) == 0});
    }
    // The rows stay where they are while their order is found; then they change places.
    std::vector<int> order(mRows.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = int(i);
    std::stable_sort(order.begin(), order.end(), [&keys](int a, int b) {
        for (const Key &k : keys) {
            const qint64 x = k.ranks[a], y = k.ranks[b];
            if (x != y)
                return k.descending ? x > y : x < y;
        }
        return false;
    });
    // Place p takes the row at order[p]: follow each cycle of the permutation once.
    std::vector<char> done(order.size());
    for (size_t start = 0; start < order.size(); ++start) {
        if (done[start])
            continue;
        size_t p = start;
        while (order[p] != int(start)) {
            std::swap(mRows[qsizetype(p)], mRows[order[p]]);
            done[p] = 1;
            p = size_t(order[p]);
        }
        done[p] = 1;
    }
}

RecordSet ResultTable::toRecordSet() const
{
    RecordSet set(fieldNames());
    for (int r = 0; r < count(); ++r) {
        const ResultRow &row = mRows[r];
        set.addNew();
        const QVariant values[] = {row.group,
                                   row.sample,
                                   row.result,
                                   row.testName,
                                   row.dateRead,
                                   row.timeRead,
                                   row.runName,
                                   row.plateName,
                                   row.platePosition,
                                   row.od,
                                   row.criticalOD,
                                   row.calcRatio,
                                   row.lastVersionValidated,
                                   row.numericSample};
        for (int f = 0; f < fieldNames().size(); ++f)
            set.setValueAt(r, fieldNames()[f], values[f]);
    }
    set.moveFirst();
    return set;
}
