#include "tracking/QcSeries.h"

#include "tracking/GuideSet.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonParseError>

#include <cmath>

namespace {

std::optional<QcSeries> failWith(QString *error, const QString &why)
{
    if (error)
        *error = why;
    return std::nullopt;
}

} // namespace

std::optional<QcSeries> QcSeries::fromJson(const QByteArray &json, QString *error)
{
    QJsonParseError parse;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parse);
    if (parse.error != QJsonParseError::NoError)
        return failWith(
            error,
            QStringLiteral("the series is not JSON (%1 at offset %2)").arg(parse.errorString()).arg(parse.offset));
    if (!doc.isObject())
        return failWith(error, QStringLiteral("the series must be a JSON object with \"quantities\""));
    const QJsonObject root = doc.object();

    QcSeries series;
    series.rules = westgard::defaultRules();
    if (root.contains(QStringLiteral("rules"))) {
        const QJsonValue rules = root.value(QStringLiteral("rules"));
        if (!rules.isArray())
            return failWith(error, QStringLiteral("\"rules\" must be a list of rule names"));
        QStringList names;
        for (const QJsonValue &rule : rules.toArray()) {
            if (!rule.isString())
                return failWith(error, QStringLiteral("\"rules\" must be a list of rule names"));
            names << rule.toString();
        }
        QString unknown;
        const std::optional<QList<WestgardRule>> parsed = westgard::fromNames(names, &unknown);
        if (!parsed)
            return failWith(error, westgard::unknownRuleMessage(unknown));
        series.rules = *parsed;
    }

    const QJsonValue quantities = root.value(QStringLiteral("quantities"));
    if (!quantities.isArray() || quantities.toArray().isEmpty())
        return failWith(error, QStringLiteral("\"quantities\" must be a list of at least one quantity"));
    for (const QJsonValue &entry : quantities.toArray()) {
        const int number = int(series.quantities.size()) + 1;
        const QJsonObject object = entry.toObject();
        QcQuantity q;
        q.name = object.value(QStringLiteral("name")).toString();
        if (!entry.isObject() || q.name.isEmpty())
            return failWith(error, QStringLiteral("quantity %1 has no \"name\"").arg(number));
        for (const QcQuantity &other : series.quantities) {
            if (other.name == q.name)
                return failWith(error, QStringLiteral("the quantity \"%1\" is named twice").arg(q.name));
        }
        const QJsonValue mean = object.value(QStringLiteral("mean"));
        const QJsonValue sd = object.value(QStringLiteral("sd"));
        if (!mean.isDouble() || !sd.isDouble())
            return failWith(
                error, QStringLiteral("the quantity \"%1\" needs a \"mean\" and an \"sd\" as numbers").arg(q.name));
        q.mean = mean.toDouble();
        q.sd = sd.toDouble();
        const QString problem = GuideSet::problemWith(q.mean, q.sd);
        if (!problem.isEmpty())
            return failWith(error, QStringLiteral("the quantity \"%1\": %2").arg(q.name, problem));
        const QJsonValue values = object.value(QStringLiteral("values"));
        if (!values.isArray())
            return failWith(
                error, QStringLiteral("the quantity \"%1\" needs \"values\", a list of numbers and nulls").arg(q.name));
        const QJsonArray list = values.toArray();
        for (qsizetype run = 0; run < list.size(); ++run) {
            const QJsonValue v = list.at(run);
            if (v.isNull())
                q.values.emplace_back();
            else if (v.isDouble())
                q.values.emplace_back(v.toDouble());
            else
                return failWith(error, QStringLiteral("the quantity \"%1\", run %2: a value must be a number or null")
                                           .arg(q.name)
                                           .arg(run + 1));
        }
        if (!series.quantities.empty() && q.values.size() != series.quantities.front().values.size())
            return failWith(error, QStringLiteral("the quantities are of unequal lengths: \"%1\" has %2 values, \"%3\" "
                                                  "has %4; every quantity needs one value (or null) per run")
                                       .arg(series.quantities.front().name)
                                       .arg(series.quantities.front().values.size())
                                       .arg(q.name)
                                       .arg(q.values.size()));
        series.quantities.push_back(std::move(q));
    }
    return series;
}

QcZTable QcSeries::zTable() const
{
    QcZTable table;
    for (const QcQuantity &q : quantities) {
        std::vector<std::optional<double>> z;
        z.reserve(q.values.size());
        for (const std::optional<double> &v : q.values)
            z.push_back(v ? std::optional<double>((*v - q.mean) / q.sd) : std::nullopt);
        table.z.push_back(std::move(z));
    }
    return table;
}

QJsonObject QcSeries::flagsJson(const std::vector<QcFlag> &flags) const
{
    QJsonArray list;
    for (const QcFlag &flag : flags) {
        list.append(QJsonObject{{QStringLiteral("run"), flag.run + 1},
                                {QStringLiteral("quantity"), quantities[size_t(flag.quantity)].name},
                                {QStringLiteral("rule"), westgard::name(flag.rule)},
                                {QStringLiteral("reject"), flag.reject}});
    }
    return QJsonObject{{QStringLiteral("flags"), list}};
}
