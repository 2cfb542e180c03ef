#include "FakePrompt.h"
#include "Generation1Database.h"
#include "QtPrinters.h"
#include "TempProgramFolder.h"

#include "store/DatabaseCheck.h"
#include "store/DatabaseUpgrade.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace {

const PromptBox kCouldNotStart{
    QString(), "Could not start Tavimetra.  Database is corrupt or does not exist.\r\nPlease contact Qorn.",
    MsgIcon::None, MsgButtons::Ok};

QByteArray randomBytes(int size)
{
    QRandomGenerator random(20240611);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

TEST(StartupCheck, ACurrentDatabaseStartsWithoutABox)
{
    TempProgramFolder temp;
    FakePrompt prompt;
    EXPECT_TRUE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.count(), 0);
}

TEST(StartupCheck, ADatabaseOutsideTheProgramFolderIsUsed)
{
    TempProgramFolder temp;
    const QString elsewhere = QDir(temp.rootPath()).filePath("shared/lab.db");
    ASSERT_TRUE(QDir().mkpath(QFileInfo(elsewhere).path()));
    ASSERT_TRUE(QFile::rename(temp.databasePath(), elsewhere));
    temp.writeSettings(elsewhere);

    FakePrompt prompt;
    EXPECT_TRUE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.count(), 0);
}

TEST(StartupCheck, MissingSettingsGiveTheStartupBox)
{
    TempProgramFolder temp;
    ASSERT_TRUE(QFile::remove(temp.settingsPath()));
    FakePrompt prompt;
    EXPECT_FALSE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.boxes(), QList<PromptBox>{kCouldNotStart});
    EXPECT_FALSE(QFileInfo::exists(temp.settingsPath()));
}

TEST(StartupCheck, AMissingDatabaseGivesTheStartupBoxAndIsNotMade)
{
    TempProgramFolder temp;
    ASSERT_TRUE(QFile::remove(temp.databasePath()));
    FakePrompt prompt;
    EXPECT_FALSE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.boxes(), QList<PromptBox>{kCouldNotStart});
    EXPECT_FALSE(QFileInfo::exists(temp.databasePath()));
}

TEST(StartupCheck, ACorruptDatabaseGivesTheStartupBoxAndIsLeftAsItWas)
{
    TempProgramFolder temp;
    const QByteArray junk = randomBytes(64 * 1024);
    TempProgramFolder::writeFile(temp.databasePath(), junk);
    FakePrompt prompt;
    EXPECT_FALSE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.boxes(), QList<PromptBox>{kCouldNotStart});
    EXPECT_EQ(TempProgramFolder::readFile(temp.databasePath()), junk);
}

TEST(StartupCheck, AnEmptyFileGivesTheStartupBoxAndStaysEmpty)
{
    TempProgramFolder temp;
    TempProgramFolder::writeFile(temp.databasePath(), QByteArray());
    FakePrompt prompt;
    EXPECT_FALSE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.boxes(), QList<PromptBox>{kCouldNotStart});
    EXPECT_EQ(QFileInfo(temp.databasePath()).size(), 0);
}

TEST(StartupCheck, ADatabaseMissingATableIsNotOfferedTheUpgrade)
{
    TempProgramFolder temp;
    ASSERT_TRUE(QFile::remove(temp.databasePath()));
    createGeneration1Database(temp.databasePath(), Generation1Kind::WithoutUserFilters);
    FakePrompt prompt;
    EXPECT_FALSE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.boxes(), QList<PromptBox>{kCouldNotStart});
}

TEST(ValidateDatabase, TellsTheGenerations)
{
    TempProgramFolder temp;
    const QString old = QDir(temp.rootPath()).filePath("old.db");
    createGeneration1Database(old);
    FakePrompt prompt;
    EXPECT_TRUE(validateDatabase(old, 1, prompt));
    EXPECT_FALSE(validateDatabase(old, 2, prompt));
    EXPECT_TRUE(validateDatabase(temp.databasePath(), 1, prompt));
    EXPECT_TRUE(validateDatabase(temp.databasePath(), 2, prompt));
    EXPECT_EQ(prompt.count(), 0);
}

TEST(ValidateDatabase, ATechniciansTableWithoutPlateTechniciansIsFirstGeneration)
{
    TempProgramFolder temp;
    const QString half = QDir(temp.rootPath()).filePath("half.db");
    createGeneration1Database(half, Generation1Kind::WithTechniciansTable);
    FakePrompt prompt;
    EXPECT_TRUE(validateDatabase(half, 1, prompt));
    EXPECT_FALSE(validateDatabase(half, 2, prompt));
    EXPECT_EQ(prompt.count(), 0);
}

TEST(ValidateDatabase, AMissingFileIsFalseWithoutABoxAndIsNotMade)
{
    TempProgramFolder temp;
    const QString missing = QDir(temp.rootPath()).filePath("missing.db");
    FakePrompt prompt;
    EXPECT_FALSE(validateDatabase(missing, 1, prompt));
    EXPECT_FALSE(validateDatabase(missing, 2, prompt));
    EXPECT_FALSE(validateDatabase(QString(), 1, prompt));
    EXPECT_EQ(prompt.count(), 0);
    EXPECT_FALSE(QFileInfo::exists(missing));
}

TEST(ValidateDatabase, AnUnknownGenerationIsRefusedWithABox)
{
    TempProgramFolder temp;
    for (int generation : {0, 3}) {
        FakePrompt prompt;
        EXPECT_FALSE(validateDatabase(temp.databasePath(), generation, prompt)) << generation;
        EXPECT_EQ(prompt.boxes(),
                  (QList<PromptBox>{{QString(),
                                    "Failed database validation - wrong version specified.\r\n"
                                    "Please contact Qorn.",
                                    MsgIcon::None, MsgButtons::Ok}}))
            << generation;
    }
}

} // namespace
