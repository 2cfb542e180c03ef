#include "store/SettingsFile.h"

#include "platform/SafeFile.h"
#include "store/DatabaseError.h"
#include "store/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

#include <optional>

namespace {

// The first field of the file, or nothing when the file can't be read.
std::optional<QString> readFirstField(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return std::nullopt;
    QTextStream in(&file);
    QString line = in.readLine();
    const qsizetype comma = line.indexOf(QLatin1Char(','));
    if (comma >= 0)
        line.truncate(comma);
    return line.trimmed();
}

} // namespace

NewInstallCheck checkNewInstall(const ProgramFolder &folder)
{
    const std::optional<QString> field = readFirstField(folder.settingsPath());
    if (!field)
        return NewInstallCheck::SettingsMissing;
    if (*field != kNewInstallMarker)
        return NewInstallCheck::Unchanged;
    writeSettingsFile(folder, QDir::toNativeSeparators(folder.databasePath()));
    return NewInstallCheck::Rewritten;
}

QString getDatabasePath(const ProgramFolder &folder)
{
    return readFirstField(folder.settingsPath()).value_or(QString());
}

void writeSettingsFile(const ProgramFolder &folder, const QString &line)
{
    QString error;
    if (!SafeFile::writeWhole(folder.settingsPath(), (line + QStringLiteral("\r\n")).toUtf8(), &error))
        throw DatabaseError(error);
}
