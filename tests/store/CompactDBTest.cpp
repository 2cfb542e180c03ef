// Compacting the database: a checked copy first, kept as the backup, then the database in
// use replaced; a failure at any step leaves a database that works.
#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeRunDialogs.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "SmallDisk.h"
#include "TempProgramFolder.h"

#include "store/CompactDB.h"
#include "store/DatabaseError.h"
#include "store/DbTransaction.h"
#include "store/MiscSettings.h"
#include "store/PlateRows.h"
#include "worksheet/Workbench.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <functional>

namespace {

struct Compaction {
    TempProgramFolder temp;
    FakePrompt prompt;
    CompactDB compact{temp.folder(), prompt};

    // Saves and deletes runs, so the file has free pages, and counts 150 saves.
    void wearTheDatabase() const
    {
        const DbConnection db = temp.open();
        DbTransaction transaction(db);
        for (int run = 1; run <= 6; ++run) {
            RecordSet plates = RunPlates::make(10, run);
            PlateRows::insert(db, plates);
        }
        for (int run = 1; run <= 5; ++run)
            PlateRows::deleteRun(db, run);
        MiscSettings(db).setChangesSinceLastCompact(150);
        transaction.commit();
    }
    double changes() const { return MiscSettings(temp.open()).changesSinceLastCompact(); }
    int plateRows() const { return temp.open().scalar(QStringLiteral("SELECT COUNT(*) FROM Plates")).toInt(); }
    qint64 databaseSize() const { return QFileInfo(temp.databasePath()).size(); }
    void expectNotCompactedBox(const QString &detail) const
    {
        ASSERT_GE(prompt.count(), 1);
        EXPECT_EQ(prompt.last().title, "Compact Database");
        EXPECT_EQ(prompt.last().icon, MsgIcon::Critical);
        EXPECT_TRUE(prompt.last().text.startsWith(
            "The database could not be compacted. It was not changed and can be used as before.\r\n\r\n"));
        EXPECT_TRUE(prompt.last().text.contains(detail)) << prompt.last().text.toStdString();
    }
    // The database still works: its rows are there and a save goes in.
    void expectUsableDatabase() const
    {
        EXPECT_EQ(plateRows(), 10);
        const DbConnection db = temp.open();
        EXPECT_EQ(db.scalar(QStringLiteral("PRAGMA integrity_check")).toString(), "ok");
        RecordSet plates = RunPlates::make(1, 99);
        PlateRows::insert(db, plates);
    }
};

TEST(Compacting, LeavesACountOfZeroAGreenLightAndADatabaseThatOpens)
{
    Compaction f;
    f.wearTheDatabase();
    const qint64 before = f.databaseSize();
    FakeClock clock;
    FakeRunDialogs dialogs;
    Workbench workbench(f.temp.folder(), f.prompt, clock, dialogs);
    workbench.showCompactLight(false);
    ASSERT_TRUE(workbench.compactLight().yellow);

    ASSERT_TRUE(f.compact.run());

    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.changes(), 0.0);
    workbench.showCompactLight(true);
    EXPECT_FALSE(workbench.compactLight().yellow);
    EXPECT_EQ(workbench.compactLight().toolTip, "The database is currently compact.");
    EXPECT_LT(f.databaseSize(), before);
    f.expectUsableDatabase();
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 6), QStringList{"first"});
}

