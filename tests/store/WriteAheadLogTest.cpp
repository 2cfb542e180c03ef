// The run database kept in WAL mode while the program runs: the file alone is the whole
// database once the log is folded in, and work that copies the file sees everything saved.
#include "RunSaveDesk.h"

#include "store/CompactDB.h"
#include "store/SqliteWal.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

struct Kept : RunSaveDesk {
    Kept()
    {
        SqliteWal::keepWhileRunning(temp.databasePath());
        saveOldRun();
        EXPECT_TRUE(dialog.simpleSave()); // "new" goes to the log, not yet to the file
    }
    ~Kept() { SqliteWal::settle(temp.databasePath()); }

    bool besideTheDatabase(const char *suffix) const { return QFile::exists(temp.databasePath() + suffix); }

    // The run as a copy of the database file alone shows it.
    QStringList tagsInACopyOfTheFile() const
    {
        const QString copy = temp.rootPath() + QStringLiteral("/copy.db");
        QFile::remove(copy);
        EXPECT_TRUE(QFile::copy(temp.databasePath(), copy));
        return RunPlates::tags(DbConnection(copy, DbConnection::Mode::ReadOnly), 1);
    }
};

TEST(AKeptDatabase, SettledLeavesTheFileAloneWholeAndBackOnTheRollbackJournal)
{
    Kept f;
    ASSERT_TRUE(SqliteWal::isKept(f.temp.databasePath()));
    EXPECT_TRUE(f.besideTheDatabase("-wal"));

    SqliteWal::settle(f.temp.databasePath());
    EXPECT_FALSE(f.besideTheDatabase("-wal"));
    EXPECT_FALSE(f.besideTheDatabase("-shm"));
    EXPECT_EQ(DbConnection(f.temp.databasePath(), DbConnection::Mode::ReadOnly)
                  .scalar(QStringLiteral("PRAGMA journal_mode"))
                  .toString(),
              "delete");
    EXPECT_EQ(f.tagsInACopyOfTheFile(), QStringList{"new"});

    // The next piece of work keeps the log again.
    EXPECT_TRUE(f.dialog.simpleSave());
    EXPECT_TRUE(SqliteWal::isKept(f.temp.databasePath()));
}

TEST(AKeptDatabase, IsCompactedWithWhatIsInTheLogAndNoLogLeftBeside)
{
    Kept f;
    EXPECT_TRUE(CompactDB(f.temp.folder(), f.prompt).run());
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_FALSE(f.besideTheDatabase("-wal"));
    EXPECT_FALSE(f.besideTheDatabase("-shm"));
    EXPECT_EQ(f.tagsInACopyOfTheFile(), QStringList{"new"});
}

// A connection left open between pieces of work never writes to a file put in its place.
TEST(AKeptDatabase, ReplacedByAnotherFileIsTheOneTheNextWorkSees)
{
    Kept f;
    SqliteWal::settle(f.temp.databasePath());
    const QString older = f.temp.rootPath() + QStringLiteral("/older.db");
    ASSERT_TRUE(QFile::copy(f.temp.databasePath(), older)); // holds "new"

    RecordSet plates = f.dialog.getPlatesRecord();
    RunPlates::retag(plates, QStringLiteral("newer"));
    f.dialog.setPlatesRecord(plates);
    ASSERT_TRUE(f.dialog.simpleSave());
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"newer"});

    // Put in place as a restore does, the program still running.
    ASSERT_TRUE(QFile::remove(f.temp.databasePath()));
    ASSERT_TRUE(QFile::rename(older, f.temp.databasePath()));
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"new"});
    EXPECT_TRUE(f.besideTheDatabase("-wal.replaced")); // the former file's log, not lost
    ASSERT_TRUE(f.dialog.simpleSave());
    EXPECT_EQ(RunPlates::tags(DbConnection(f.temp.databasePath(), DbConnection::Mode::ReadOnly), 1),
              QStringList{"newer"});
}

} // namespace
