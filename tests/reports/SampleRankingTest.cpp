#include "QtPrinters.h"
#include "reports/SampleRanking.h"

#include <gtest/gtest.h>

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

// The number the report gives a name: that of its first entry in the ranking.
qint32 numberOf(const QVector<SampleRank> &ranked, const QString &name)
{
    for (const SampleRank &e : ranked) {
        if (e.name == name)
            return e.number;
    }
    return -1;
}

bool inOrder(const char *a, const char *b)
{
    return SampleRanking::sampleNameInOrder(QString::fromUtf8(a), QString::fromUtf8(b));
}

} // namespace

TEST(SampleNameOrder, ShorterDigitRunComesFirst)
{
    EXPECT_TRUE(inOrder("S2", "S10"));
    EXPECT_FALSE(inOrder("S10", "S2"));
    EXPECT_TRUE(inOrder("9", "10"));
    EXPECT_FALSE(inOrder("100", "99"));
}

TEST(SampleNameOrder, RunsOfOneLengthCompareByTheTextOfTheirNumber)
{
    // 010 is 10 and 007 is 7; as text "10" stands before "7".
    EXPECT_TRUE(inOrder("010", "007"));
    EXPECT_FALSE(inOrder("007", "010"));
    EXPECT_TRUE(inOrder("S12", "S21"));
    EXPECT_FALSE(inOrder("S21", "S12"));
}

TEST(SampleNameOrder, ADigitStandsBeforeALetter)
{
    EXPECT_TRUE(inOrder("A1", "AB"));
    EXPECT_FALSE(inOrder("AB", "A1"));
}

TEST(SampleNameOrder, LettersCompareWithoutRegardToCase)
{
    EXPECT_TRUE(inOrder("apple", "Banana"));
    EXPECT_FALSE(inOrder("banana", "APPLE"));
    EXPECT_TRUE(inOrder("cow", "COW"));
    EXPECT_TRUE(inOrder("COW", "cow"));
}

TEST(SampleNameOrder, APlainPrefixStandsEitherWay)
{
    EXPECT_TRUE(inOrder("AB", "ABC"));
    EXPECT_TRUE(inOrder("ABC", "AB"));
    EXPECT_TRUE(inOrder("", "X"));
    EXPECT_TRUE(inOrder("X", ""));
}

TEST(SampleNameOrder, ANameEndingInDigitsBeforeItsLongerForm)
{
    EXPECT_TRUE(inOrder("S1", "S1A"));
    EXPECT_FALSE(inOrder("S1A", "S1"));
    // Equal names that end in digits each want the other first.
    EXPECT_FALSE(inOrder("S1", "S1"));
    EXPECT_FALSE(inOrder("s1", "S1"));
}

TEST(SampleNameOrder, DigitRunsAreComparedNineAtATime)
{
    // The first nine digits are equal; then the run that ends stands first.
    EXPECT_TRUE(inOrder("123456789X", "1234567891"));
    EXPECT_FALSE(inOrder("1234567891", "123456789X"));
    // Ten digits each: the first nine, then the tenth.
    EXPECT_TRUE(inOrder("1234567890", "1234567891"));
    // Leading zeros of a nine-digit piece go before the texts are compared.
    EXPECT_TRUE(inOrder("000000010", "000000007"));
}

TEST(SampleRanking, NumbersCountNamesInTheirSortedOrder)
{
    const QVector<SampleRank> ranked =
        SampleRanking::rankByExchange(entriesOf({"S10", "S2", "S1", "S2", "B"}));
    EXPECT_EQ(namesOf(ranked), (QStringList{"B", "S1", "S2", "S2", "S10"}));
    EXPECT_EQ(numberOf(ranked, "B"), 1);
    EXPECT_EQ(numberOf(ranked, "S1"), 2);
    EXPECT_EQ(numberOf(ranked, "S2"), 3);
    EXPECT_EQ(numberOf(ranked, "S10"), 5);
}

TEST(SampleRanking, EmptyNamesTakeTheCountWithoutRaisingIt)
{
    QVector<SampleRank> entries = entriesOf({"A", "", "B"});
    SampleRanking::numberEntries(entries);
    EXPECT_EQ(entries[0].number, 1);
    EXPECT_EQ(entries[1].number, 1);
    EXPECT_EQ(entries[2].number, 2);
}

TEST(SampleRanking, ThePlaceOfAPrefixDependsOnTheOrderOfTheInput)
{
    // AB stands either way with its longer forms, so it stays where the sort leaves it.
    EXPECT_EQ(namesOf(SampleRanking::rankByExchange(entriesOf({"ABD", "AB", "ABC"}))),
              (QStringList{"ABC", "AB", "ABD"}));
    EXPECT_EQ(namesOf(SampleRanking::rankByExchange(entriesOf({"AB", "ABD", "ABC"}))),
              (QStringList{"AB", "ABC", "ABD"}));
}

TEST(SampleRanking, FastRankingGivesTheSameResultOnKnownCases)
{
    const QList<QStringList> cases = {
        {},
        {"A"},
        {"S10", "S2", "S1", "S2", "B"},
        {"ABD", "AB", "ABC"},
        {"AB", "ABD", "ABC"},
        {"s1", "S1", "s1", "2", "S1"},
        {"cow", "Cow 1", "COW", "Cow 2", "a", "cow 10", "1"},
        {"", "B", "", "A"},
        {"010", "007", "7", "10", "0010"},
    };
    for (const QStringList &names : cases) {
        const QVector<SampleRank> expected = SampleRanking::rankByExchange(entriesOf(names));
        EXPECT_EQ(SampleRanking::rankSampleNames(entriesOf(names)), expected) << names.join(u'|').toStdString();
    }
}

// The fast ranking must give the same names and numbers as the exchange sort on every
// input. Small alphabets make ties, case variants, prefixes and long digit runs common.
TEST(SampleRanking, FastRankingMatchesTheExchangeSortOnRandomInputs)
{
    QRandomGenerator random(20261123);
    const QStringList pieces = {"a", "A", "b", "B", "0", "1", "2", "9", " ", "-", "00", "123456789", "10", "cow", "COW"};
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
    }
}
