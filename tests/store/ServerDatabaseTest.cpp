// The run database on a server: how it is named, how an empty one is made ready, and what
// is refused with a message.
#include "FakePrompt.h"
#include "TempProgramFolder.h"

#include "store/DatabaseCheck.h"
#include "store/DatabaseError.h"
#include "store/DatabaseLocation.h"
#include "store/DbConnection.h"
#include "store/ServerSchema.h"

#include <gtest/gtest.h>

namespace {

struct UriCase {
    const char *text;
    const char *host;
    int port;
    const char *user;
    const char *database;
    const char *options;
};

class ServerUri : public ::testing::TestWithParam<UriCase> {};

TEST_P(ServerUri, IsReadIntoItsParts)
{
    const UriCase &c = GetParam();
    const DatabaseLocation location = DatabaseLocation::parse(QString::fromUtf8(c.text));
    EXPECT_TRUE(location.isServer());
    EXPECT_EQ(location.host(), c.host);
    EXPECT_EQ(location.port(), c.port);
    EXPECT_EQ(location.userName(), c.user);
    EXPECT_EQ(location.databaseName(), c.database);
    EXPECT_EQ(location.connectOptions(), c.options);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, ServerUri,
    ::testing::Values(UriCase{"postgresql://lab@db.example:5433/runs", "db.example", 5433, "lab", "runs", ""},
                      UriCase{"postgres://db/runs?sslmode=require", "db", -1, "", "runs", "sslmode=require"},
                      UriCase{"postgresql:///runs?host=/run/postgresql", "/run/postgresql", -1, "", "runs", ""},
                      UriCase{"postgresql:///?service=lab", "", -1, "", "", "service=lab"}));

TEST(DatabaseLocation, APathIsAFileAndAWindowsPathIsNoUri)
{
    for (const QString &path : {QStringLiteral("/data/rundata.db"), QStringLiteral("C:\\Lab\\rundata.db")}) {
        const DatabaseLocation location = DatabaseLocation::parse(path);
        EXPECT_FALSE(location.isServer());
        EXPECT_EQ(location.databaseName(), path);
    }
}

TEST(DatabaseLocation, RefusesWhatCanNotBeUsedSayingWhy)
{
    const QList<QPair<QString, QString>> cases = {
        {QStringLiteral("postgresql://lab:secret@db/runs"), QStringLiteral("password file")},
        {QStringLiteral("postgresql://db/runs?password=x"), QStringLiteral("\"password\" is not one")},
        {QStringLiteral("postgresql://db"), QStringLiteral("names no database")},
    };
    for (const auto &[text, why] : cases) {
        try {
            DatabaseLocation::parse(text);
            ADD_FAILURE() << "accepted " << text.toStdString();
        } catch (const DatabaseError &e) {
            EXPECT_TRUE(e.message().contains(why)) << e.message().toStdString();
            EXPECT_FALSE(e.message().contains(QStringLiteral("secret")));
        }
    }
}

// The rest needs a server.
class OnServer : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!TempProgramFolder::serverTests() || TempProgramFolder::testServer().isEmpty())
            GTEST_SKIP() << "needs the test server (TAVIMETRA_TEST_BACKEND=postgresql, TAVIMETRA_TEST_SERVER)";
    }
    QString startUpBox(const QString &uri)
    {
        temp.writeSettings(uri);
        FakePrompt prompt;
        EXPECT_FALSE(checkDatabase(temp.folder(), prompt));
        return prompt.count() == 1 ? prompt.last().text : QString();
    }
    TempProgramFolder temp;
};

TEST_F(OnServer, AnEmptyDatabaseGetsTheTablesTheDeliveryAndTheVersionOnce)
{
    const DbConnection db = temp.open();
    EXPECT_EQ(ServerSchema::versionOf(db), ServerSchema::kVersion);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT COUNT(*) FROM UserReaders")).toInt(), 2);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT FolderName FROM Folders")).toString(), QStringLiteral("Runs"));
    ServerSchema::prepare(db); // a second preparation finds it made
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT COUNT(*) FROM TavimetraSchema")).toInt(), 1);
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT COUNT(*) FROM UserReaders")).toInt(), 2);
}

TEST_F(OnServer, ANewerSchemaOrADatabaseOfOtherTablesIsRefusedSayingWhy)
{
    const DbConnection db = temp.open();
    db.execute(QStringLiteral("UPDATE TavimetraSchema SET SchemaVersion = ?"), {ServerSchema::kVersion + 1});
    try {
        ServerSchema::prepare(db);
        ADD_FAILURE() << "a newer schema was accepted";
    } catch (const DatabaseError &e) {
        EXPECT_TRUE(e.message().contains(QStringLiteral("newer version of Tavimetra"))) << e.message().toStdString();
    }
    db.execute(QStringLiteral("DROP TABLE TavimetraSchema"));
    try {
        ServerSchema::prepare(db);
        ADD_FAILURE() << "a database of other tables was accepted";
    } catch (const DatabaseError &e) {
        EXPECT_TRUE(e.message().contains(QStringLiteral("not Tavimetra's"))) << e.message().toStdString();
    }
    EXPECT_EQ(ServerSchema::versionOf(db), 0); // nothing was made over the other tables
}

TEST_F(OnServer, AServerThatCanNotBeReachedGivesTheStartUpBox)
{
    const QString box = startUpBox(QStringLiteral("postgresql:///nosuchdb?host=") + TempProgramFolder::testServer());
    EXPECT_TRUE(box.startsWith(QStringLiteral("Could not start Tavimetra."))) << box.toStdString();
    EXPECT_TRUE(box.contains(QStringLiteral("nosuchdb"))) << box.toStdString();
}

} // namespace
