#include "TempProgramFolder.h"

#include "store/DatabaseError.h"
#include "store/MiscSettings.h"

#include <gtest/gtest.h>

namespace {

TEST(MiscSettings, ValuesLastBeyondTheConnectionAndNoReaderIsNull)
{
    TempProgramFolder temp;
    {
        const DbConnection db = temp.open();
        const MiscSettings settings(db);
        settings.setLastUserReaderID(2);
        settings.setLastUserFilterNo(2); // the third filter of the list
        settings.setChangesSinceLastCompact(101.0);
    }
    const DbConnection db = temp.open();
    const MiscSettings settings(db);
    EXPECT_EQ(settings.lastUserReaderID(), 2);
    EXPECT_EQ(settings.lastUserFilterNo(), 2);
    // A server keeps its own storage: the count of saves stays 0 there.
    EXPECT_EQ(settings.changesSinceLastCompact(), temp.onServer() ? 0.0 : 101.0);
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM MiscSettings").toInt(), 1);
    // No reader is stored as Null.
    settings.setLastUserReaderID(std::nullopt);
    EXPECT_EQ(settings.lastUserReaderID(), std::nullopt);
    EXPECT_TRUE(db.scalar("SELECT LastUserReaderID FROM MiscSettings").isNull());
}

TEST(MiscSettings, AMissingRowIsAnError)
{
    TempProgramFolder temp;
    if (temp.onServer())
        GTEST_SKIP() << "a server makes each workstation's row when it is first needed";
    const DbConnection db = temp.open();
    db.execute("DELETE FROM MiscSettings");
    const MiscSettings settings(db);
    EXPECT_THROW(settings.lastUserReaderID(), DatabaseError);
    EXPECT_THROW(settings.lastUserFilterNo(), DatabaseError);
    EXPECT_THROW(settings.changesSinceLastCompact(), DatabaseError);
}

TEST(MiscSettings, OnAServerEachWorkstationKeepsItsOwnReaderAndFilter)
{
    TempProgramFolder temp;
    if (!temp.onServer())
        GTEST_SKIP() << "a file has one row for its one workstation";
    const DbConnection db = temp.open();
    const MiscSettings settings(db);
    qputenv("TAVIMETRA_WORKSTATION", "reader-room-1");
    settings.setLastUserReaderID(2);
    settings.setLastUserFilterNo(3);
    qputenv("TAVIMETRA_WORKSTATION", "reader-room-2");
    const std::optional<int> firstReader = settings.lastUserReaderID(); // a new workstation: the first reader
    settings.setLastUserFilterNo(1);
    qputenv("TAVIMETRA_WORKSTATION", "reader-room-1");
    EXPECT_EQ(settings.lastUserReaderID(), 2);
    EXPECT_EQ(settings.lastUserFilterNo(), 3);
    qunsetenv("TAVIMETRA_WORKSTATION");
    EXPECT_EQ(firstReader, db.scalar("SELECT MIN(UserReaderID) FROM UserReaders").toInt());
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM MiscSettings WHERE Workstation LIKE 'reader-room-%'").toInt(), 2);
}

} // namespace
