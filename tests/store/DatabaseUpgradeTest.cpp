#include "FakePrompt.h"
#include "Generation1Database.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/DatabaseCheck.h"
#include "store/DatabaseError.h"
#include "store/DatabaseUpgrade.h"
#include "store/RunDatabase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>

#include <gtest/gtest.h>

namespace {

const PromptBox kUpgradeQuestion{"Upgrade Database?",
                                 "You currently have an older (1st generation) Tavimetra database.\r\n\r\n"
                                 "In order to run this version of Tavimetra, your database must be upgraded.\r\n"
                                 "Proceed with upgrade?",
                                 MsgIcon::None, MsgButtons::YesNo};
const PromptBox kUpgraded{"Database successfully upgraded.",
                          "The database has been upgraded.  Click OK to start Tavimetra.", MsgIcon::None,
                          MsgButtons::Ok};
const PromptBox kRefused{"Cannot Start Tavimetra.",
                         "Tavimetra cannot start because the database must be upgraded.\r\n"
                         "If you have received this message in error, please contact Qorn.",
                         MsgIcon::None, MsgButtons::Ok};
const PromptBox kUpgradeFailed{QString(),
                               "Error: 1\r\nAn error occurred while upgrading the database.  "
                               "Please contact Qorn for help.",
                               MsgIcon::None, MsgButtons::Ok};
const PromptBox kRestoreFailed{QString(), "Could not restore the backup database.\r\nPlease contact Qorn.",
                               MsgIcon::None, MsgButtons::Ok};
const PromptBox kBackupFailed{QString(),
                              "Could not back the database up.  The database will not be "
                              "upgraded.\r\nPlease contact Qorn.",
                              MsgIcon::None, MsgButtons::Ok};

// A program folder whose database is of the first generation.
class DatabaseUpgrade : public ::testing::Test {
protected:
    void useGeneration1(Generation1Kind kind = Generation1Kind::Complete)
    {
        ASSERT_TRUE(QFile::remove(temp.databasePath()));
        createGeneration1Database(temp.databasePath(), kind);
        original = TempProgramFolder::readFile(temp.databasePath());
        ASSERT_FALSE(original.isEmpty());
    }

    QString backupPath() const
    {
        return QDir(temp.tempPath())
            .filePath("Tavimetra Database Upgrade Backup/" + QFileInfo(temp.databasePath()).fileName());
    }

    QByteArray current() const { return TempProgramFolder::readFile(temp.databasePath()); }

