// tavimetra-cli kit NAME [--version V]: the answers of one kit, as the plate flow asks
// them, keyed by operation name. Operations that need a sample's figures (mathResults,
// getCalculationRatio, getCalculationRatioValue) are answered by "classify", and
// validateTest by "evaluate". An operation the kit does not have (the Generic kit has no
// isTestCurrent, getCalculationRatioCriticalControl or getCalculationRatioValue) is left out.

#include "cli/CliCommand.h"
#include "cli/CliKitArguments.h"
#include "cli/CliPrompt.h"

#include "evaluation/clsTests.h"

#include <QJsonObject>

#include <functional>
#include <utility>
#include <vector>

namespace {

int kitCommand(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    if (!options.problem().isEmpty())
        return cliError(context, options.problem());
    if (options.positional().size() != 1)
        return cliError(context, QStringLiteral("usage: tavimetra-cli kit NAME [--version V]"));
    const QString name = options.positional().first();
    const QString version = options.value(QStringLiteral("version"));
    const QString problem = checkKitArguments(name, version);
    if (!problem.isEmpty())
        return cliError(context, problem);

    CliPrompt prompt;
    const clsTests tests(prompt);
    using Answer = std::function<QJsonValue()>;
    const std::vector<std::pair<const char *, Answer>> operations = {
        {"isTestCurrent", [&] { return QJsonValue(tests.isTestCurrent(name, version)); }},
        {"getCriticalControl", [&] { return QJsonValue(tests.getCriticalControl(name, version)); }},
        {"getCriticalControlHeader", [&] { return QJsonValue(tests.getCriticalControlHeader(name, version)); }},
        {"getCalculationRatioHeader", [&] { return QJsonValue(tests.getCalculationRatioHeader(name, version)); }},
        {"getCalculationRatioCriticalControl",
         [&] { return QJsonValue(tests.getCalculationRatioCriticalControl(name, version)); }},
        {"getCatNo", [&] { return QJsonValue(tests.getCatNo(name, version)); }},
        {"getMaxFilter", [&] { return QJsonValue(tests.getMaxFilter(name, version)); }},
        {"getMinFilter", [&] { return QJsonValue(tests.getMinFilter(name, version)); }},
        {"getMaxVariation", [&] { return QJsonValue(tests.getMaxVariation(name, version)); }},
        {"getMinimumAux", [&] { return QJsonValue(tests.getMinimumAux(name, version)); }},
        {"getMinimumBlanks", [&] { return QJsonValue(tests.getMinimumBlanks(name, version)); }},
        {"getMinimumNC", [&] { return QJsonValue(tests.getMinimumNC(name, version)); }},
        {"getMinimumPC", [&] { return QJsonValue(tests.getMinimumPC(name, version)); }},
        {"getRecommendedAux", [&] { return QJsonValue(tests.getRecommendedAux(name, version)); }},
        {"getRecommendedBlanks", [&] { return QJsonValue(tests.getRecommendedBlanks(name, version)); }},
        {"getRecommendedNC", [&] { return QJsonValue(tests.getRecommendedNC(name, version)); }},
        {"getRecommendedPC", [&] { return QJsonValue(tests.getRecommendedPC(name, version)); }},
        {"getTestName", [&] { return QJsonValue(tests.getTestName(name, version)); }},
    };

    QJsonObject out;
    for (const auto &[operation, answer] : operations) {
        try {
            out.insert(QString::fromLatin1(operation), answer());
        } catch (const MissingKitOperation &) {
            // Not an operation of this kit.
        }
    }
    printJson(context, out);
    return 0;
}

const CliCommandRegistration registration("kit", "kit NAME [--version V]", &kitCommand);

} // namespace
