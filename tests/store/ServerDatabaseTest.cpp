// The run database on a server: how it is named, how an empty one is made ready, what is
// refused with a message, and a connection lost in the middle of a save.
#include "RunSaveDesk.h"

#include "store/DatabaseCheck.h"
#include "store/DatabaseError.h"
#include "store/DatabaseLocation.h"
#include "store/DbConnection.h"
#include "store/ServerSchema.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <atomic>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

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

TEST_F(OnServer, AConnectionDroppedMidSaveIsToldWritesNothingAndTheNextSaveWorks)
{
    RunSaveDesk desk;
    desk.saveOldRun();
    // Half way through the plates, the server ends the saving connection.
    int dropped = -1;
    desk.dialog.setSaveProgress([&](int written) {
        if (written == 2 && dropped < 0)
            dropped =
                desk.count(QStringLiteral("SELECT COUNT(pg_terminate_backend(pid)) FROM pg_stat_activity "
                                          "WHERE datname = current_database() AND state = 'idle in transaction'"));
    });
    EXPECT_FALSE(desk.dialog.simpleSave());
    EXPECT_EQ(dropped, 1);
    desk.expectNotSavedBox(QStringLiteral("terminating connection"));
    EXPECT_EQ(RunPlates::tags(desk.temp.open(), 1), QStringList{"old"});
    EXPECT_EQ(RunPlates::rowCount(desk.temp.open(), 1), 3);

    desk.dialog.setSaveProgress({});
    EXPECT_TRUE(desk.dialog.simpleSave());
    EXPECT_EQ(RunPlates::tags(desk.temp.open(), 1), QStringList{"new"});
}

// A server that speaks no SSL, on a port of this machine: to a request for SSL it answers
// "N", as such a server does, and takes nothing further.
class NoSslServer {
public:
    NoSslServer()
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        if (::bind(mListener, reinterpret_cast<sockaddr *>(&address), length) != 0 || ::listen(mListener, 4) != 0 ||
            ::getsockname(mListener, reinterpret_cast<sockaddr *>(&address), &length) != 0)
            return;
        mPort = ntohs(address.sin_port);
        mThread = std::thread([this] {
            for (int client; (client = ::accept(mListener, nullptr, nullptr)) >= 0; ::close(client)) {
                unsigned char request[8];
                // An SSL (80877103) or GSS (80877104) request: 8 bytes, the code last.
                while (::recv(client, request, sizeof request, MSG_WAITALL) == sizeof request && request[4] == 0x04 &&
                       request[5] == 0xd2 && request[6] == 0x16 && (request[7] == 0x2f || request[7] == 0x30)) {
                    if (request[7] == 0x2f)
                        mAskedForSsl = true;
                    if (::send(client, "N", 1, MSG_NOSIGNAL) != 1)
                        break;
                }
            }
        });
    }
    ~NoSslServer()
    {
        ::shutdown(mListener, SHUT_RDWR);
        if (mThread.joinable())
            mThread.join();
        ::close(mListener);
    }
    int port() const { return mPort; }
    bool askedForSsl() const { return mAskedForSsl; }

private:
    int mListener = ::socket(AF_INET, SOCK_STREAM, 0);
    int mPort = 0;
    std::atomic<bool> mAskedForSsl{false};
    std::thread mThread;
};

TEST_F(OnServer, TheSslModeOfTheAddressReachesTheConnection)
{
    const QString ownDatabase = temp.databaseLocation();
    NoSslServer noSsl;
    ASSERT_GT(noSsl.port(), 0);
    const QString box = startUpBox(QStringLiteral("postgresql://127.0.0.1:%1/runs?sslmode=require").arg(noSsl.port()));
    EXPECT_TRUE(noSsl.askedForSsl());
    EXPECT_TRUE(box.startsWith(QStringLiteral("Could not start Tavimetra."))) << box.toStdString();
    EXPECT_TRUE(box.contains(QStringLiteral("SSL was required"))) << box.toStdString();
    EXPECT_TRUE(box.contains(QStringLiteral("runs on 127.0.0.1:%1").arg(noSsl.port()))) << box.toStdString();

    temp.writeSettings(ownDatabase + QStringLiteral("&sslmode=disable"));
    FakePrompt prompt;
    EXPECT_TRUE(checkDatabase(temp.folder(), prompt));
    EXPECT_EQ(prompt.count(), 0);
}

// The test server asks this role, and this role alone, for its password (scripts/test-server).
TEST_F(OnServer, AWrongPasswordIsToldNamingTheServerAndNeverThePassword)
{
    const QString role = QStringLiteral("tavimetra_password");
    {
        const DbConnection db = temp.open();
        if (db.scalar(QStringLiteral("SELECT COUNT(*) FROM pg_hba_file_rules WHERE ? = ANY(user_name)"), {role})
                .toInt() == 0)
            GTEST_SKIP() << "this test server asks no role for a password";
        db.execute(QStringLiteral("DO $$ BEGIN CREATE ROLE tavimetra_password LOGIN PASSWORD 'right-secret'; "
                                  "EXCEPTION WHEN duplicate_object THEN NULL; END $$"));
    }
    QTemporaryDir dir;
    const QString passFile = dir.filePath(QStringLiteral("pgpass"));
    TempProgramFolder::writeFile(passFile, "*:*:*:tavimetra_password:wrong-secret\n");
    QFile::setPermissions(passFile, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    const QString database = DatabaseLocation::parse(temp.databaseLocation()).databaseName();
    const QString uri =
        QStringLiteral("postgresql://%1@/%2?host=%3").arg(role, database, TempProgramFolder::testServer());
    qputenv("PGPASSFILE", passFile.toLocal8Bit());

    const QString box = startUpBox(uri);
    QProcess cli;
    cli.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../tavimetra-cli"), {"runs", "--db", uri});
    const bool finished = cli.waitForFinished(60000);
    qunsetenv("PGPASSFILE");
    ASSERT_TRUE(finished);
    EXPECT_NE(cli.exitCode(), 0);
    const QString command = QString::fromUtf8(cli.readAllStandardError());
    for (const QString &message : {box, command}) {
        EXPECT_TRUE(message.contains(QStringLiteral("password authentication failed"))) << message.toStdString();
        EXPECT_TRUE(message.contains(database)) << message.toStdString();
        EXPECT_FALSE(message.contains(QStringLiteral("secret"))) << message.toStdString();
    }
    EXPECT_FALSE(command.contains(QStringLiteral("QSqlDatabase"))) << command.toStdString(); // no Qt noise
    EXPECT_TRUE(box.startsWith(QStringLiteral("Could not start Tavimetra."))) << box.toStdString();
}

} // namespace