    TempProgramFolder temp;
    FakePrompt prompt;
    QByteArray original;
};

TEST_F(DatabaseUpgrade, YesUpgradesAndEveryOldPlateGetsNoTechnician)
{
    useGeneration1();
    ASSERT_TRUE(QDir().mkpath(QFileInfo(backupPath()).path()));
    TempProgramFolder::writeFile(backupPath(), "copy of an earlier upgrade");
    prompt.queueAnswer(MsgAnswer::Yes);

    EXPECT_TRUE(checkDatabase(temp.folder(), prompt));

    EXPECT_EQ(prompt.boxes(), (QList<PromptBox>{kUpgradeQuestion, kUpgraded}));
    FakePrompt quiet;
    EXPECT_TRUE(validateDatabase(temp.databasePath(), 2, quiet));
    const DbConnection db = openDatabase(temp.folder());
    QSqlQuery plates = db.query("SELECT PlateName, TestName, TechName FROM Plates ORDER BY PlateID");
    QList<QStringList> rows;
    while (plates.next())
        rows.append({plates.value(0).toString(), plates.value(1).toString(), plates.value(2).toString()});
    EXPECT_EQ(rows, (QList<QStringList>{{"Plate #1", "Generic", "<No Technician Selected>"},
                                        {"Plate #2", "RTUV 419", "<No Technician Selected>"}}));
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM Technicians").toInt(), 0);
    db.execute("INSERT INTO Technicians VALUES (?)", {"Mary O'Neill"});
    EXPECT_EQ(db.scalar("SELECT TechName FROM Technicians").toString(), QStringLiteral("Mary O'Neill"));
    // The copy taken first replaces the one of an earlier upgrade and stays until the next.
    EXPECT_EQ(TempProgramFolder::readFile(backupPath()), original);
}

TEST_F(DatabaseUpgrade, NoLeavesTheFileAsItWasAndTakesNoCopy)
{
    useGeneration1();
    prompt.queueAnswer(MsgAnswer::No);

    EXPECT_FALSE(checkDatabase(temp.folder(), prompt));

    EXPECT_EQ(prompt.boxes(), (QList<PromptBox>{kUpgradeQuestion, kRefused}));
    EXPECT_EQ(current(), original);
    EXPECT_FALSE(QFileInfo::exists(QDir(temp.tempPath()).filePath("Tavimetra Database Upgrade Backup")));
}

TEST_F(DatabaseUpgrade, AFailedUpgradeIsReportedAndTheCopyPutBack)
{
    useGeneration1(Generation1Kind::WithTechniciansTable);
    prompt.queueAnswer(MsgAnswer::Yes);
    // While the error box is up, the file is damaged: only the copy can bring it back.
    prompt.setOnBox([this](const PromptBox &box) {
        if (box.text.startsWith("Error: "))
            TempProgramFolder::writeFile(temp.databasePath(), "damaged");
    });

    EXPECT_FALSE(checkDatabase(temp.folder(), prompt));

    EXPECT_EQ(prompt.boxes(), (QList<PromptBox>{kUpgradeQuestion, kUpgradeFailed}));
    EXPECT_EQ(current(), original);
}

TEST_F(DatabaseUpgrade, AFailedRestoreIsReported)
{
    useGeneration1(Generation1Kind::WithTechniciansTable);
    prompt.queueAnswer(MsgAnswer::Yes);
    prompt.setOnBox([this](const PromptBox &box) {
        if (box.text.startsWith("Error: "))
            QFile::remove(backupPath());
    });

    EXPECT_FALSE(checkDatabase(temp.folder(), prompt));

    EXPECT_EQ(prompt.boxes(), (QList<PromptBox>{kUpgradeQuestion, kUpgradeFailed, kRestoreFailed}));
    // The upgrade itself changed nothing.
    EXPECT_EQ(current(), original);
}

TEST_F(DatabaseUpgrade, NoUpgradeWithoutACopy)
{
    useGeneration1();
    // A file where the backup folder belongs: the folder can't be made.
    TempProgramFolder::writeFile(QDir(temp.tempPath()).filePath("Tavimetra Database Upgrade Backup"), "x");
    prompt.queueAnswer(MsgAnswer::Yes);

    EXPECT_FALSE(checkDatabase(temp.folder(), prompt));

    EXPECT_EQ(prompt.boxes(), (QList<PromptBox>{kUpgradeQuestion, kBackupFailed}));
    EXPECT_EQ(current(), original);
}

TEST_F(DatabaseUpgrade, TheCopyBearsTheDatabaseFileName)
{
    const QString elsewhere = QDir(temp.rootPath()).filePath("lab data.db");
    createGeneration1Database(elsewhere);
    temp.writeSettings(elsewhere);
    const QByteArray before = TempProgramFolder::readFile(elsewhere);

    ASSERT_TRUE(backupForUpgrade(temp.folder()));
    const QString copy = QDir(temp.tempPath()).filePath("Tavimetra Database Upgrade Backup/lab data.db");
    EXPECT_EQ(TempProgramFolder::readFile(copy), before);

    TempProgramFolder::writeFile(elsewhere, "damaged");
    ASSERT_TRUE(restoreUpgradeBackup(temp.folder()));
    EXPECT_EQ(TempProgramFolder::readFile(elsewhere), before);
}

TEST_F(DatabaseUpgrade, AFailedUpgradeChangesNothingInTheFile)
{
    useGeneration1(Generation1Kind::WithTechniciansTable);

    EXPECT_EQ(upgradeDatabase(temp.databasePath()), 1);

    EXPECT_EQ(current(), original);
    FakePrompt quiet;
    EXPECT_TRUE(validateDatabase(temp.databasePath(), 1, quiet));
    EXPECT_FALSE(validateDatabase(temp.databasePath(), 2, quiet));
}

TEST_F(DatabaseUpgrade, WithoutTheFileNothingIsUpgradedCopiedOrMade)
{
    ASSERT_TRUE(QFile::remove(temp.databasePath()));
    EXPECT_EQ(upgradeDatabase(temp.databasePath()), kUpgradeFailedWithoutNumber);
    EXPECT_FALSE(backupForUpgrade(temp.folder()));
    EXPECT_FALSE(restoreUpgradeBackup(temp.folder()));
    EXPECT_FALSE(QFileInfo::exists(temp.databasePath()));
    ASSERT_TRUE(QFile::remove(temp.settingsPath()));
    EXPECT_THROW(renameLegacyKit(temp.folder()), DatabaseError);
}

TEST_F(DatabaseUpgrade, TheOldKitNameIsRenamedInSavedPlates)
{
    {
        const DbConnection db = temp.open();
        const QString insert = "INSERT INTO Plates (PlateID, PlateName, RunID, TestName) VALUES (?, ?, 1, ?)";
        db.execute(insert, {1, "Old", "RTUV 419"});
        db.execute(insert, {2, "Current", "PZV 419"});
        db.execute(insert, {3, "Other", "RTUV 4190"});
        db.execute(insert, {4, "Generic", "Generic"});
    }

    renameLegacyKit(temp.folder());
    renameLegacyKit(temp.folder()); // nothing left to rename: no change

    const DbConnection db = temp.open();
    EXPECT_EQ(RunPlates::column(db, "SELECT TestName FROM Plates ORDER BY PlateID"),
              (QStringList{"PZV 419", "PZV 419", "RTUV 4190", "Generic"}));
}

} // namespace
