#include "QtPrinters.h"
#include "TempProgramFolder.h"

#include "store/DatabaseError.h"
#include "store/RunDatabase.h"
#include "store/SettingsFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

using Stage = TempProgramFolder::Stage;

TEST(SettingsFile, FirstStartRewritesNewInstallWithTheFolderDatabase)
{
    TempProgramFolder temp(Stage::Seeded);
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), QByteArray("NEW INSTALL\r\n"));

    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Rewritten);

    const QString expected = QDir::toNativeSeparators(temp.databasePath());
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), (expected + "\r\n").toUtf8());
    EXPECT_EQ(getDatabasePath(temp.folder()), expected);
    EXPECT_NO_THROW(openDatabase(temp.folder()));
}

TEST(SettingsFile, SecondStartLeavesTheFileAlone)
{
    TempProgramFolder temp(Stage::Seeded);
    ASSERT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Rewritten);
    const QByteArray afterFirstStart = TempProgramFolder::readFile(temp.settingsPath());

    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Unchanged);
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), afterFirstStart);
}

TEST(SettingsFile, AMovedDatabaseIsLeftWhereTheLineSays)
{
    TempProgramFolder temp;
    const QByteArray edited = "/srv/lab/tavimetra/rundata.db\r\n";
    TempProgramFolder::writeFile(temp.settingsPath(), edited);

    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Unchanged);
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), edited);
    EXPECT_EQ(getDatabasePath(temp.folder()), QStringLiteral("/srv/lab/tavimetra/rundata.db"));
}

TEST(SettingsFile, APathWithACommaIsCutAtTheComma)
{
    TempProgramFolder temp;
    temp.writeSettings(QStringLiteral("/data/Smith, Jones/rundata.db"));
    EXPECT_EQ(getDatabasePath(temp.folder()), QStringLiteral("/data/Smith"));
}

TEST(SettingsFile, OnlyTheFirstFieldOfTheFirstLineCounts)
{
    TempProgramFolder temp;
    TempProgramFolder::writeFile(temp.settingsPath(), "  /data/run.db  \nsecond line\n");
    EXPECT_EQ(getDatabasePath(temp.folder()), QStringLiteral("/data/run.db"));

    TempProgramFolder::writeFile(temp.settingsPath(), "NEW INSTALL,anything\r\n");
    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Rewritten);
}

TEST(SettingsFile, NewInstallIsMatchedExactly)
{
    TempProgramFolder temp;
    TempProgramFolder::writeFile(temp.settingsPath(), "New Install\r\n");
    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Unchanged);
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), QByteArray("New Install\r\n"));
}

TEST(SettingsFile, AMissingFileIsReportedAndNotMade)
{
    TempProgramFolder temp;
    ASSERT_TRUE(QFile::remove(temp.settingsPath()));

    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::SettingsMissing);
    EXPECT_EQ(getDatabasePath(temp.folder()), QString());
    EXPECT_FALSE(QFileInfo::exists(temp.settingsPath()));
    EXPECT_THROW(openDatabase(temp.folder()), DatabaseError);
}

TEST(SettingsFile, AnEmptyFileNamesNoDatabase)
{
    TempProgramFolder temp;
    TempProgramFolder::writeFile(temp.settingsPath(), "");
    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Unchanged);
    EXPECT_EQ(getDatabasePath(temp.folder()), QString());
    EXPECT_THROW(openDatabase(temp.folder()), DatabaseError);
}

TEST(SettingsFile, AnExplicitPathOverridesTheSettings)
{
    TempProgramFolder temp;
    temp.writeSettings(QStringLiteral("/nowhere/rundata.db"));
    EXPECT_THROW(openDatabase(temp.folder()), DatabaseError);
    const DbConnection db = openDatabase(temp.folder(), temp.databasePath());
    EXPECT_TRUE(db.isOpen());
}

} // namespace
