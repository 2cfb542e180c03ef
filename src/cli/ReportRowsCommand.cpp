#include "cli/CliCommand.h"

#include "cli/StreamPrompt.h"
#include "reports/PlatesJson.h"
#include "reports/ReportRequest.h"
#include "reports/clsReport.h"

#include <QDir>

namespace {

int reportRows(const QStringList &args, CliContext &context)
{
    QString error;
    const std::optional<ReportRequest> request = ReportRequest::parse(ReportRequest::Command::ReportRows, args, &error);
    if (!request)
        return cliError(context, QStringLiteral("report-rows: ") + error);
    const std::optional<RecordSet> plates = PlatesJson::readFile(request->platesPath, &error);
    if (!plates)
        return cliError(context, QStringLiteral("report-rows: ") + error);

    StreamPrompt prompt(context.err);
    // The rows are built without writing a report; the path is never used.
    clsReport maker(prompt, QDir::temp().filePath(QStringLiteral("unused.htm")));
    const RecordSet rows = maker.buildResultRows(*plates, request->runName, request->replicatesMode(),
                                                 request->plateName, request->groupName);
    printJson(context, ReportRequest::rowsToJson(rows));
    return 0;
}

const CliCommandRegistration
    registration("report-rows",
                 "report-rows --plates PLATES.json --run-name NAME [--replicates] [--plate NAME] [--group NAME]",
                 reportRows);

} // namespace
