#include "FakePrompt.h"
#include "QtPrinters.h"
#include "TempProgramFolder.h"

#include "store/DatabaseCheck.h"
#include "store/DatabaseSchema.h"
#include "store/DatabaseUpgrade.h"
#include "store/RunDatabase.h"
#include "store/SettingsFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using Stage = TempProgramFolder::Stage;

QList<QVariantList> rowsOf(const DbConnection &db, const QString &sql)
{
    QSqlQuery query = db.query(sql);
    QList<QVariantList> rows;
    while (query.next()) {
        QVariantList row;
        for (int i = 0; i < query.record().count(); ++i)
            row.append(query.value(i));
        rows.append(row);
    }
    return rows;
}

TEST(ProgramFolderSeeding, ANewFolderGetsSettingsAndADatabase)
{
    TempProgramFolder temp(Stage::Empty);
    ASSERT_FALSE(QFileInfo::exists(temp.path()));
    ASSERT_TRUE(temp.folder().isNew());

    EXPECT_TRUE(temp.folder().seedIfNew());

    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), QByteArray("NEW INSTALL\r\n"));
    EXPECT_EQ(QFileInfo(temp.databasePath()).fileName(), QStringLiteral("rundata.db"));
    FakePrompt prompt;
    EXPECT_TRUE(validateDatabase(temp.databasePath(), 1, prompt));
    EXPECT_TRUE(validateDatabase(temp.databasePath(), 2, prompt));
    EXPECT_EQ(prompt.count(), 0);
    // Nothing of the work in progress is left beside it: only the database, the settings
    // and the files delivered with the program.
    QStringList expected{"rundata.db", "settings.txt"};
    for (const QString &file : ProgramFolder::deliveredFiles()) {
        if (QFileInfo::exists(QDir(ProgramFolder::installedDataDir()).filePath(file)))
            expected << file;
    }
    expected.sort();
    QStringList found = QDir(temp.path()).entryList(QDir::Files);
    found.sort();
    EXPECT_EQ(found, expected);
}

TEST(ProgramFolderSeeding, TheDeliveryMakesTheProgramUsableAtOnce)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    // The last reader is Demo; Demo reads at 630 nm (the inhibition kits), Demo2 at 450 nm.
    EXPECT_EQ(db.scalar("SELECT UserReaderName FROM UserReaders JOIN MiscSettings "
                        "ON UserReaders.UserReaderID = MiscSettings.LastUserReaderID")
                  .toString(),
              "Demo");
    EXPECT_EQ(rowsOf(db, "SELECT UserReaderName, FilterValue FROM UserReaders JOIN UserFilters "
                         "ON UserReaders.UserReaderID = UserFilters.UserReaderID ORDER BY UserReaderName"),
              (QList<QVariantList>{{"Demo", 630}, {"Demo2", 450}}));
    EXPECT_EQ(rowsOf(db, "SELECT FolderID, FolderName FROM Folders"), (QList<QVariantList>{{1, "Runs"}}));
    for (const char *table : {"Runs", "Plates", "Groups", "Technicians"})
        EXPECT_TRUE(rowsOf(db, QStringLiteral("SELECT * FROM ") + table).isEmpty()) << table;
}

TEST(ProgramFolderSeeding, InstalledDataFilesAreCopiedWhenPresent)
{
    QTemporaryDir data;
    const QByteArray capture = "\x03header\x03\r\n A1  0.123\r\n";
    const QByteArray logo("\xFF\xD8\xFF\xE0 not really a picture");
    TempProgramFolder::writeFile(QDir(data.path()).filePath("Results.INI"), capture);
    TempProgramFolder::writeFile(QDir(data.path()).filePath("logo.jpg"), logo);

    TempProgramFolder temp(Stage::Seeded, data.path());

    EXPECT_EQ(TempProgramFolder::readFile(temp.folder().filePath("Results.INI")), capture);
    EXPECT_EQ(TempProgramFolder::readFile(temp.folder().filePath("logo.jpg")), logo);
    EXPECT_FALSE(QFileInfo::exists(temp.folder().filePath("Results2.INI")));
}

TEST(ProgramFolderSeeding, AMissingDataFolderStillGivesAWorkingFolder)
{
    TempProgramFolder temp(Stage::Installed, QStringLiteral("/nonexistent/tavimetra/data"));
    FakePrompt prompt;
    EXPECT_TRUE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.count(), 0);
}

TEST(ProgramFolderSeeding, AFolderInUseOrADatabaseWithoutSettingsIsNotSeededAgain)
{
    TempProgramFolder temp;
    temp.open().execute("INSERT INTO Runs VALUES (1, 'Kept', 1)");
    const QByteArray settings = TempProgramFolder::readFile(temp.settingsPath());
    const QByteArray database = TempProgramFolder::readFile(temp.databasePath());
    EXPECT_FALSE(temp.folder().seedIfNew());
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), settings);

    ASSERT_TRUE(QFile::remove(temp.settingsPath()));
    EXPECT_FALSE(temp.folder().seedIfNew());
    EXPECT_FALSE(QFileInfo::exists(temp.settingsPath()));
    EXPECT_EQ(TempProgramFolder::readFile(temp.databasePath()), database);
}

TEST(ProgramFolderSeeding, AFolderWithAnApostropheWorksThroughTheFirstStart)
{
    QTemporaryDir root;
    const QDir dir(root.path());
    const ProgramFolder folder(dir.filePath("O'Brien's lab"), QString(), dir.filePath("tmp"));

    ASSERT_TRUE(folder.seedIfNew());
    ASSERT_EQ(checkNewInstall(folder), NewInstallCheck::Rewritten);
    FakePrompt prompt;
    EXPECT_TRUE(checkDatabase(folder, prompt));
    EXPECT_EQ(prompt.count(), 0);
    EXPECT_NO_THROW(renameLegacyKit(folder));
    EXPECT_EQ(getNewRunID(openDatabase(folder)), 1);
}

} // namespace
