#include "cli/CliCommand.h"

#include "cli/StreamPrompt.h"
#include "reports/PlatesJson.h"
#include "reports/ReportRequest.h"
#include "reports/clsReport.h"

#include <QJsonObject>

namespace {

int report(const QStringList &args, CliContext &context)
{
    QString error;
    const std::optional<ReportRequest> request = ReportRequest::parse(ReportRequest::Command::Report, args, &error);
    if (!request)
        return cliError(context, QStringLiteral("report: ") + error);
    const std::optional<RecordSet> plates = PlatesJson::readFile(request->platesPath, &error);
    if (!plates)
        return cliError(context, QStringLiteral("report: ") + error);

    // Boxes of the report (a plate with too few controls for replicates, an unknown test)
    // become lines on the error stream.
    StreamPrompt prompt(context.err);
    clsReport maker(prompt, request->outPath);
    const bool ok =
        request->analytical
            ? maker.makeAnalyticalReport(*plates, request->separateGroups, request->runName, request->replicatesMode(),
                                         request->sortByName, request->plateName, request->groupName)
            : maker.makeCustomerReport(*plates, request->separateGroups, request->runName, request->replicatesMode(),
                                       request->sortByName, request->plateName, request->groupName);
    printJson(context, QJsonObject{{QStringLiteral("ok"), ok}});
    return 0;
}

const CliCommandRegistration registration(
    "report",
    "report --style client|analytical --plates PLATES.json --run-name NAME [--separate-groups] [--replicates] "
    "[--sort position|name] [--plate NAME] [--group NAME] --out FILE.htm",
    report);

} // namespace
