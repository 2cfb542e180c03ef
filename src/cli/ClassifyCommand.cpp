// tavimetra-cli classify NAME --od X --mean-pc P --mean-nc N [--version V]: the verdict of
// one sample well and its figure, as the result sheet and the reports give them. The OD
// reaches the verdict through a 32-bit float, as it does from the OD sheet; the figure is
// computed from the OD as a number, as the reports do. A kit without a figure gives an
// empty "ratio" and a "ratioValue" of -1; the Generic kit has no "ratioValue" at all (null).

#include "cli/CliCommand.h"
#include "cli/CliKitArguments.h"
#include "cli/CliPrompt.h"

#include "core/LegacyFormat.h"
#include "evaluation/clsTests.h"
#include "evaluation/kits/KitMath.h"

#include <QJsonObject>

namespace {

// The value of a numeric option; an error text when it is missing or not a number.
QString numberOption(const CliOptions &options, const char *name, double &out)
{
    const QString key = QString::fromLatin1(name);
    if (!options.has(key))
        return QStringLiteral("--%1 is missing").arg(key);
    const QString text = options.value(key);
    if (legacy::isBeyondRange(text))
        return QStringLiteral("--%1 \"%2\" is beyond the range of numbers (larger than about 1.8e308, or too small "
                              "to be told from 0)")
            .arg(key, text);
    if (!legacy::isNumeric(text))
        return QStringLiteral("--%1 must be a number, not \"%2\"").arg(key, text);
    out = legacy::toDouble(text);
    return QString();
}

int classifyCommand(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    if (!options.problem().isEmpty())
        return cliError(context, options.problem());
    if (options.positional().size() != 1)
        return cliError(context, QStringLiteral("usage: tavimetra-cli classify NAME --od X --mean-pc P --mean-nc N "
                                                "[--version V]"));
    const QString name = options.positional().first();
    const QString version = options.value(QStringLiteral("version"));
    QString problem = checkKitArguments(name, version);
    double od = 0, meanPC = 0, meanNC = 0;
    if (problem.isEmpty())
        problem = numberOption(options, "od", od);
    if (problem.isEmpty())
        problem = numberOption(options, "mean-pc", meanPC);
    if (problem.isEmpty())
        problem = numberOption(options, "mean-nc", meanNC);
    if (!problem.isEmpty())
        return cliError(context, problem);

    CliPrompt prompt;
    const clsTests tests(prompt);
    QJsonObject out;
    try {
        out.insert(QStringLiteral("result"), tests.mathResults(name, version, static_cast<float>(od), meanPC, meanNC));
        out.insert(QStringLiteral("ratio"), tests.getCalculationRatio(name, version, od, meanPC, meanNC));
        try {
            out.insert(QStringLiteral("ratioValue"), tests.getCalculationRatioValue(name, version, od, meanPC, meanNC));
        } catch (const MissingKitOperation &) {
            out.insert(QStringLiteral("ratioValue"), QJsonValue::Null);
        }
    } catch (const KitDivisionByZero &) {
        return cliError(context,
                        QStringLiteral("the kit divides by zero with these means (mean NC %1, mean PC %2)")
                            .arg(options.value(QStringLiteral("mean-nc")), options.value(QStringLiteral("mean-pc"))));
    }
    printJson(context, out);
    return 0;
}

const CliCommandRegistration registration("classify", "classify NAME --od X --mean-pc P --mean-nc N [--version V]",
                                          &classifyCommand);

} // namespace
