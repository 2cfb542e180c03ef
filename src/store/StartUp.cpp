#include "store/StartUp.h"

#include "platform/Prompt.h"
#include "store/DatabaseCheck.h"
#include "store/DatabaseError.h"
#include "store/DatabaseLocation.h"
#include "store/DatabaseUpgrade.h"
#include "store/ProgramFolder.h"
#include "store/SettingsFile.h"
#include "store/SqliteWal.h"

bool startProgram(const ProgramFolder &folder, Prompt &prompt)
{
    try {
        folder.seedIfNew();
        checkNewInstall(folder);
    } catch (const DatabaseError &e) {
        prompt.message(QStringLiteral("Could not prepare the program folder ") + folder.path() + QStringLiteral(".") +
                           kCrLf + e.message(),
                       QString(), MsgIcon::Critical);
        return false;
    }
    // A missing settings.txt leaves no path to check: the check's own box says so.
    if (!checkDatabase(folder, prompt))
        return false;
    try {
        renameLegacyKit(folder);
    } catch (const DatabaseError &e) {
        prompt.message(QStringLiteral("Could not update the database: ") + e.message(), QString(), MsgIcon::Critical);
        return false;
    }
    const QString database = getDatabasePath(folder);
    if (!DatabaseLocation::looksLikeServer(database))
        SqliteWal::keepWhileRunning(database);
    return true;
}
