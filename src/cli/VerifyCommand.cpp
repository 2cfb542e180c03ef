// verify: derives a saved plate's ODs again from the raw data its read kept.
#include "cli/CliCommand.h"

#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "readers/RawReadCheck.h"
#include "readers/ReaderDriver.h"
#include "store/DatabaseError.h"
#include "store/DbConnection.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

// Parsing asks nothing and waits for nothing.
class SilentPrompt : public Prompt {
public:
    void message(const QString &, const QString &, MsgIcon) override {}
    MsgAnswer ask(const QString &, const QString &, MsgButtons, MsgIcon) override { return MsgAnswer::Cancel; }
};

class NoSleeper : public Sleeper {
public:
    void sleep(int) override {}
};

std::optional<qint64> positive(const QString &text)
{
    bool ok = false;
    const qint64 value = text.toLongLong(&ok);
    return ok && value > 0 ? std::optional<qint64>(value) : std::nullopt;
}

int verify(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    if (!options.problem().isEmpty())
        return cliError(context, QStringLiteral("verify: ") + options.problem());
    if (options.value("db").isEmpty() || options.value("plate-id").isEmpty())
        return cliError(context, QStringLiteral("verify: --db and --plate-id are required"));
    const std::optional<qint64> plateID = positive(options.value("plate-id"));
    if (!plateID)
        return cliError(context, QStringLiteral("verify: --plate-id must be a whole number from 1 up, not '%1'")
                                     .arg(options.value("plate-id")));
    std::optional<qint64> runID;
    if (options.has("run-id")) {
        runID = positive(options.value("run-id"));
        if (!runID)
            return cliError(context, QStringLiteral("verify: --run-id must be a whole number from 1 up, not '%1'")
                                         .arg(options.value("run-id")));
    }
    try {
        const DbConnection db(options.value("db"), DbConnection::Mode::ReadOnly);
        SilentPrompt prompt;
        NoSleeper sleeper;
        const RawReadCheck::Result result =
            RawReadCheck::check(db, runID, *plateID, ReaderEnvironment{prompt, sleeper, QString()});
        if (!result.problem.isEmpty())
            return cliError(context, QStringLiteral("verify: ") + result.problem);
        printJson(context,
                  QJsonObject{{QStringLiteral("runId"), result.runID},
                              {QStringLiteral("plateId"), *plateID},
                              {QStringLiteral("readAt"), result.readAt},
                              {QStringLiteral("matches"), result.differingWells.isEmpty()},
                              {QStringLiteral("differingWells"), QJsonArray::fromStringList(result.differingWells)}});
        if (result.differingWells.isEmpty())
            return 0;
        context.err << "verify: the raw data give other ODs in " << result.differingWells.size()
                    << " wells: " << result.differingWells.join(QStringLiteral("; ")) << '\n';
        context.err.flush();
        return 1;
    } catch (const DatabaseError &e) {
        return cliError(context, QStringLiteral("verify: ") + e.message());
    }
}

const CliCommandRegistration registration("verify", "verify --db FILE|URI --plate-id N [--run-id N]", verify);

} // namespace
