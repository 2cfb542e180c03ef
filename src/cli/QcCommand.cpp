// tavimetra-cli qc: the quality-control rules over a series of runs given as JSON, or over
// the saved plates of a kit judged against the stored guide sets. Prints the flags as JSON.

#include "cli/CliCommand.h"
#include "cli/CliPrompt.h"

#include "evaluation/clsTests.h"
#include "store/DbConnection.h"
#include "tracking/QcHistory.h"
#include "tracking/QcSeries.h"
#include "tracking/TrackRequest.h"
#include "tracking/WestgardCheck.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace {

int qcSeries(const QString &path, CliContext &context)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return cliError(context, QStringLiteral("qc: can't read %1: %2").arg(path, file.errorString()));
    QString error;
    const std::optional<QcSeries> series = QcSeries::fromJson(file.readAll(), &error);
    if (!series)
        return cliError(context, QStringLiteral("qc: %1: %2").arg(path, error));
    printJson(context, series->flagsJson(WestgardCheck::judge(series->zTable(), series->rules)));
    return 0;
}

int qcDatabase(const CliOptions &options, CliContext &context)
{
    for (const char *required : {"test", "from", "to"}) {
        if (!options.has(QString::fromLatin1(required)))
            return cliError(context, QStringLiteral("qc: option --%1 is required with --db").arg(required));
    }
    const QString path = options.value(QStringLiteral("db"));
    TrackingCriteria criteria;
    criteria.testName = options.value(QStringLiteral("test"));
    if (criteria.testName == u"Generic" || !clsTests::allTestNames().contains(criteria.testName))
        return cliError(context,
                        QStringLiteral("qc: \"%1\" is not a test kit that can be tracked").arg(criteria.testName));
    if (options.has(QStringLiteral("lot")))
        criteria.lotNumber = options.value(QStringLiteral("lot"));
    const std::optional<QDate> from = TrackRequest::parseDate(options.value(QStringLiteral("from")));
    const std::optional<QDate> to = TrackRequest::parseDate(options.value(QStringLiteral("to")));
    if (!from || !to)
        return cliError(context, QStringLiteral("qc: --from and --to must be dates (M/D/YYYY)"));
    if (*from > *to)
        return cliError(context, QStringLiteral("qc: the date range is invalid: --from is after --to"));
    criteria.start = *from;
    criteria.end = *to;
    if (!DatabaseLocation::looksLikeServer(path) && !QFileInfo::exists(path))
        return cliError(context, QStringLiteral("qc: there is no database %1").arg(path));

    CliPrompt prompt;
    DbConnection db(path, DbConnection::Mode::ReadOnly);
    const QcHistory history = QcHistory::gather(db, criteria, prompt);
    db.close();
    if (history.book.isEmpty()) {
        context.err << "tavimetra-cli: qc: the kit " << criteria.testName
                    << " has no guide set, so there is nothing to judge its plates against." << Qt::endl;
        return 1;
    }
    QJsonArray flags;
    for (const QcFlag &flag : history.flags) {
        const TrackedPlate &plate = history.runs[size_t(flag.run)].plate;
        flags.append(QJsonObject{{QStringLiteral("run"), flag.run + 1},
                                 {QStringLiteral("runId"), plate.runID},
                                 {QStringLiteral("plateId"), plate.plateID},
                                 {QStringLiteral("plateName"), plate.plateName},
                                 {QStringLiteral("runName"), plate.runName},
                                 {QStringLiteral("quantity"), history.quantities[flag.quantity]},
                                 {QStringLiteral("rule"), westgard::name(flag.rule)},
                                 {QStringLiteral("reject"), flag.reject}});
    }
    printJson(context, QJsonObject{{QStringLiteral("flags"), flags}});
    return 0;
}

int qc(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    if (!options.problem().isEmpty())
        return cliError(context, QStringLiteral("qc: ") + options.problem());
    if (!options.positional().isEmpty())
        return cliError(context, QStringLiteral("qc: unexpected argument '%1'").arg(options.positional().first()));
    if (options.has(QStringLiteral("series")))
        return qcSeries(options.value(QStringLiteral("series")), context);
    if (options.has(QStringLiteral("db")))
        return qcDatabase(options, context);
    return cliError(context, QStringLiteral("qc: give --series FILE.json, or --db with --test, --from and --to"));
}

const CliCommandRegistration
    registration("qc", "qc --series FILE.json | qc --db PATH --test NAME [--lot L] --from M/D/YYYY --to M/D/YYYY", qc);

} // namespace
