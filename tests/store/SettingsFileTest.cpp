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

TEST(SettingsFile, FirstStartRewritesNewInstallWithTheFolderDatabaseAndTheSecondLeavesIt)
{
    TempProgramFolder temp(Stage::Seeded);
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), QByteArray("NEW INSTALL\r\n"));

    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Rewritten);

    const QString expected = QDir::toNativeSeparators(temp.databasePath());
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), (expected + "\r\n").toUtf8());
    EXPECT_EQ(getDatabasePath(temp.folder()), expected);
    EXPECT_NO_THROW(openDatabase(temp.folder()));

    const QByteArray afterFirstStart = TempProgramFolder::readFile(temp.settingsPath());
    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Unchanged);
    EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), afterFirstStart);
}

TEST(SettingsFile, TheFirstFieldOfTheFirstLineNamesTheDatabaseAndOnlyNewInstallIsRewritten)
{
    struct Case {
        QByteArray text;
        QString database;
    };
    const Case cases[] = {
        {"/srv/lab/tavimetra/rundata.db\r\n", "/srv/lab/tavimetra/rundata.db"}, // a moved database
        {"/data/Smith, Jones/rundata.db\r\n", "/data/Smith"},                   // cut at the comma
        {"  /data/run.db  \nsecond line\n", "/data/run.db"},
        {"New Install\r\n", "New Install"}, // matched exactly
        {"", QString()},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.text.toStdString());
        TempProgramFolder temp;
        TempProgramFolder::writeFile(temp.settingsPath(), c.text);
        EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Unchanged);
        EXPECT_EQ(TempProgramFolder::readFile(temp.settingsPath()), c.text);
        EXPECT_EQ(getDatabasePath(temp.folder()), c.database);
    }
    TempProgramFolder temp;
    TempProgramFolder::writeFile(temp.settingsPath(), "NEW INSTALL,anything\r\n");
    EXPECT_EQ(checkNewInstall(temp.folder()), NewInstallCheck::Rewritten);
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

TEST(SettingsFile, AnExplicitPathOverridesTheSettings)
{
    TempProgramFolder temp;
    temp.writeSettings(QStringLiteral("/nowhere/rundata.db"));
    EXPECT_THROW(openDatabase(temp.folder()), DatabaseError);
    const DbConnection db = openDatabase(temp.folder(), temp.databasePath());
    EXPECT_TRUE(db.isOpen());
}

} // namespace
