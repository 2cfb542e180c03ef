#include "store/DatabaseCheck.h"

#include "platform/Prompt.h"
#include "store/DatabaseError.h"
#include "store/DatabaseUpgrade.h"
#include "store/DatabaseUseLock.h"
#include "store/DbConnection.h"
#include "store/ProgramFolder.h"
#include "store/SettingsFile.h"

namespace {

const QString kInUseAtStartText =
    QStringLiteral("Could not start Tavimetra.  The database is in use by another program.");
const QString kNothingChangedText =
    QStringLiteral("Nothing was changed.  Please start Tavimetra again once the other program has finished.");

// Opens the file for writing and reads from it, before anything judges it: a save that a
// crash left unfinished is rolled back here, which a read-only look can't do, so that a
// whole database never looks corrupt. False only when another program holds it; any other
// failure is left to the checks that follow.
bool recoverForChecks(const QString &path)
{
    try {
        const DbConnection db(path);
        db.scalar(QStringLiteral("SELECT COUNT(*) FROM MiscSettings"));
    } catch (const DatabaseError &e) {
        return !e.isInUse();
    }
    return true;
}

void tellInUse(Prompt &prompt)
{
    prompt.message(kInUseAtStartText + kCrLf + kNothingChangedText);
}

bool offerUpgrade(const ProgramFolder &folder, Prompt &prompt)
{
    const MsgAnswer answer =
        prompt.ask(QStringLiteral("You currently have an older (1st generation) Tavimetra database.") + kCrLf + kCrLf +
                       QStringLiteral("In order to run this version of Tavimetra, your database must be "
                                      "upgraded.") +
                       kCrLf + QStringLiteral("Proceed with upgrade?"),
                   QStringLiteral("Upgrade Database?"), MsgButtons::YesNo, MsgIcon::None);
    if (answer != MsgAnswer::Yes) {
        prompt.message(QStringLiteral("Tavimetra cannot start because the database must be upgraded.") + kCrLf +
                           QStringLiteral("If you have received this message in error, please contact "
                                          "Qorn."),
                       QStringLiteral("Cannot Start Tavimetra."));
        return false;
    }

    // Nothing else may have the file open while it is upgraded, or put back.
    const DatabaseUseLock exclusive(getDatabasePath(folder), DatabaseUseLock::Kind::Exclusive,
                                    DbConnection::busyTimeoutMs());
    if (!exclusive.isHeld()) {
        tellInUse(prompt);
        return false;
    }

    if (!backupForUpgrade(folder)) {
        prompt.message(QStringLiteral("Could not back the database up.  The database will not "
                                      "be upgraded.") +
                       kCrLf + QStringLiteral("Please contact Qorn."));
        return false;
    }

    const int failure = upgradeDatabase(getDatabasePath(folder));
    if (failure == 0) {
        prompt.message(QStringLiteral("The database has been upgraded.  Click OK to start "
                                      "Tavimetra."),
                       QStringLiteral("Database successfully upgraded."));
        return true;
    }

    prompt.message(QStringLiteral("Error: ") + QString::number(failure) + kCrLf +
                   QStringLiteral("An error occurred while upgrading the database.  Please "
                                  "contact Qorn for help."));
    if (!restoreUpgradeBackup(folder)) {
        prompt.message(QStringLiteral("Could not restore the backup database.") + kCrLf +
                       QStringLiteral("Please contact Qorn."));
    }
    return false;
}

// A server database is not upgraded from the 1st generation: the first connection makes
// an empty one ready, and refuses one it can't use.
bool checkServer(const QString &uri, Prompt &prompt)
{
    try {
        const DbConnection db(uri);
        return true;
    } catch (const DatabaseError &e) {
        prompt.message(QStringLiteral("Could not start Tavimetra.  The database on the server can't be used.") + kCrLf +
                           kCrLf + e.message(),
                       QStringLiteral("Cannot Start Tavimetra."), MsgIcon::Critical);
        return false;
    }
}

} // namespace

bool checkDatabase(const ProgramFolder &folder, Prompt &prompt)
{
    const QString path = getDatabasePath(folder);
    if (DatabaseLocation::looksLikeServer(path))
        return checkServer(path, prompt);
    if (!recoverForChecks(path)) {
        tellInUse(prompt);
        return false;
    }
    if (!validateDatabase(path, kFirstGeneration, prompt)) {
        prompt.message(QStringLiteral("Could not start Tavimetra.  Database is corrupt or does "
                                      "not exist.") +
                       kCrLf + QStringLiteral("Please contact Qorn."));
        return false;
    }
    if (validateDatabase(path, kCurrentGeneration, prompt))
        return true;
    return offerUpgrade(folder, prompt);
}
