// tavimetra-cli track: the control report of saved plates. Writes the tracking workbook to
// --out (not opened) and prints the tracking table as JSON rows in table order. The boxes
// of the report go to the error stream; with no plate to report the exit code is 1.

#include "cli/CliCommand.h"
#include "cli/CliPrompt.h"

#include "platform/OoxmlWorkbook.h"
#include "store/DbConnection.h"
#include "tracking/ControlTracking.h"
#include "tracking/TrackControlsLogic.h"
#include "tracking/TrackRequest.h"
#include "tracking/TrackingWorkbook.h"

#include <QDir>
#include <QFileInfo>

namespace {

int track(const QStringList &args, CliContext &context)
{
    QString error;
    const std::optional<TrackRequest> request = TrackRequest::parse(args, &error);
    if (!request)
        return cliError(context, QStringLiteral("track: ") + error);
    if (!DatabaseLocation::looksLikeServer(request->databasePath) && !QFileInfo::exists(request->databasePath))
        return cliError(context, QStringLiteral("track: there is no database %1").arg(request->databasePath));

    CliPrompt prompt;
    DbConnection db(request->databasePath, DbConnection::Mode::ReadOnly);
    const TrackingData data = ControlTracking(prompt).gather(db, request->criteria);
    db.close();
    for (const CliPrompt::Box &box : prompt.boxes())
        context.err << "tavimetra-cli: "
                    << (box.title.isEmpty() ? box.text : box.title + QStringLiteral(": ") + box.text) << Qt::endl;
    if (!data.ok) {
        context.err << "tavimetra-cli: " << TrackControlsLogic::kNoDataTitle << ": " << TrackControlsLogic::kNoDataText
                    << Qt::endl;
        return 1;
    }

    OoxmlWorkbook book;
    TrackingWorkbook::fillWorkbook(book, data, request->chart);
    if (!book.save(request->outPath, &error))
        return cliError(context, QStringLiteral("track: ") + error);
    printJson(context, TrackRequest::rowsJson(data.rows));
    return 0;
}

const CliCommandRegistration registration(
    "track",
    "track --db PATH --test NAME [--lot L] [--tech T] --from M/D/YYYY --to M/D/YYYY [--x plate,run,date,time] "
    "[--no-stddev] --out FILE.xlsx",
    track);

} // namespace
