#pragma once

#include <QString>

#include <functional>

class ProgramFolder;
class Prompt;

// Compaction of the run database. The file is replaced only once a complete, checked
// copy exists:
//
//   1. a compacted copy of the database in use is written under a new name in the work
//      folder "TavimetraBackup" under the program's folder (wherever the database lies);
//   2. the copy's structure is checked;
//   3. the copy becomes the backup "backup.db" there, replacing the one of the last
//      compaction;
//   4. the database in use is replaced from the backup: copied beside it under a
//      temporary name, then renamed over it in one step;
//   5. the count of saves since the last compaction goes back to 0.
//
// A failure at any step leaves a database that can be used, and a box says what happened;
// nothing ends the program. It holds the database exclusively (DatabaseUseLock) from start
// to end, and refuses with a box, changing nothing, while any other connection (of this
// program or another) has the file open for writing.
// A database on a server is left to the server: the command only says so.
class CompactDB {
public:
    static inline const QString kWorkFolderName = QStringLiteral("TavimetraBackup");
    static inline const QString kBackupFileName = QStringLiteral("backup.db");

    static inline const QString kFailureTitle = QStringLiteral("Compact Database");
    static inline const QString kNotCompactedText =
        QStringLiteral("The database could not be compacted. It was not changed and can be used as before.");
    static inline const QString kInUseText =
        QStringLiteral("The database was not compacted because it is in use by another program or another "
                       "Tavimetra window. Nothing was changed. Please close the other program and try again.");
    static inline const QString kCountNotResetText =
        QStringLiteral("The database was compacted, but its count of saves since the last compaction "
                       "could not be reset.");

    static inline const QString kServerText =
        QStringLiteral("The database is kept on a database server, which looks after its own storage. "
                       "There is nothing for Tavimetra to compact.");

    enum class Step {
        CopyWritten, // the compacted copy exists under its new name
        BackupKept,  // the copy is checked and is now the backup
    };
    // Called after each step; a test seam. Whatever it throws fails the compaction there.
    using StepDone = std::function<void(Step step, const QString &file)>;

    CompactDB(const ProgramFolder &folder, Prompt &prompt);

    QString workFolder() const;
    QString backupPath() const;

    // The work. True when the database in use is now the compacted copy.
    bool run();

    void setStepDone(StepDone stepDone) { mStepDone = std::move(stepDone); }

private:
    void writeCheckedCopy(const QString &database, const QString &copy) const;
    void keepAsBackup(const QString &copy) const;

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    StepDone mStepDone;
};
