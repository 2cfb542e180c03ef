#pragma once

#include <QString>
#include <QVector>

#include <vector>

// A sample name and its place in the natural order of the names of one report.
struct SampleRank {
    QString name;
    qint32 number = 0;

    bool operator==(const SampleRank &) const = default;
};

// The natural order of sample names in reports: letters without regard to case, runs of
// digits by their length and then by the text of their number, a digit before a letter.
//
// sampleNameInOrder is not a strict ordering (a name that is the plain prefix of another
// stands either way, "S1" and "s1" each want the other first), so the result of the
// ranking depends on the exact steps of the exchange sort that has always produced it.
// rankByExchange is that sort, step for step, and quadratic. rankSampleNames gives the
// same names and numbers on every input in about n log n for the names labs use; see the
// .cpp for why it is exact.
class SampleRanking {
public:
    // True when a may stand before b.
    static bool sampleNameInOrder(const QString &a, const QString &b);

    // For each entry from the first, for each entry after it: the two names change
    // places when the first may not stand before the second. Then the entries are
    // numbered in order: the count of non-empty names so far.
    static QVector<SampleRank> rankByExchange(QVector<SampleRank> entries);

    // The same names and numbers as rankByExchange, fast.
    static QVector<SampleRank> rankSampleNames(QVector<SampleRank> entries);

    // For each entry, in the order given, the number that rankSampleNames gives the first
    // entry of its name: the NumericSample of a report row.
    static std::vector<qint32> numbersOfEntries(const QVector<SampleRank> &entries);

    // Numbers the entries in their order, as both rankings do.
    static void numberEntries(QVector<SampleRank> &entries);
};
