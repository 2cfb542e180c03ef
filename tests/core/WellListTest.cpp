#include "core/WellList.h"
#include "core/Wells.h"

#include <gtest/gtest.h>

TEST(WellOrder, RunsDownTheColumns)
{
    EXPECT_EQ(wells::index(1, 1), 0);
    EXPECT_EQ(wells::index(8, 1), 7);
    EXPECT_EQ(wells::index(1, 2), 8); // A2 is the ninth item
    EXPECT_EQ(wells::index(8, 12), 95);
    EXPECT_EQ(wells::name(8), QStringLiteral("A2"));
    EXPECT_EQ(wells::name(95), QStringLiteral("H12"));
    for (int k = 0; k < wells::kCount; ++k)
        EXPECT_EQ(wells::index(wells::row(k), wells::col(k)), k);
}

TEST(WellList, RoundTripKeepsEveryItem)
{
    EXPECT_EQ(emptyWellList(), QString(96, kWellDelimiter));
    EXPECT_EQ(splitWellList(emptyWellList()), QStringList(96));
    QStringList items;
    for (int k = 0; k < 96; ++k)
        items << (k % 5 == 0 ? QString() : QStringLiteral("S%1 O'Brien").arg(k));
    const QString text = joinWellList(items);
    EXPECT_TRUE(text.endsWith(kWellDelimiter));
    EXPECT_EQ(splitWellList(text), items);
}

TEST(WellList, ShortListLeavesLaterWellsEmptyAndDropsTail)
{
    const QString text =
        QStringLiteral("a") + kWellDelimiter + QStringLiteral("b") + kWellDelimiter + QStringLiteral("tail");
    const QStringList items = splitWellList(text);
    ASSERT_EQ(items.size(), 96);
    EXPECT_EQ(items[0], QStringLiteral("a"));
    EXPECT_EQ(items[1], QStringLiteral("b"));
    EXPECT_TRUE(items[2].isEmpty());
    EXPECT_TRUE(items[95].isEmpty());
}

TEST(WellList, DelimiterInsideAnItemIsLeftOutSoNoWellMoves)
{
    QStringList items(96);
    items[3] = QStringLiteral("X") + kWellDelimiter + QStringLiteral("Y");
    items[4] = QStringLiteral("next");
    items[95] = QStringLiteral("last");
    const QStringList read = splitWellList(joinWellList(items));
    EXPECT_EQ(read[3], QStringLiteral("XY"));
    EXPECT_EQ(read[4], QStringLiteral("next"));
    EXPECT_EQ(read[95], QStringLiteral("last"));
}

TEST(WellList, NinetySeventhDelimiterIsAnError)
{
    EXPECT_THROW(splitWellList(QString(97, kWellDelimiter)), WellListOverflow);
    EXPECT_NO_THROW(splitWellList(QString(96, kWellDelimiter) + QStringLiteral("junk")));
}
