#include "DirectoryFixture.h"

#include "directory/PlateNames.h"

#include <gtest/gtest.h>

using L = QStringList;

namespace {

QString groupList(const QStringList &first)
{
    return DirectoryFixture::wellList(first);
}

} // namespace

// Group names in the plates' well lists are the program's own: compared exactly.
TEST(GroupNamesInWellLists, OnlyItemsExactlyEqualToTheOldNameAreReplaced)
{
    const QString list = groupList({"O'Brien", "o'brien", "O'Brien ", "O'Brien", "", "Smith"});
    EXPECT_EQ(replaceGroupInList("O'Brien", "Kelly & Sons", list),
              groupList({"Kelly & Sons", "o'brien", "O'Brien ", "Kelly & Sons", "", "Smith"}));
}

TEST(GroupNamesInWellLists, TheResultIsAlwaysAWholeListOf96Items)
{
    // A short list comes back whole; characters behind the last delimiter are dropped.
    const QString shortList = QStringLiteral("A¬B¬tail");
    const QString renamed = replaceGroupInList("A", "Z", shortList);
    EXPECT_EQ(renamed.count(kWellDelimiter), 96);
    EXPECT_TRUE(renamed.startsWith(QStringLiteral("Z¬B¬¬")));
    EXPECT_EQ(replaceGroupInList("A", "Z", QString()), emptyWellList());
}

TEST(GroupNamesInWellLists, AListOfMoreThan96ItemsIsNotReadAsIfItWereSound)
{
    const QString tooLong = QString(97, kWellDelimiter);
    EXPECT_THROW(replaceGroupInList("A", "B", tooLong), WellListOverflow);
    EXPECT_THROW(wellListHasName(tooLong, "A"), WellListOverflow);
}

TEST(GroupsOfThePlatesInMemory, ARenameReachesEveryPlateLeavesNullAndUnreadableListsAndTheCursorStays)
{
    const QString unreadable = QString(97, kWellDelimiter);
    RecordSet plates = DirectoryFixture::platesInMemory(
        {groupList({"O'Brien", "Smith"}), groupList({}), groupList({"", "", "O'Brien", "O'BRIEN"}), unreadable});
    plates.setValueAt(1, u"Groups", QVariant());
    plates.setPosition(1);
    renameGroupInPlates(plates, "O'Brien", "O'Neil");
    EXPECT_EQ(plates.position(), 1);
    EXPECT_EQ(plates.valueAt(0, u"Groups").toString(), groupList({"O'Neil", "Smith"}));
    EXPECT_TRUE(plates.valueAt(1, u"Groups").isNull());
    EXPECT_EQ(plates.valueAt(2, u"Groups").toString(), groupList({"", "", "O'Neil", "O'BRIEN"}));
    EXPECT_EQ(plates.valueAt(3, u"Groups").toString(), unreadable);
}

TEST(GroupsOfThePlatesInMemory, UseIsFoundInAnyPlateAndExactly)
{
    const RecordSet plates = DirectoryFixture::platesInMemory({groupList({"Smith"}), groupList({"", "Acme"})});
    EXPECT_TRUE(platesUseGroup(plates, "Acme"));
    EXPECT_FALSE(platesUseGroup(plates, "ACME"));
    EXPECT_FALSE(platesUseGroup(plates, "Jones"));
    // A list that can't be read proves nothing: the check fails rather than says no.
    const RecordSet broken = DirectoryFixture::platesInMemory({QString(97, kWellDelimiter)});
    EXPECT_THROW(platesUseGroup(broken, "Acme"), WellListOverflow);
}

TEST(TechniciansOfThePlatesInMemory, ARenameTakesOnlyExactMatchesAndTheCursorStays)
{
    RecordSet plates = DirectoryFixture::platesInMemory({groupList({}), groupList({}), groupList({})});
    plates.setValueAt(0, u"TechName", "D'Arcy");
    plates.setValueAt(1, u"TechName", "d'arcy");
    plates.setValueAt(2, u"TechName", QVariant());
    plates.setPosition(2);
    EXPECT_TRUE(platesUseTech(plates, "D'Arcy"));
    EXPECT_FALSE(platesUseTech(plates, "Smith"));
    renameTechInPlates(plates, "D'Arcy", "Dee");
    EXPECT_EQ(plates.position(), 2);
    EXPECT_EQ(plates.valueAt(0, u"TechName").toString(), "Dee");
    EXPECT_EQ(plates.valueAt(1, u"TechName").toString(), "d'arcy");
    EXPECT_TRUE(plates.valueAt(2, u"TechName").isNull());
}
