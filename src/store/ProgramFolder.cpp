#include "store/ProgramFolder.h"

#include "store/DatabaseError.h"
#include "store/DatabaseSchema.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"
#include "store/SettingsFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

ProgramFolder::ProgramFolder(const QString &path, const QString &dataDir, const QString &tempDir,
                             const QString &documentsDir)
    : mPath(QDir::cleanPath(path)), mDataDir(dataDir), mTempDir(tempDir.trimmed()), mDocumentsDir(documentsDir)
{
}

ProgramFolder ProgramFolder::standard()
{
    return ProgramFolder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

QString ProgramFolder::installedDataDir()
{
    const QString sourceDataDir = QStringLiteral(TAVIMETRA_DATA_DIR);
    if (!QCoreApplication::instance())
        return sourceDataDir;
    return dataDirFor(QCoreApplication::applicationDirPath(), QStringLiteral(TAVIMETRA_BUILD_DIR), sourceDataDir);
}

QString ProgramFolder::dataDirFor(const QString &programDir, const QString &buildDir, const QString &sourceDataDir)
{
    const QString installed = QDir::cleanPath(QDir(programDir).filePath(QStringLiteral(TAVIMETRA_DATA_FROM_PROGRAM)));
    if (QFileInfo(installed).isDir())
        return installed;
    const QString program = QDir::cleanPath(programDir);
    const QString build = QDir::cleanPath(buildDir);
    if (!build.isEmpty() && (program == build || program.startsWith(build + u'/')))
        return sourceDataDir;
    return installed;
}

QString ProgramFolder::standardDocumentsDir()
{
    QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty())
        documents = QDir::homePath();
    return QDir(documents).filePath(kDocumentsFolderName);
}

QString ProgramFolder::systemTempDir()
{
    return QDir::tempPath();
}

QStringList ProgramFolder::deliveredFiles()
{
    return {QStringLiteral("Results.INI"), QStringLiteral("Results2.INI"), QStringLiteral("logo.jpg")};
}

QString ProgramFolder::filePath(const QString &fileName) const
{
    return QDir(mPath).filePath(fileName);
}

QString ProgramFolder::settingsPath() const
{
    return filePath(kSettingsFileName);
}

QString ProgramFolder::databasePath() const
{
    return filePath(kDatabaseFileName);
}

QString ProgramFolder::upgradeBackupFolder() const
{
    return QDir(mTempDir).filePath(kUpgradeBackupFolderName);
}

bool ProgramFolder::isNew() const
{
    return !QFileInfo::exists(settingsPath()) && !QFileInfo::exists(databasePath());
}

bool ProgramFolder::seedIfNew() const
{
    if (!isNew())
        return false;
    if (!QDir().mkpath(mPath))
        throw DatabaseError(QStringLiteral("Could not create the program folder ") + mPath);
    createNewDatabase();
    copyDeliveredFiles();
    // Written last: a start that fails before here finds the folder new again.
    writeSettingsFile(*this, kNewInstallMarker);
    return true;
}

void ProgramFolder::createNewDatabase() const
{
    // Built under a name of its own and renamed when complete, so that a failure never
    // leaves a half-made database where the program looks for one.
    const QString building = databasePath() + QStringLiteral(".new");
    QFile::remove(building);
    try {
        DbConnection db(building, DbConnection::Mode::Create);
        DbTransaction transaction(db);
        createDatabaseSchema(db);
        insertDeliveryRows(db);
        transaction.commit();
    } catch (...) {
        QFile::remove(building);
        throw;
    }
    if (!QFile::rename(building, databasePath())) {
        QFile::remove(building);
        throw DatabaseError(QStringLiteral("Could not create the database ") + databasePath());
    }
}

void ProgramFolder::copyDeliveredFiles() const
{
    if (mDataDir.isEmpty())
        return;
    const QDir data(mDataDir);
    for (const QString &name : deliveredFiles()) {
        const QString source = data.filePath(name);
        const QString target = filePath(name);
        if (QFileInfo(source).isFile() && !QFileInfo::exists(target))
            QFile::copy(source, target);
    }
}
