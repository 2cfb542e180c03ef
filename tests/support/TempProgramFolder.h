#pragma once

#include "store/DbConnection.h"
#include "store/ProgramFolder.h"

#include <QString>
#include <QTemporaryDir>

// A program folder of its own for one test, in a temporary folder that is removed with
// the object. Inside the temporary folder:
//
//     Tavimetra/   the program's folder (settings.txt, rundata.db, ...)
//     temp/        stands for the system's temporary folder (the upgrade backup goes here)
//     Documents/Tavimetra/   stands for the user's documents folder (workbooks go here)
//
// By default the folder is as after a first start: seeded from the installed data folder
// and settings.txt naming the fresh database.
//
// When the tests run against a server (TAVIMETRA_TEST_BACKEND=postgresql, with
// TAVIMETRA_TEST_SERVER the folder of the server's socket), an installed folder's
// settings.txt names a new database of its own on that server instead, dropped with the
// object. The SQLite file is made all the same, as a first start makes it.
class TempProgramFolder {
public:
    enum class Stage {
        Empty,     // nothing made yet: the folder doesn't exist
        Seeded,    // seeded, settings.txt still reads "NEW INSTALL"
        Installed, // seeded and settings.txt names the database (after checkNewInstall)
    };

    explicit TempProgramFolder(Stage stage = Stage::Installed,
                               const QString &dataDir = ProgramFolder::installedDataDir());

    ~TempProgramFolder();

    TempProgramFolder(const TempProgramFolder &) = delete;
    TempProgramFolder &operator=(const TempProgramFolder &) = delete;

    const ProgramFolder &folder() const { return mFolder; }
    QString path() const { return mFolder.path(); }
    QString databasePath() const { return mFolder.databasePath(); }
    QString settingsPath() const { return mFolder.settingsPath(); }
    QString tempPath() const { return mFolder.tempDir(); }
    QString documentsPath() const { return mFolder.documentsDir(); }
    // The temporary folder that holds everything.
    QString rootPath() const { return mRoot.path(); }

    // A new read-write connection to the folder's database.
    DbConnection open() const;

    // What settings.txt names: the server URI when the tests run on a server and the folder
    // is installed, the database file otherwise.
    QString databaseLocation() const;
    bool onServer() const { return !mServerDatabase.isEmpty(); }

    // Whether this run of the tests is against a server, and its socket folder.
    static bool serverTests();
    static QString testServer();
    // The URI of a new, empty database on the test server (dropped at the end of the
    // program); empty when there is no server.
    static QString newServerDatabase();
    static void dropServerDatabase(const QString &name);

    // Adds a group to the database under the next free id.
    void addGroup(const QString &name) const
    {
        open().execute(QStringLiteral("INSERT INTO Groups (GroupID, GroupName) "
                                      "VALUES ((SELECT COALESCE(MAX(GroupID), 0) + 1 FROM Groups), ?)"),
                       {name});
    }

    // Replaces settings.txt with one line.
    void writeSettings(const QString &line) const;

    // The contents of a file (empty when it can't be read).
    static QByteArray readFile(const QString &path);
    // Writes a file whole, replacing it; fails the running test when it can't.
    static void writeFile(const QString &path, const QByteArray &contents);

private:
    QTemporaryDir mRoot;
    ProgramFolder mFolder;
    QString mServerDatabase;
};
