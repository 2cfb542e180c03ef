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

    const auto misc = rowsOf(db, "SELECT * FROM MiscSettings");
    ASSERT_EQ(misc.size(), 1);
    EXPECT_EQ(misc[0][0], db.scalar("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = 'Demo'"));
    EXPECT_EQ(misc[0][1].toInt(), 0);
    EXPECT_EQ(misc[0][2].toDouble(), 0.0);

    const auto readers = rowsOf(db, "SELECT UserReaderID, UserReaderName, ReaderModelID, "
                                    "UserCOMPort, UserSettings, UserFlowControl, "
                                    "UserDefaultFilterNo FROM UserReaders ORDER BY UserReaderID");
    ASSERT_EQ(readers.size(), 2);
    EXPECT_EQ(readers[0].mid(1), (QVariantList{"Demo", kDemoReaderModelID, 1, "9600,N,8,1", 0, 1}));
    EXPECT_EQ(readers[1].mid(1), (QVariantList{"Demo2", kDemo2ReaderModelID, 1, "9600,N,8,1", 0, 1}));

    // Demo reads at 630 nm (the inhibition kits), Demo2 at 450 nm (the direct kits).
    const int wavelengths[] = {630, 450};
    for (const QVariantList &reader : readers) {
        const int wavelength = wavelengths[&reader - &readers[0]];
        const auto filters = rowsOf(db, QStringLiteral("SELECT FilterValue, FilterNo FROM UserFilters "
                                                       "WHERE UserReaderID = %1")
                                            .arg(reader[0].toInt()));
        ASSERT_EQ(filters.size(), 1) << reader[1].toString().toStdString();
        EXPECT_EQ(filters[0], (QVariantList{wavelength, 1}));
    }

    EXPECT_EQ(rowsOf(db, "SELECT FolderID, FolderName FROM Folders"),
              (QList<QVariantList>{{1, "Runs"}}));
    for (const char *table : {"Runs", "Plates", "Groups", "Technicians"})
        EXPECT_TRUE(rowsOf(db, QStringLiteral("SELECT * FROM ") + table).isEmpty()) << table;
}

TEST(ProgramFolderSeeding, ReaderIdsComeFromTheDatabaseAndAreNotReused)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    const int last = db.scalar("SELECT MAX(UserReaderID) FROM UserReaders").toInt();
    db.execute("DELETE FROM UserReaders WHERE UserReaderID = ?", {last});
    db.execute("INSERT INTO UserReaders (UserReaderName, ReaderModelID) VALUES (?, ?)",
               {"Bench reader", 4});
    EXPECT_GT(db.scalar("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?",
                        {"Bench reader"}).toInt(),
              last);
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

TEST(ProgramFolderSeeding, AFolderInUseIsNotSeededAgain)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    db.execute("INSERT INTO Runs VALUES (1, 'Kept', 1)");
    const QByteArray settings = TempProgramFolder::readFile(temp.settingsPath());

    EXPECT_FALSE(temp.folder().seedIfNew());
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), settings);
    EXPECT_EQ(db.scalar("SELECT RunName FROM Runs").toString(), QStringLiteral("Kept"));
}

TEST(ProgramFolderSeeding, ADatabaseWithoutSettingsIsNotOverwritten)
{
    TempProgramFolder temp;
    temp.open().execute("INSERT INTO Runs VALUES (1, 'Kept', 1)");
    ASSERT_TRUE(QFile::remove(temp.settingsPath()));
    const QByteArray before = TempProgramFolder::readFile(temp.databasePath());

    EXPECT_FALSE(temp.folder().seedIfNew());
    EXPECT_FALSE(QFileInfo::exists(temp.settingsPath()));
    EXPECT_EQ(TempProgramFolder::readFile(temp.databasePath()), before);
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
