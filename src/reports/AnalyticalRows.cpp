#include "reports/AnalyticalRows.h"

#include "reports/ReportText.h"

#include <algorithm>
#include <cstring>
#include <numeric>

int AnalyticalRows::Names::idOf(QStringView name)
{
    auto it = ids.constFind(name);
    if (it != ids.constEnd())
        return it.value();
    const int id = int(names.size());
    names.append(name.toString());
    ids.insert(names.back(), id); // the text's characters stay where they are as names grows
    return id;
}

void AnalyticalRows::Names::rank()
{
    std::vector<int> order(size_t(names.size()));
    std::iota(order.begin(), order.end(), 0);
    const auto compare = [this](int a, int b) { return QString::compare(names[a], names[b], Qt::CaseInsensitive); };
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return compare(a, b) < 0; });
    ranks.assign(order.size(), 0);
    int rank = 0;
    for (size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && compare(order[i - 1], order[i]) != 0)
            ++rank;
        ranks[size_t(order[i])] = rank;
    }
}

void AnalyticalRows::startPlate(const QString &testName, const QString &version, const QString &plateName,
                                const QString &criticalOD, const QString &dateTime)
{
    Plate plate;
    plate.testName = testName;
    plate.version = version;
    plate.plateName = ReportText::toWindows1252(plateName);
    plate.criticalOD = ReportText::toWindows1252(criticalOD);
    plate.dateTime = ReportText::toWindows1252(dateTime);
    plate.testId = mTestNames.idOf(testName);
    plate.plateNameId = mPlateNames.idOf(plateName);
    mPlates.push_back(std::move(plate));
}

void AnalyticalRows::appendPiece(QStringView text)
{
    // A length in front of each text; the length is known once the text is encoded.
    const size_t at = mTexts.size();
    mTexts.resize(at + sizeof(quint32) + size_t(text.size()));
    const quint32 length = quint32(ReportText::encodeWindows1252(text, mTexts.data() + at + sizeof(quint32)));
    std::memcpy(mTexts.data() + at, &length, sizeof length);
    mTexts.resize(at + sizeof(quint32) + length);
}

void AnalyticalRows::addRow(int well, QStringView group, QStringView sample, QStringView od, QStringView calcRatio,
                            QStringView result)
{
    Row row;
    row.text = qint64(mTexts.size());
    row.plate = int(mPlates.size()) - 1;
    row.group = mGroups.idOf(group);
    row.well = well;
    mRows.push_back(row);
    appendPiece(sample);
    appendPiece(od);
    appendPiece(calcRatio);
    appendPiece(result);
    if (mRankNames)
        mSamples.append({sample.toString(), 0});
}

QByteArrayView AnalyticalRows::text(const Row &row, int piece) const
{
    const char *at = mTexts.data() + row.text;
    for (;;) {
        quint32 length;
        std::memcpy(&length, at, sizeof length);
        at += sizeof length;
        if (piece-- == 0)
            return QByteArrayView(at, qsizetype(length));
        at += length;
    }
}

void AnalyticalRows::sort()
{
    if (mRankNames && mRows.size() >= 2) {
        // Every row of a name takes the number of the first entry of that name.
        const std::vector<qint32> numbers = SampleRanking::numbersOfEntries(mSamples);
        for (size_t r = 0; r < mRows.size(); ++r)
            mRows[r].numericSample = numbers[r];
    }
    mSamples = {};
    mGroups.rank();
    mTestNames.rank();
    mPlateNames.rank();
    std::stable_sort(mRows.begin(), mRows.end(), [this](const Row &a, const Row &b) {
        const Plate &pa = mPlates[size_t(a.plate)];
        const Plate &pb = mPlates[size_t(b.plate)];
        const int groupA = mGroups.ranks[size_t(a.group)], groupB = mGroups.ranks[size_t(b.group)];
        if (groupA != groupB)
            return groupA < groupB;
        const int testA = mTestNames.ranks[size_t(pa.testId)], testB = mTestNames.ranks[size_t(pb.testId)];
        if (testA != testB)
            return testA < testB;
        const int plateA = mPlateNames.ranks[size_t(pa.plateNameId)],
                  plateB = mPlateNames.ranks[size_t(pb.plateNameId)];
        if (plateA != plateB)
            return plateA < plateB;
        return a.numericSample < b.numericSample;
    });
}
