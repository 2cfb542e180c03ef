#include "store/CompactDB.h"

#include "platform/Prompt.h"
#include "store/AuditTrail.h"
#include "store/DatabaseError.h"
#include "store/DatabaseLocation.h"
#include "store/DatabaseUseLock.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"
#include "store/FileCopy.h"
#include "store/MiscSettings.h"
#include "store/ProgramFolder.h"
#include "store/SettingsFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>

#include <filesystem>
#include <optional>
#include <system_error>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

// Makes sure the file's contents are on the disk before anything relies on them.
void syncToDisk(const QString &path)
{
#ifdef Q_OS_UNIX
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        ::fsync(file.handle());
#else
    Q_UNUSED(path);
#endif
}

std::filesystem::path fsPath(const QString &path)
{
    return std::filesystem::path(path.toStdU16String());
}

} // namespace

CompactDB::CompactDB(const ProgramFolder &folder, Prompt &prompt) : mFolder(folder), mPrompt(prompt)
{
}

QString CompactDB::workFolder() const
{
    return mFolder.filePath(kWorkFolderName);
}

QString CompactDB::backupPath() const
{
    return QDir(workFolder()).filePath(kBackupFileName);
}

void CompactDB::writeCheckedCopy(const QString &database, const QString &copy) const
{
    {
        // Read-write, so that a transaction a crash left unfinished is rolled back first.
        const DbConnection db(database);
        db.execute(db.dialect().compactInto(), {QDir::toNativeSeparators(copy)});
    }
    syncToDisk(copy);
    if (mStepDone)
        mStepDone(Step::CopyWritten, copy);

    const DbConnection checked(copy, DbConnection::Mode::ReadOnly);
    QSqlQuery rows = checked.query(checked.dialect().integrityCheck());
    QStringList problems;
    while (rows.next())
        problems.append(rows.value(0).toString());
    if (problems != QStringList{checked.dialect().integrityCheckPassed()})
        throw DatabaseError(QStringLiteral("The compacted copy failed its check: ") +
                            problems.mid(0, 5).join(QStringLiteral("; ")));
}

void CompactDB::keepAsBackup(const QString &copy) const
{
    // A rename within one folder replaces the former backup in one step.
    std::error_code error;
    std::filesystem::rename(fsPath(copy), fsPath(backupPath()), error);
    if (error)
        throw DatabaseError(QStringLiteral("Could not keep the compacted copy as ") + backupPath() +
                            QStringLiteral(": ") + QString::fromStdString(error.message()));
    if (mStepDone)
        mStepDone(Step::BackupKept, backupPath());
}

bool CompactDB::run()
{
    const QString database = getDatabasePath(mFolder);
    if (DatabaseLocation::looksLikeServer(database)) {
        mPrompt.message(kServerText, kFailureTitle, MsgIcon::Information);
        return true;
    }
    const QString copy = backupPath() + QStringLiteral(".new");
    // Held to the end: no connection, in this program or another, may have the file open
    // while it is replaced, or its saves would go to the file that is replaced.
    std::optional<DatabaseUseLock> exclusive;
    try {
        if (database.isEmpty())
            throw DatabaseError(QStringLiteral("No database is named in ") + mFolder.settingsPath());
        if (!QFileInfo(database).isFile())
            throw DatabaseError(QStringLiteral("The database file does not exist: ") + database);
        exclusive.emplace(database, DatabaseUseLock::Kind::Exclusive, DbConnection::busyTimeoutMs());
        if (!exclusive->isHeld()) {
            mPrompt.message(kInUseText, kFailureTitle, MsgIcon::Exclamation);
            return false;
        }
        if (!QDir().mkpath(workFolder()))
            throw DatabaseError(QStringLiteral("Could not make the folder ") + workFolder());
        if (QFileInfo::exists(copy) && !QFile::remove(copy))
            throw DatabaseError(QStringLiteral("Could not remove the unfinished copy ") + copy);

        writeCheckedCopy(database, copy);
        keepAsBackup(copy);
        QString error;
        if (!copyFileReplacing(backupPath(), database, &error))
            throw DatabaseError(error);
    } catch (const std::exception &e) {
        QFile::remove(copy);
        const auto *dbError = dynamic_cast<const DatabaseError *>(&e);
        mPrompt.message(kNotCompactedText + kCrLf + kCrLf +
                            (dbError ? dbError->message() : QString::fromUtf8(e.what())),
                        kFailureTitle, MsgIcon::Critical);
        return false;
    }

    try {
        // The compacted file keeps the whole trail; the compaction itself goes in with the
        // reset of the count.
        const DbConnection db(database);
        DbTransaction transaction(db);
        const MiscSettings settings(db);
        AuditEntry entry;
        entry.action = AuditTrail::kDatabaseCompacted;
        entry.table = QStringLiteral("MiscSettings");
        entry.field = QStringLiteral("ChangesSinceLastCompact");
        entry.oldValue = QString::number(settings.changesSinceLastCompact());
        entry.newValue = QStringLiteral("0");
        settings.setChangesSinceLastCompact(0);
        AuditTrail(db).record(entry);
        transaction.commit();
    } catch (const DatabaseError &e) {
        mPrompt.message(kCountNotResetText + kCrLf + kCrLf + e.message(), kFailureTitle, MsgIcon::Exclamation);
    }
    return true;
}
