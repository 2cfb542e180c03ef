#include "ChildProcess.h"
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

#include <functional>

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

TEST(StartupCheck, AfterACrashMidWriteRollsTheUnfinishedWorkBackAndStarts)
{
    TempProgramFolder temp;
    {
        const DbConnection db = temp.open();
        db.execute(QStringLiteral("CREATE TABLE Padding(x)"));
        for (int row = 0; row < 200; ++row)
            db.execute(QStringLiteral("INSERT INTO Padding VALUES (randomblob(4000))"));
    }
    const QByteArray before = TempProgramFolder::readFile(temp.databasePath());
    // Killed with the database file half rewritten: only the journal beside it can undo that.
    ChildProcess crashing([&temp](int pipeOut) -> int {
        const DbConnection db = temp.open();
        db.execute(QStringLiteral("PRAGMA cache_size=2"));
        db.execute(QStringLiteral("BEGIN IMMEDIATE"));
        db.execute(QStringLiteral("UPDATE Padding SET x = randomblob(4000)"));
        ChildProcess::tell(pipeOut, 'x');
        ChildProcess::waitToBeKilled();
    });
    char byte = 0;
    ASSERT_TRUE(crashing.readByte(byte));
    crashing.kill();
    ASSERT_NE(TempProgramFolder::readFile(temp.databasePath()), before) << "the file was not half rewritten";

    FakePrompt prompt;
    EXPECT_TRUE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.count(), 0);
    EXPECT_EQ(TempProgramFolder::readFile(temp.databasePath()), before);
}

TEST(StartupCheck, ABadOrMissingDatabaseGivesTheStartupBoxAndIsLeftAsItWas)
{
    struct Case {
        const char *label;
        std::function<void(const TempProgramFolder &)> spoil;
    };
    const Case cases[] = {
        {"no settings", [](const TempProgramFolder &t) { QFile::remove(t.settingsPath()); }},
        {"no database", [](const TempProgramFolder &t) { QFile::remove(t.databasePath()); }},
        {"a corrupt file", [](const TempProgramFolder &t) { t.writeFile(t.databasePath(), randomBytes(64 * 1024)); }},
        {"an empty file", [](const TempProgramFolder &t) { t.writeFile(t.databasePath(), QByteArray()); }},
        {"a first generation missing a table (no upgrade offered)",
         [](const TempProgramFolder &t) {
             QFile::remove(t.databasePath());
             createGeneration1Database(t.databasePath(), Generation1Kind::WithoutUserFilters);
         }},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        TempProgramFolder temp;
        c.spoil(temp);
        const bool hadSettings = QFileInfo::exists(temp.settingsPath());
        const bool hadDatabase = QFileInfo::exists(temp.databasePath());
        const QByteArray before = hadDatabase ? TempProgramFolder::readFile(temp.databasePath()) : QByteArray();
        FakePrompt prompt;
        EXPECT_FALSE(checkDatabase(temp.folder(), prompt));
        EXPECT_EQ(prompt.boxes(), QList<PromptBox>{kCouldNotStart});
        EXPECT_EQ(QFileInfo::exists(temp.settingsPath()), hadSettings);
        EXPECT_EQ(QFileInfo::exists(temp.databasePath()), hadDatabase);
        if (hadDatabase) {
            EXPECT_EQ(TempProgramFolder::readFile(temp.databasePath()), before);
        }
    }
}

TEST(ValidateDatabase, TellsTheGenerations)
{
    TempProgramFolder temp;
    const QString old = QDir(temp.rootPath()).filePath("old.db");
    createGeneration1Database(old);
    const QString half = QDir(temp.rootPath()).filePath("half.db"); // Technicians, but no plate technicians
    createGeneration1Database(half, Generation1Kind::WithTechniciansTable);
    FakePrompt prompt;
    for (const QString &first : {old, half}) {
        EXPECT_TRUE(validateDatabase(first, 1, prompt));
        EXPECT_FALSE(validateDatabase(first, 2, prompt));
    }
    EXPECT_TRUE(validateDatabase(temp.databasePath(), 1, prompt));
    EXPECT_TRUE(validateDatabase(temp.databasePath(), 2, prompt));
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
        EXPECT_EQ(prompt.boxes(), (QList<PromptBox>{{QString(),
                                                     "Failed database validation - wrong version specified.\r\n"
                                                     "Please contact Qorn.",
                                                     MsgIcon::None, MsgButtons::Ok}}))
            << generation;
    }
}

} // namespace
