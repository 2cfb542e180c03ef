#include "reports/AnalyticalRows.h"

#include "reports/ReportText.h"

#include <algorithm>
#include <bit>
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

void AnalyticalRows::addRow(int well, QStringView group, QStringView sample, QStringView od, QStringView calcRatio,
                            QStringView result)
{
    Row row;
    row.text = qint64(mTexts.size());
    row.plate = int(mPlates.size()) - 1;
    row.group = mGroups.idOf(group);
    row.well = well;
    mRows.push_back(row);
    // Each text with its length in front, the length known once the text is encoded (at
    // most one byte a character); room for the four made at once.
    const QStringView pieces[] = {sample, od, calcRatio, result};
    size_t room = 0;
    for (QStringView piece : pieces)
        room += sizeof(quint32) + size_t(piece.size());
    size_t at = mTexts.size();
    mTexts.resize(at + room);
    for (QStringView piece : pieces) {
        const quint32 length = quint32(ReportText::encodeWindows1252(piece, mTexts.data() + at + sizeof(quint32)));
        std::memcpy(mTexts.data() + at, &length, sizeof length);
        at += sizeof(quint32) + length;
    }
    mTexts.resize(at);
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
    // Each row's place as numbers compared in turn (group, test and plate ranks, sample
    // number, then the row's own index, which keeps equal rows in the order they came),
    // packed into one 64-bit key when their widths allow, as they do for any real run.
    const size_t n = mRows.size();
    const auto bitsFor = [](size_t count) { return int(std::bit_width(count)); };
    qint64 largestNumber = 0;
    for (const Row &row : mRows)
        largestNumber = std::max(largestNumber, row.numericSample);
    const int groupBits = bitsFor(mGroups.ranks.size()), testBits = bitsFor(mTestNames.ranks.size()),
              plateBits = bitsFor(mPlateNames.ranks.size()), numberBits = bitsFor(size_t(largestNumber)),
              indexBits = bitsFor(n);
    std::vector<quint32> order(n);
    if (groupBits + testBits + plateBits + numberBits + indexBits <= 64) {
        std::vector<quint64> keys(n);
        for (size_t r = 0; r < n; ++r) {
            const Row &row = mRows[r];
            const Plate &plate = mPlates[size_t(row.plate)];
            quint64 key = quint64(mGroups.ranks[size_t(row.group)]);
            key = key << testBits | quint64(mTestNames.ranks[size_t(plate.testId)]);
            key = key << plateBits | quint64(mPlateNames.ranks[size_t(plate.plateNameId)]);
            key = key << numberBits | quint64(row.numericSample);
            keys[r] = key << indexBits | r;
        }
        std::sort(keys.begin(), keys.end());
        const quint64 indexMask = (quint64(1) << indexBits) - 1;
        for (size_t r = 0; r < n; ++r)
            order[r] = quint32(keys[r] & indexMask);
    } else {
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(), [this](quint32 x, quint32 y) {
            const Row &a = mRows[x], &b = mRows[y];
            const Plate &pa = mPlates[size_t(a.plate)], &pb = mPlates[size_t(b.plate)];
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
    // The rows put in place along the cycles of the order, without a second copy of them.
    for (size_t r = 0; r < n; ++r) {
        if (order[r] == r)
            continue;
        const Row held = mRows[r];
        size_t to = r;
        for (;;) {
            const size_t from = order[to];
            order[to] = quint32(to);
            if (from == r) {
                mRows[to] = held;
                break;
            }
            mRows[to] = mRows[from];
            to = from;
        }
    }
}
