// A database that another program holds: every connection waits a moment, then the user is
// told plainly that the database is in use and nothing was changed; never "corrupt", never
// SQL. Work that replaces the file (compaction) refuses while anything else has it open.
#include "RunSaveDesk.h"
#include "SqliteLockHolder.h"

#include "store/CompactDB.h"
#include "store/DatabaseCheck.h"
#include "store/DatabaseError.h"
#include "store/MiscSettings.h"

#include <gtest/gtest.h>

namespace {

using Lock = SqliteLockHolder::Lock;

// Short waits, so that the tests don't sit through the program's few seconds.
struct ShortBusyTimeout {
    const int saved = DbConnection::busyTimeoutMs();
    ShortBusyTimeout() { DbConnection::setBusyTimeoutMs(300); }
    ~ShortBusyTimeout() { DbConnection::setBusyTimeoutMs(saved); }
};

struct Held : RunSaveDesk {
    ShortBusyTimeout timeout;
    QByteArray bytesBefore() const { return TempProgramFolder::readFile(temp.databasePath()); }
};

class ADatabaseHeldByAnotherProgram : public testing::TestWithParam<Lock> {};

TEST_P(ADatabaseHeldByAnotherProgram, RefusesASaveInPlainWordsAndKeepsTheRun)
{
    Held f;
    f.saveOldRun();
    {
        const SqliteLockHolder other(f.temp.databasePath(), GetParam());
        ASSERT_TRUE(other.holding());
        EXPECT_FALSE(f.dialog.simpleSave());
    }

    ASSERT_EQ(f.prompt.count(), 1);
    const QString text = f.prompt.last().text;
    EXPECT_TRUE(text.endsWith(DatabaseError::kInUseText)) << text.toStdString();
    for (const char *sql : {"[", "INSERT", "DELETE", "UPDATE", "COMMIT", "locked"})
        EXPECT_FALSE(text.contains(QLatin1String(sql))) << text.toStdString();
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"old"});
}

INSTANTIATE_TEST_SUITE_P(Locks, ADatabaseHeldByAnotherProgram,
                         testing::Values(Lock::Shared, Lock::Reserved, Lock::Exclusive),
                         [](const testing::TestParamInfo<Lock> &info) {
                             return std::string(info.param == Lock::Shared     ? "Shared"
                                                : info.param == Lock::Reserved ? "Reserved"
                                                                               : "Exclusive");
                         });

TEST(ADatabaseHeldByAnotherProgram, RefusesADeleteSayingOnceThatNothingWasChanged)
{
    Held f;
    f.saveOldRun(1);
    RunBrowser browser(f.temp.folder(), f.prompt);
    browser.load();
    browser.selectRun(0);
    f.prompt.clearBoxes();
    f.prompt.queueAnswer(MsgAnswer::Yes);
    {
        const SqliteLockHolder other(f.temp.databasePath(), Lock::Reserved);
        ASSERT_TRUE(other.holding());
        browser.deleteRun();
    }
    const QString text = f.prompt.last().text;
    EXPECT_EQ(text, QStringLiteral("The run could not be deleted.\r\n\r\n") + DatabaseError::kInUseText);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"old"});
}

TEST(ADatabaseHeldExclusively, StopsTheStartAsInUseNotAsCorrupt)
{
    Held f;
    const SqliteLockHolder other(f.temp.databasePath(), Lock::Exclusive);
    ASSERT_TRUE(other.holding());

    EXPECT_FALSE(checkDatabase(f.temp.folder(), f.prompt));
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().text, "Could not start Tavimetra.  The database is in use by another program.\r\n"
                                    "Nothing was changed.  Please start Tavimetra again once the other program has "
                                    "finished.");
}

TEST(ACompaction, RefusesWhileAnotherProgramHasTheDatabaseOpenAndChangesNothing)
{
    Held f;
    MiscSettings(f.temp.open()).setChangesSinceLastCompact(150);
    const QByteArray before = f.bytesBefore();
    CompactDB compact(f.temp.folder(), f.prompt);
    {
        // Open, idle, no lock of SQLite's: its next save would go to a file that is gone.
        const SqliteLockHolder other(f.temp.databasePath(), Lock::None);
        ASSERT_TRUE(other.holding());
        EXPECT_FALSE(compact.run());
    }
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().title, CompactDB::kFailureTitle);
    EXPECT_EQ(f.prompt.last().text, CompactDB::kInUseText);
    EXPECT_EQ(f.bytesBefore(), before);

    // Once the other program is gone, it goes ahead.
    EXPECT_TRUE(compact.run());
    EXPECT_EQ(MiscSettings(f.temp.open()).changesSinceLastCompact(), 0);
}

} // namespace
