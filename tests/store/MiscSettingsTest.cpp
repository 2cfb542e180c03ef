#include "TempProgramFolder.h"

#include "store/DatabaseError.h"
#include "store/MiscSettings.h"

#include <gtest/gtest.h>

namespace {

TEST(MiscSettings, ValuesLastBeyondTheConnection)
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
    EXPECT_EQ(settings.changesSinceLastCompact(), 101.0);
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM MiscSettings").toInt(), 1);
}

TEST(MiscSettings, NoReaderIsStoredAsNull)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    const MiscSettings settings(db);
    settings.setLastUserReaderID(5);
    settings.setLastUserReaderID(std::nullopt);
    EXPECT_EQ(settings.lastUserReaderID(), std::nullopt);
    EXPECT_TRUE(db.scalar("SELECT LastUserReaderID FROM MiscSettings").isNull());
}

TEST(MiscSettings, AMissingRowIsAnError)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    db.execute("DELETE FROM MiscSettings");
    const MiscSettings settings(db);
    EXPECT_THROW(settings.lastUserReaderID(), DatabaseError);
    EXPECT_THROW(settings.lastUserFilterNo(), DatabaseError);
    EXPECT_THROW(settings.changesSinceLastCompact(), DatabaseError);
}

} // namespace
