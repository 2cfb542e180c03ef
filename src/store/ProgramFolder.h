#pragma once

#include <QString>
#include <QStringList>

// The program's own folder: settings.txt, the run database, the demo readers' captures
// (Results.INI, Results2.INI), logo.jpg beside the reports, and the compaction's work
// folder. In production it is the per-user data folder; tests use a temporary folder.
//
// Beside it the object knows where the installed data files lie (copied into a new
// folder), the system's temporary folder (where the upgrade keeps its backup) and the
// folder where the workbooks go for the user to keep (DocumentFolder).
class ProgramFolder {
public:
    // The run database of a new install: an SQLite file, the counterpart of the former
    // rundata.mdb.
    static inline const QString kDatabaseFileName = QStringLiteral("rundata.db");
    static inline const QString kSettingsFileName = QStringLiteral("settings.txt");
    // The folder under the temporary folder that holds the copy taken before an upgrade.
    static inline const QString kUpgradeBackupFolderName = QStringLiteral("Tavimetra Database Upgrade Backup");

    // The folder under the user's documents folder that takes the workbooks.
    static inline const QString kDocumentsFolderName = QStringLiteral("Tavimetra");

    explicit ProgramFolder(const QString &path, const QString &dataDir = installedDataDir(),
                           const QString &tempDir = systemTempDir(),
                           const QString &documentsDir = standardDocumentsDir());

    // The per-user data folder of the program (it may not exist yet).
    static ProgramFolder standard();
    // The folder of the files installed with the program: "share/tavimetra" beside the
    // folder of the program ("/usr/bin" -> "/usr/share/tavimetra"). A program started from
    // its build tree uses the data folder of the source tree instead.
    static QString installedDataDir();
    // installedDataDir for a program in programDir: the installed folder when it exists;
    // else, for a program inside buildDir, sourceDataDir; else the installed folder all
    // the same (so that what is missing can be named).
    static QString dataDirFor(const QString &programDir, const QString &buildDir, const QString &sourceDataDir);
    // "Tavimetra" in the user's documents folder.
    static QString standardDocumentsDir();
    // The system's temporary folder.
    static QString systemTempDir();
    // The files copied from the installed data folder into a new program folder.
    static QStringList deliveredFiles();

    QString path() const { return mPath; }
    QString dataDir() const { return mDataDir; }
    QString tempDir() const { return mTempDir; }
    QString documentsDir() const { return mDocumentsDir; }

    // A file in the program's folder.
    QString filePath(const QString &fileName) const;
    QString settingsPath() const;
    // The database of a new install. The database in use is the one settings.txt names.
    QString databasePath() const;
    // The folder of the copy taken before an upgrade.
    QString upgradeBackupFolder() const;

    // True when the folder has neither settings.txt nor a database: a first start.
    bool isNew() const;

    // The first start: when the folder is new, makes it and seeds it with settings.txt
    // reading "NEW INSTALL", a fresh database with its delivery rows, and the installed
    // data files that exist (Results.INI, Results2.INI, logo.jpg). Returns true when it
    // seeded, false when the folder was already in use. Throws DatabaseError when the
    // folder or the database can't be made; a settings.txt is then not written, so the
    // next start tries again.
    bool seedIfNew() const;

private:
    void createNewDatabase() const;
    void copyDeliveredFiles() const;

    QString mPath;
    QString mDataDir;
    QString mTempDir;
    QString mDocumentsDir;
};
