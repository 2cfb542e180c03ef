// tavimetra-cli evaluate PLATE.json: the evaluation of one read plate, as the main window
// would make it after the read, printed as JSON.
//
// Input, arrays in well order (A1, B1 ... H1, A2 ... H12):
//   {"test": text, "lastVersionValidated": text (optional, empty for a first evaluation),
//    "filter": whole number or null, "expDate": "YYYY-MM-DD" or null,
//    "dateRead": "YYYY-MM-DD" or null (null: today), "samples": [96 texts],
//    "groups": [96 texts] (optional), "rawODs": [96 numbers], "flags": [96 of 0, 1, 2]
//    (optional, all 1)}
// Output:
//   {"passed", "validation" (the boxes beside the sheets), "info" (the Info view's box),
//    "messages": [{"title", "text", "icon"}...] in the order shown, "testName",
//    "lastVersionValidated", "ods": [96 texts], "results": [96 texts], "flags": [96]}

#include "cli/CliCommand.h"
#include "cli/CliKitArguments.h"
#include "cli/CliPrompt.h"

#include "core/LegacyFormat.h"
#include "core/Wells.h"
#include "evaluation/PlateEvaluator.h"
#include "evaluation/clsTests.h"
#include "platform/Clock.h"

#include <QDate>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <array>
#include <cmath>
#include <exception>
#include <optional>

namespace {

// Reading the file: each reader returns an error text, empty when all is well.
class PlateReader {
public:
    explicit PlateReader(const QJsonObject &root) : mRoot(root) {}

    QString read(PlateInput &plate)
    {
        static const QSet<QString> known = {QStringLiteral("test"),     QStringLiteral("lastVersionValidated"),
                                            QStringLiteral("filter"),   QStringLiteral("expDate"),
                                            QStringLiteral("dateRead"), QStringLiteral("samples"),
                                            QStringLiteral("groups"),   QStringLiteral("rawODs"),
                                            QStringLiteral("flags")};
        for (auto it = mRoot.begin(); it != mRoot.end(); ++it) {
            if (!known.contains(it.key()))
                return QStringLiteral("unknown field \"%1\"").arg(it.key());
        }

        const QJsonValue test = mRoot.value(u"test");
        if (!test.isString())
            return QStringLiteral("\"test\" must be the name of a test");
        plate.testName = test.toString();
        if (!clsTests::allTestNames().contains(plate.testName))
            return QStringLiteral("unknown test \"%1\"; the tests are: %2")
                .arg(plate.testName, clsTests::allTestNames().join(QStringLiteral(", ")));

        const QJsonValue version = mRoot.value(u"lastVersionValidated");
        if (!version.isUndefined() && !version.isNull() && !version.isString())
            return QStringLiteral("\"lastVersionValidated\" must be a text such as \"1.5.4\"");
        plate.version = version.toString();
        const QString versionProblem = checkKitArguments(plate.testName, plate.version);
        if (!versionProblem.isEmpty())
            return QStringLiteral("\"lastVersionValidated\": ") + versionProblem;

        const QJsonValue filter = mRoot.value(u"filter");
        if (filter.isUndefined())
            return QStringLiteral("\"filter\" is missing (a wavelength in nm, or null)");
        if (!filter.isNull()) {
            const double nm = filter.toDouble(-1);
            if (!filter.isDouble() || nm < 0 || nm > 32767 || std::floor(nm) != nm)
                return QStringLiteral("\"filter\" must be a whole number of nm or null");
            plate.filter = QString::number(qint64(nm));
        }

        QString problem;
        if (!(problem = date(QStringLiteral("expDate"), plate.expDate)).isEmpty() ||
            !(problem = date(QStringLiteral("dateRead"), plate.dateRead)).isEmpty() ||
            !(problem = texts(QStringLiteral("samples"), true, plate.samples)).isEmpty() ||
            !(problem = texts(QStringLiteral("groups"), false, plate.groups)).isEmpty())
            return problem;

        QJsonArray ods;
        if (!(problem = array(QStringLiteral("rawODs"), true, ods)).isEmpty())
            return problem;
        for (int k = 0; k < wells::kCount; ++k) {
            if (!ods[k].isDouble())
                return QStringLiteral("\"rawODs\"[%1] (%2) must be a number").arg(k).arg(wells::name(k));
            plate.rawODs[k] = ods[k].toDouble();
        }

        QJsonArray flags;
        if (!(problem = array(QStringLiteral("flags"), false, flags)).isEmpty())
            return problem;
        for (int k = 0; k < wells::kCount; ++k) {
            if (flags.isEmpty()) {
                plate.flags[k] = 1;
                continue;
            }
            const double f = flags[k].toDouble(-1);
            if (!flags[k].isDouble() || (f != 0 && f != 1 && f != 2))
                return QStringLiteral("\"flags\"[%1] (%2) must be 0, 1 or 2").arg(k).arg(wells::name(k));
            plate.flags[k] = qint16(f);
        }
        return QString();
    }

private:
    QString array(const QString &key, bool required, QJsonArray &out) const
    {
        const QJsonValue value = mRoot.value(key);
        if (value.isUndefined() && !required)
            return QString();
        if (!value.isArray())
            return QStringLiteral("\"%1\" must be an array of %2 values").arg(key).arg(wells::kCount);
        out = value.toArray();
        if (out.size() != wells::kCount)
            return QStringLiteral("\"%1\" has %2 values; a plate has %3 wells")
                .arg(key)
                .arg(out.size())
                .arg(wells::kCount);
        return QString();
    }