TEST(Compacting, KeepsTheCompactedCopyAsTheBackupInTheWorkFolderAndReplacesItNextTime)
{
    Compaction f;
    f.wearTheDatabase();
    ASSERT_TRUE(f.compact.run());
    const QString backup = QDir(f.temp.path()).filePath(QStringLiteral("TavimetraBackup/backup.db"));
    EXPECT_EQ(f.compact.backupPath(), backup);
    EXPECT_EQ(DbConnection(backup, DbConnection::Mode::ReadOnly).scalar("SELECT COUNT(*) FROM Plates").toInt(), 10);
    {
        const DbConnection db = f.temp.open();
        RecordSet plates = RunPlates::make(3, 42);
        PlateRows::insert(db, plates);
    }
    ASSERT_TRUE(f.compact.run());
    EXPECT_EQ(DbConnection(backup, DbConnection::Mode::ReadOnly).scalar("SELECT COUNT(*) FROM Plates").toInt(), 13);
    EXPECT_FALSE(QFileInfo::exists(backup + QStringLiteral(".new")));
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(Compacting, ADatabaseOutsideTheProgramsFolderKeepsTheWorkFolderUnderIt)
{
    Compaction f;
    const QString elsewhere = QDir(f.temp.rootPath()).filePath(QStringLiteral("elsewhere/lab.db"));
    QDir().mkpath(QFileInfo(elsewhere).path());
    ASSERT_TRUE(QFile::rename(f.temp.databasePath(), elsewhere));
    f.temp.writeSettings(elsewhere);

    ASSERT_TRUE(f.compact.run());
    EXPECT_TRUE(QFileInfo(QDir(f.temp.path()).filePath(QStringLiteral("TavimetraBackup/backup.db"))).isFile());
    EXPECT_FALSE(QFileInfo::exists(QDir(f.temp.rootPath()).filePath(QStringLiteral("elsewhere/TavimetraBackup"))));
    EXPECT_EQ(MiscSettings(DbConnection(elsewhere)).changesSinceLastCompact(), 0.0);
}

TEST(ACompactionThatFails, OnACopyThatFailsItsCheckLeavesTheDatabaseAndTheOldBackup)
{
    Compaction f;
    f.wearTheDatabase();
    ASSERT_TRUE(f.compact.run());
    const QByteArray oldBackup = TempProgramFolder::readFile(f.compact.backupPath());
    MiscSettings(f.temp.open()).setChangesSinceLastCompact(120);

    f.compact.setStepDone([](CompactDB::Step step, const QString &file) {
        if (step != CompactDB::Step::CopyWritten)
            return;
        // Scribble over the pages behind the header, as a bad disk would.
        QFile copy(file);
        ASSERT_TRUE(copy.open(QIODevice::ReadWrite));
        copy.seek(4096);
        copy.write(QByteArray(8192, '\x5a'));
    });
    EXPECT_FALSE(f.compact.run());

    f.expectNotCompactedBox(QString());
    EXPECT_EQ(f.changes(), 120.0);
    EXPECT_EQ(TempProgramFolder::readFile(f.compact.backupPath()), oldBackup);
    EXPECT_FALSE(QFileInfo::exists(f.compact.backupPath() + QStringLiteral(".new")));
    f.expectUsableDatabase();
}

TEST(ACompactionThatFails, AtAnyStepSaysWhyAndLeavesTheDatabaseAsItWas)
{
    struct Case {
        const char *label;
        std::function<void(Compaction &)> fail;
        const char *detail;
    };
    const Case cases[] = {
        {"the work folder can not be made",
         [](Compaction &f) {
             TempProgramFolder::writeFile(QDir(f.temp.path()).filePath(QStringLiteral("TavimetraBackup")),
                                          "in the way");
         },
         "Could not make the folder"},
        {"the backup can not be copied back",
         [](Compaction &f) {
             f.compact.setStepDone([](CompactDB::Step step, const QString &file) {
                 if (step == CompactDB::Step::BackupKept)
                     QFile::remove(file);
             });
         },
         "backup.db could not be read"},
        {"a step throws",
         [](Compaction &f) {
             f.compact.setStepDone(
                 [](CompactDB::Step, const QString &) { throw DatabaseError(QStringLiteral("no space")); });
         },
         "no space"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        Compaction f;
        f.wearTheDatabase();
        const QByteArray database = TempProgramFolder::readFile(f.temp.databasePath());
        c.fail(f);
        EXPECT_FALSE(f.compact.run());
        f.expectNotCompactedBox(QString::fromUtf8(c.detail));
        EXPECT_EQ(TempProgramFolder::readFile(f.temp.databasePath()), database);
        EXPECT_EQ(f.changes(), 150.0);
        EXPECT_FALSE(QFileInfo::exists(f.compact.backupPath() + QStringLiteral(".new")));
        f.expectUsableDatabase();
    }
}

TEST(ACompactionThatFails, OnADiskTooFullForTheCopyLeavesTheDatabaseWhole)
{
    SmallDisk disk(4 << 20);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    Compaction f;
    const QString database = QDir(disk.path()).filePath(QStringLiteral("rundata.db"));
    {
        const DbConnection db = f.temp.open();
        db.execute(QStringLiteral("CREATE TABLE Padding(x)"));
        db.execute(QStringLiteral("INSERT INTO Padding VALUES (randomblob(1048576))"));
    }
    ASSERT_TRUE(QFile::copy(f.temp.databasePath(), database));
    f.temp.writeSettings(database);
    const QByteArray before = TempProgramFolder::readFile(database);
    disk.fillLeaving(before.size() / 2);

    EXPECT_FALSE(f.compact.run());

    f.expectNotCompactedBox(QStringLiteral("No space left on device"));
    EXPECT_EQ(TempProgramFolder::readFile(database), before);
}

TEST(ACompactionThatFails, WithoutADatabaseSaysSoAndMakesNone)
{
    Compaction f;
    ASSERT_TRUE(QFile::remove(f.temp.databasePath()));
    EXPECT_FALSE(f.compact.run());
    f.expectNotCompactedBox(QStringLiteral("does not exist"));
    EXPECT_FALSE(QFileInfo::exists(f.temp.databasePath()));
}

} // namespace
