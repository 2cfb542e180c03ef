#include "TempProgramFolder.h"

#include "store/SettingsFile.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

ProgramFolder makeFolder(const QTemporaryDir &root, const QString &dataDir)
{
    const QDir dir(root.path());
    return ProgramFolder(dir.filePath(QStringLiteral("Tavimetra")), dataDir, dir.filePath(QStringLiteral("temp")),
                         dir.filePath(QStringLiteral("Documents/Tavimetra")));
}

} // namespace

TempProgramFolder::TempProgramFolder(Stage stage, const QString &dataDir)
    : mFolder(makeFolder(mRoot, dataDir))
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
}

DbConnection TempProgramFolder::open() const
{
    return DbConnection(databasePath());
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
