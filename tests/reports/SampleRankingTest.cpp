#include "QtPrinters.h"
#include "reports/SampleRanking.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <QRandomGenerator>
#include <QStringList>

namespace {

QVector<SampleRank> entriesOf(const QStringList &names)
{
    QVector<SampleRank> entries;
    for (const QString &name : names)
        entries.append({name, 0});
    return entries;
}

QStringList namesOf(const QVector<SampleRank> &entries)
{
    QStringList names;
    for (const SampleRank &e : entries)
        names << e.name;
    return names;
}

} // namespace

TEST(SampleNameOrder, PairsInBothDirections)
{
    const struct {
        const char *a, *b;
        bool aFirst, bFirst;
    } cases[] = {
        {"S2", "S10", true, false}, // a shorter digit run first
        {"9", "10", true, false},
        {"010", "007", true, false}, // runs of one length by the text of their number
        {"S12", "S21", true, false},
        {"A1", "AB", true, false},        // a digit before a letter
        {"apple", "Banana", true, false}, // letters without regard to case
        {"cow", "COW", true, true},
        {"AB", "ABC", true, true}, // a letter-ended prefix stands either way
        {"", "X", true, true},
        {"S1", "S1A", true, false}, // a digit-ended name before its longer form
        {"S1", "S1", false, false}, // equal digit-ended names each want the other first
        {"s1", "S1", false, false},
        {"123456789X", "1234567891", true, false}, // digit runs nine at a time
        {"1234567890", "1234567891", true, false},
        {"000000010", "000000007", true, false}, // leading zeros of a piece go first
    };
    for (const auto &c : cases) {
        const QString a = QString::fromUtf8(c.a), b = QString::fromUtf8(c.b);
        EXPECT_EQ(SampleRanking::sampleNameInOrder(a, b), c.aFirst) << c.a << " / " << c.b;
        EXPECT_EQ(SampleRanking::sampleNameInOrder(b, a), c.bFirst) << c.b << " / " << c.a;
    }
}

TEST(SampleRanking, NumbersCountNonEmptyNamesInTheirSortedOrder)
{
    const QVector<SampleRank> ranked = SampleRanking::rankByExchange(entriesOf({"S10", "S2", "S1", "S2", "B"}));
    EXPECT_EQ(namesOf(ranked), (QStringList{"B", "S1", "S2", "S2", "S10"}));
    EXPECT_EQ(ranked.last().number, 5);
    QVector<SampleRank> withEmpty = entriesOf({"A", "", "B"});
    SampleRanking::numberEntries(withEmpty);
    EXPECT_EQ((QList<qint32>{withEmpty[0].number, withEmpty[1].number, withEmpty[2].number}), (QList<qint32>{1, 1, 2}));
    // A letter-ended prefix stays where the sort leaves it.
    EXPECT_EQ(namesOf(SampleRanking::rankByExchange(entriesOf({"ABD", "AB", "ABC"}))),
              (QStringList{"ABC", "AB", "ABD"}));
    EXPECT_EQ(namesOf(SampleRanking::rankByExchange(entriesOf({"AB", "ABD", "ABC"}))),
              (QStringList{"AB", "ABC", "ABD"}));
}

// The fast ranking must give the same names and numbers as the exchange sort on every
// input. Small alphabets make ties, case variants, prefixes and long digit runs common.
TEST(SampleRanking, FastRankingMatchesTheExchangeSortOnRandomInputs)
{
    QRandomGenerator random(20261123);
    const QStringList pieces = {"a", "A", "b",  "B",         "0",  "1",   "2",  "9",
                                " ", "-", "00", "123456789", "10", "cow", "COW"};
    for (int round = 0; round < 20000; ++round) {
        const int count = int(random.bounded(1, round % 10 == 0 ? 120 : 30));
        const int vocabulary = int(random.bounded(1, 12));
        QStringList words;
        for (int w = 0; w < vocabulary; ++w) {
            QString word;
            const int length = int(random.bounded(0, 5));
            for (int c = 0; c < length; ++c)
                word += pieces[int(random.bounded(pieces.size()))];
            words << word;
        }
        QStringList names;
        for (int i = 0; i < count; ++i)
            names << words[int(random.bounded(words.size()))];
        const QVector<SampleRank> expected = SampleRanking::rankByExchange(entriesOf(names));
        const QVector<SampleRank> fast = SampleRanking::rankSampleNames(entriesOf(names));
        ASSERT_EQ(fast, expected) << "round " << round << ": " << names.join(u'|').toStdString();
        // Each entry's row number: that of the first ranked entry of its name.
        const std::vector<qint32> numbers = SampleRanking::numbersOfEntries(entriesOf(names));
        for (int i = 0; i < count; ++i) {
            const auto first =
                std::find_if(expected.begin(), expected.end(), [&](const SampleRank &e) { return e.name == names[i]; });
            ASSERT_EQ(numbers[size_t(i)], first->number) << "round " << round << ", entry " << i;
        }
    }
}
