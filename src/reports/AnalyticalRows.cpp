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
    // Each row's place as two numbers (group and test ranks, plate rank and sample number),
    // compared before the row's own index, which keeps equal rows in the order they came.
    struct Place {
        quint64 high;
        quint64 low;
        quint32 index;
    };
    std::vector<Place> places(mRows.size());
    for (size_t r = 0; r < mRows.size(); ++r) {
        const Row &row = mRows[r];
        const Plate &plate = mPlates[size_t(row.plate)];
        places[r] = {quint64(quint32(mGroups.ranks[size_t(row.group)])) << 32 |
                         quint32(mTestNames.ranks[size_t(plate.testId)]),
                     quint64(quint32(mPlateNames.ranks[size_t(plate.plateNameId)])) << 32 | quint32(row.numericSample),
                     quint32(r)};
    }
    std::sort(places.begin(), places.end(), [](const Place &a, const Place &b) {
        if (a.high != b.high)
            return a.high < b.high;
        if (a.low != b.low)
            return a.low < b.low;
        return a.index < b.index;
    });
    // The rows put in place along the cycles of the order, without a second copy of them.
    for (size_t r = 0; r < places.size(); ++r) {
        if (places[r].index == r)
            continue;
        const Row held = mRows[r];
        size_t to = r;
        for (;;) {
            const size_t from = places[to].index;
            places[to].index = quint32(to);
            if (from == r) {
                mRows[to] = held;
                break;
            }
            mRows[to] = mRows[from];
            to = from;
        }
    }
}
