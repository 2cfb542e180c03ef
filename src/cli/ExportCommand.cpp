// tavimetra-cli export: the results of saved plates as CSV, JSON or HL7 for a laboratory
// information system, to --out or to standard output. Notes on the plates (left out, kept
// to an older version's rules) and the boxes of the kits go to the error stream.

#include "cli/CliCommand.h"
#include "cli/CliPrompt.h"

#include "platform/Clock.h"
#include "reports/ExportSource.h"
#include "reports/ReportSelection.h"
#include "reports/ResultExport.h"
#include "store/DatabaseError.h"
#include "store/DatabaseLocation.h"
#include "store/DbConnection.h"

#include <QFileInfo>

namespace {

const QString kCommand = QStringLiteral("export: ");

std::optional<QDate> dateArgument(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('/'));
    if (parts.size() != 3)
        return std::nullopt;
    return ReportSelection::dateFromParts(parts[0], parts[1], parts[2]);
}

int exportResults(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {QStringLiteral("no-controls")});
    if (!options.problem().isEmpty())
        return cliError(context, kCommand + options.problem());
    const QString dbPath = options.value("db");
    if (dbPath.isEmpty())
        return cliError(context, kCommand + QStringLiteral("--db is required"));
    const std::optional<ResultExport::Format> format = ResultExport::formatNamed(options.value("format"));
    if (!format)
        return cliError(context, kCommand + QStringLiteral("--format must be csv, csv-semicolon, json or hl7"));
    const bool byRun = options.has("run") && !options.has("plate-id");
    const bool byPlate = options.has("plate-id");
    const bool byDates = options.has("from") || options.has("to");
    if (int(byRun) + int(byPlate) + int(byDates) != 1)
        return cliError(
            context, kCommand + QStringLiteral("choose the plates with one of --run, --plate-id or --from and --to"));
    if (!DatabaseLocation::looksLikeServer(dbPath) && !QFileInfo::exists(dbPath))
        return cliError(context, kCommand + QStringLiteral("there is no database %1").arg(dbPath));

    CliPrompt prompt;
    try {
        const DbConnection db(dbPath, DbConnection::Mode::ReadOnly);
        const ExportSource source(db);
        RecordSet plates;
        if (byPlate) {
            bool ok = false;
            const int id = options.value("plate-id").toInt(&ok);
            if (!ok || id < 1)
                return cliError(
                    context, kCommand + QStringLiteral("--plate-id must be a whole number from 1 to %1").arg(INT_MAX));
            plates = source.plateById(id, options.value("run"), options.value("folder"));
        } else if (byRun) {
            plates = source.runPlates(options.value("run"), options.value("folder"));
        } else {
            const std::optional<QDate> from = dateArgument(options.value("from"));
            const std::optional<QDate> to = dateArgument(options.value("to"));
            if (!from || !to)
                return cliError(context, kCommand + QStringLiteral("--from and --to must be dates as M/D/YYYY"));
            plates = source.datedPlates(*from, *to);
        }
        // A plate asked for by id that was never read is said so, not merely left out.
        const QString plateName = byPlate ? plates.valueAt(0, u"PlateName").toString() : QString();
        const ExportTable table = ExportTable::build(plates, plateName, options.value("group"), source.runNamer(),
                                                     !options.has("no-controls"), prompt);
        const QDateTime now = SystemClock().now();
        for (const CliPrompt::Box &box : prompt.boxes())
            context.err << "tavimetra-cli: "
                        << (box.title.isEmpty() ? box.text : box.title + QStringLiteral(": ") + box.text) << Qt::endl;
        for (const QString &note : table.notes)
            context.err << "tavimetra-cli: " << note << Qt::endl;
        const QString out = options.value("out");
        if (out.isEmpty()) {
            context.out << QString::fromUtf8(ResultExport::encode(table, *format, now));
            context.out.flush();
        } else {
            ResultExport::write(table, *format, now, out);
            context.err << "tavimetra-cli: " << ResultExport::summary(table, *format, out) << Qt::endl;
        }
        return 0;
    } catch (const ExportError &e) {
        return cliError(context, kCommand + e.message());
    } catch (const DatabaseError &e) {
        return cliError(context, kCommand + e.message());
    }
}

const CliCommandRegistration
    registration("export",
                 "export --db DB (--run NAME [--folder F] | --plate-id N [--run NAME] | --from M/D/YYYY --to M/D/YYYY) "
                 "[--group NAME] --format csv|csv-semicolon|json|hl7 [--no-controls] [--out FILE]",
                 exportResults);

} // namespace
