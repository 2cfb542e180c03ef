// tavimetra-cli qc: the quality-control rules over a series of runs given as JSON, or over
// the saved plates of a kit judged against the stored guide sets. Prints the flags as JSON.

#include "cli/CliCommand.h"

#include "tracking/QcSeries.h"
#include "tracking/WestgardCheck.h"

#include <QFile>

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

int qc(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    if (!options.problem().isEmpty())
        return cliError(context, QStringLiteral("qc: ") + options.problem());
    if (!options.positional().isEmpty())
        return cliError(context, QStringLiteral("qc: unexpected argument '%1'").arg(options.positional().first()));
    if (options.has(QStringLiteral("series")))
        return qcSeries(options.value(QStringLiteral("series")), context);
    return cliError(context, QStringLiteral("qc: give --series FILE.json, or --db with --test, --from and --to"));
}

const CliCommandRegistration registration(
    "qc", "qc --series FILE.json | qc --db PATH --test NAME [--lot L] --from M/D/YYYY --to M/D/YYYY", qc);

} // namespace