    QString texts(const QString &key, bool required, std::array<QString, wells::kCount> &out) const
    {
        QJsonArray list;
        const QString problem = array(key, required, list);
        if (!problem.isEmpty())
            return problem;
        for (qsizetype k = 0; k < list.size(); ++k) {
            if (!list[k].isString())
                return QStringLiteral("\"%1\"[%2] (%3) must be a text").arg(key).arg(k).arg(wells::name(int(k)));
            out[k] = list[k].toString();
        }
        return QString();
    }

    QString date(const QString &key, QVariant &out) const
    {
        const QJsonValue value = mRoot.value(key);
        if (value.isUndefined() || value.isNull())
            return QString();
        const QDate day = QDate::fromString(value.toString(), Qt::ISODate);
        if (!value.isString() || !day.isValid())
            return QStringLiteral("\"%1\" must be a date \"YYYY-MM-DD\" or null").arg(key);
        out = day;
        return QString();
    }

    QJsonObject mRoot;
};

template <typename Texts> QJsonArray jsonTexts(const Texts &texts)
{
    QJsonArray list;
    for (const QString &t : texts)
        list.append(t);
    return list;
}

// The evaluation the main window would make of the plate after its read.
int evaluate(PlateInput &input, const QString &path, CliContext &context)
{
    input.today = SystemClock().now().date();
    const PlateEvaluation evaluation = PlateEvaluator::evaluate(input);
    CliPrompt prompt;
    for (const ShownMessage &shown : evaluation.messages)
        prompt.message(shown.text, shown.title, shown.icon);
    try {
        if (evaluation.failure)
            std::rethrow_exception(evaluation.failure);
    } catch (const UnknownTestKit &e) {
        return cliError(context, path + QStringLiteral(": unknown test: ") + QString::fromUtf8(e.what()));
    } catch (const std::exception &e) {
        QString message = path + QStringLiteral(": the evaluation stopped: ") + QString::fromUtf8(e.what());
        if (input.filter.isEmpty() && dynamic_cast<const ConversionError *>(&e))
            message += QStringLiteral(" (\"filter\" is null: a read plate's filter is checked against the kit's "
                                      "range unless its ODs are out of range)");
        if (!prompt.boxes().isEmpty())
            message += QStringLiteral("\nboxes shown:\n") + prompt.summary();
        return cliError(context, message);
    }

    QJsonArray flags;
    for (qint16 flag : evaluation.flags)
        flags.append(flag);
    QJsonArray results;
    for (const ResultCell &cell : *evaluation.results)
        results.append(cell.text);
    const QJsonObject out{
        {QStringLiteral("passed"), evaluation.passed},
        {QStringLiteral("validation"), evaluation.validation.value_or(QString())},
        {QStringLiteral("info"), evaluation.info.value_or(QString())},
        {QStringLiteral("messages"), prompt.toJson()},
        {QStringLiteral("testName"), input.testName},
        {QStringLiteral("lastVersionValidated"), evaluation.version},
        {QStringLiteral("ods"), jsonTexts(evaluation.adjustedODs.value_or(std::array<QString, wells::kCount>{}))},
        {QStringLiteral("results"), results},
        {QStringLiteral("flags"), flags},
    };
    printJson(context, out);
    return 0;
}

int evaluateCommand(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    if (!options.problem().isEmpty())
        return cliError(context, options.problem());
    if (options.positional().size() != 1)
        return cliError(context, QStringLiteral("usage: tavimetra-cli evaluate PLATE.json"));
    const QString path = options.positional().first();

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return cliError(context, path + QStringLiteral(": cannot read: ") + file.errorString());
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return cliError(context, path + QStringLiteral(": not valid JSON: %1 at offset %2")
                                            .arg(parseError.errorString())
                                            .arg(parseError.offset));
    if (!doc.isObject())
        return cliError(context, path + QStringLiteral(": the plate must be a JSON object"));

    PlateInput plate;
    const QString problem = PlateReader(doc.object()).read(plate);
    if (!problem.isEmpty())
        return cliError(context, path + QStringLiteral(": ") + problem);
    return evaluate(plate, path, context);
}

const CliCommandRegistration registration("evaluate", "evaluate PLATE.json", &evaluateCommand);

} // namespace
