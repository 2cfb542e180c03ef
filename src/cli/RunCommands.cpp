// save-run, open-run and runs: runs of a database (a file or a server) by folder and name;
// copy-db: a database file onto a server.
#include "cli/CliCommand.h"

#include "reports/PlatesJson.h"
#include "reports/PlatesJsonWriter.h"
#include "store/DatabaseCopy.h"
#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/NamedRunStore.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

// The options, each required; a message naming the first one missing otherwise.
bool required(const CliOptions &options, const QStringList &names, const QString &command, CliContext &context,
              int &exit)
{
    if (!options.problem().isEmpty()) {
        exit = cliError(context, command + QStringLiteral(": ") + options.problem());
        return false;
    }
    for (const QString &name : names) {
        if (options.value(name).isEmpty()) {
            exit = cliError(context, command + QStringLiteral(": --") + name + QStringLiteral(" is required"));
            return false;
        }
    }
    return true;
}

int saveRun(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {QStringLiteral("replace")});
    int exit = 0;
    if (!required(options, {"db", "folder", "run-name", "plates"}, QStringLiteral("save-run"), context, exit))
        return exit;
    QString error;
    const std::optional<RecordSet> plates = PlatesJson::readFile(options.value("plates"), &error);
    if (!plates)
        return cliError(context, QStringLiteral("save-run: ") + error);
    try {
        const DbConnection db(options.value("db"));
        const NamedRunStore::Saved saved =
            NamedRunStore(db).save(options.value("folder"), options.value("run-name"), *plates, options.has("replace"),
                                   options.value("reason"));
        QJsonArray plateIds;
        for (int id : saved.plateIDs)
            plateIds.append(id);
        printJson(context, QJsonObject{{QStringLiteral("runId"), saved.runID}, {QStringLiteral("plateIds"), plateIds}});
        return 0;
    } catch (const NamedRunStore::RunExists &e) {
        return cliError(context, QStringLiteral("save-run: ") + QString::fromStdString(e.what()));
    } catch (const NamedRunStore::ReasonRequired &e) {
        return cliError(context, QStringLiteral("save-run: nothing was saved: ") + QString::fromStdString(e.what()));
    } catch (const DatabaseError &e) {
        return cliError(context, QStringLiteral("save-run: nothing was saved: ") + e.message());
    }
}

int openRun(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    int exit = 0;
    if (!required(options, {"db", "folder", "run-name"}, QStringLiteral("open-run"), context, exit))
        return exit;
    try {
        const DbConnection db(options.value("db"));
        printJson(context,
                  PlatesJsonWriter::toJson(NamedRunStore(db).open(options.value("folder"), options.value("run-name"))));
        return 0;
    } catch (const DatabaseError &e) {
        return cliError(context, QStringLiteral("open-run: ") + e.message());
    }
}

int runs(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    int exit = 0;
    if (!required(options, {"db"}, QStringLiteral("runs"), context, exit))
        return exit;
    try {
        const DbConnection db(options.value("db"));
        QJsonArray folders;
        for (const NamedRunStore::Folder &folder : NamedRunStore(db).folders()) {
            QJsonArray runList;
            for (int i = 0; i < folder.runIDs.size(); ++i)
                runList.append(QJsonObject{{QStringLiteral("runId"), folder.runIDs[i]},
                                           {QStringLiteral("name"), folder.runNames[i]}});
            folders.append(QJsonObject{{QStringLiteral("folderId"), folder.id},
                                       {QStringLiteral("name"), folder.name},
                                       {QStringLiteral("runs"), runList}});
        }
        printJson(context, QJsonObject{{QStringLiteral("folders"), folders}});
        return 0;
    } catch (const DatabaseError &e) {
        return cliError(context, QStringLiteral("runs: ") + e.message());
    }
}

int copyDb(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    int exit = 0;
    if (!required(options, {"from", "to"}, QStringLiteral("copy-db"), context, exit))
        return exit;
    try {
        const DatabaseCopy::Counts counts = DatabaseCopy::copy(options.value("from"), options.value("to"));
        printJson(context, QJsonObject{{QStringLiteral("folders"), counts.folders},
                                       {QStringLiteral("runs"), counts.runs},
                                       {QStringLiteral("plates"), counts.plates},
                                       {QStringLiteral("groups"), counts.groups},
                                       {QStringLiteral("technicians"), counts.technicians},
                                       {QStringLiteral("readers"), counts.readers}});
        return 0;
    } catch (const DatabaseError &e) {
        return cliError(context, QStringLiteral("copy-db: ") + e.message());
    }
}

const CliCommandRegistration copyRegistration("copy-db", "copy-db --from FILE --to URI", copyDb);
const CliCommandRegistration saveRegistration(
    "save-run", "save-run --db FILE|URI --folder NAME --run-name NAME --plates PLATES.json [--replace [--reason TEXT]]",
    saveRun);
const CliCommandRegistration openRegistration("open-run", "open-run --db FILE|URI --folder NAME --run-name NAME",
                                              openRun);
const CliCommandRegistration runsRegistration("runs", "runs --db FILE|URI", runs);

} // namespace
