#include "TempProgramFolder.h"

#include "store/SettingsFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>

#include <atomic>

#include <gtest/gtest.h>

namespace {

ProgramFolder makeFolder(const QTemporaryDir &root, const QString &dataDir)
{
    const QDir dir(root.path());
    return ProgramFolder(dir.filePath(QStringLiteral("Tavimetra")), dataDir, dir.filePath(QStringLiteral("temp")),
                         dir.filePath(QStringLiteral("Documents/Tavimetra")));
}

} // namespace

TempProgramFolder::TempProgramFolder(Stage stage, const QString &dataDir) : mFolder(makeFolder(mRoot, dataDir))
{
    if (!mRoot.isValid()) {
        ADD_FAILURE() << "TempProgramFolder: no temporary folder: " << mRoot.errorString().toStdString();
        return;
    }
    QDir().mkpath(mFolder.tempDir());
    if (stage == Stage::Empty)
        return;
    mFolder.seedIfNew();
    if (stage == Stage::Installed)
        checkNewInstall(mFolder);
    if (stage == Stage::Installed && serverTests()) {
        const QString uri = newServerDatabase();
        mServerDatabase = DatabaseLocation::parse(uri).databaseName();
        writeSettings(uri);
    }
}

TempProgramFolder::~TempProgramFolder()
{
    if (onServer())
        dropServerDatabase(mServerDatabase);
}

DbConnection TempProgramFolder::open() const
{
    return DbConnection(databaseLocation());
}

QString TempProgramFolder::databaseLocation() const
{
    return onServer() ? getDatabasePath(mFolder) : databasePath();
}

bool TempProgramFolder::serverTests()
{
    return qEnvironmentVariable("TAVIMETRA_TEST_BACKEND") == QLatin1String("postgresql");
}

QString TempProgramFolder::testServer()
{
    return qEnvironmentVariable("TAVIMETRA_TEST_SERVER");
}

namespace {

// Runs one statement on the server's maintenance database.
bool onMaintenanceDatabase(const QString &sql)
{
    const QString name = QStringLiteral("tavimetra-test-maintenance");
    bool done = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
        db.setHostName(TempProgramFolder::testServer());
        db.setDatabaseName(QStringLiteral("postgres"));
        if (db.open()) {
            QSqlQuery query(db);
            done = query.exec(sql);
            if (!done)
                ADD_FAILURE() << "test server: " << query.lastError().text().toStdString();
        } else {
            ADD_FAILURE() << "test server: " << db.lastError().text().toStdString();
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
    return done;
}

} // namespace

QString TempProgramFolder::newServerDatabase()
{
    if (testServer().isEmpty())
        return QString();
    static std::atomic<int> counter{0};
    const QString name = QStringLiteral("t%1_%2").arg(QCoreApplication::applicationPid()).arg(++counter);
    onMaintenanceDatabase(QStringLiteral("DROP DATABASE IF EXISTS ") + name);
    if (!onMaintenanceDatabase(QStringLiteral("CREATE DATABASE ") + name))
        return QString();
    return QStringLiteral("postgresql:///%1?host=%2")
        .arg(name, QString::fromUtf8(QUrl::toPercentEncoding(testServer(), "/")));
}

void TempProgramFolder::dropServerDatabase(const QString &name)
{
    onMaintenanceDatabase(QStringLiteral("DROP DATABASE IF EXISTS ") + name + QStringLiteral(" WITH (FORCE)"));
}

void TempProgramFolder::writeSettings(const QString &line) const
{
    writeSettingsFile(mFolder, line);
}

QByteArray TempProgramFolder::readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

void TempProgramFolder::writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(contents) != contents.size())
        ADD_FAILURE() << "TempProgramFolder: could not write " << path.toStdString();
}
