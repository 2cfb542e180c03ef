#include "tracking/TrackRequest.h"

#include "evaluation/clsTests.h"
#include "reports/ReportSelection.h"
#include "store/PlateRows.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QMap>

namespace {

const QStringList kFlags = {QStringLiteral("no-stddev")};
const QStringList kValueOptions = {QStringLiteral("db"),   QStringLiteral("test"), QStringLiteral("lot"),
                                   QStringLiteral("tech"), QStringLiteral("from"), QStringLiteral("to"),
                                   QStringLiteral("x"),    QStringLiteral("out")};

QJsonValue jsonOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDate: return value.toDate().toString(PlateRows::kDateFormat);
    case QMetaType::QTime: return value.toTime().toString(PlateRows::kTimeFormat);
    default: return value.isNull() ? QJsonValue() : QJsonValue(value.toString());
    }
}

} // namespace

std::optional<QDate> TrackRequest::parseDate(const QString &text)
{
    const QStringList parts = text.split(u'/');
    if (parts.size() != 3)
        return std::nullopt;
    return ReportSelection::dateFromParts(parts[0], parts[1], parts[2]);
}

std::optional<TrackRequest> TrackRequest::parse(const QStringList &args, QString *error)
{
    auto fail = [error](const QString &why) -> std::optional<TrackRequest> {
        if (error)
            *error = why;
        return std::nullopt;
    };

    QMap<QString, QString> values;
    bool noStdDev = false;
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args[i];
        if (!a.startsWith(QStringLiteral("--")))
            return fail(QStringLiteral("unexpected argument '%1'").arg(a));
        const QString name = a.mid(2);
        if (kFlags.contains(name)) {
            noStdDev = true;
        } else if (kValueOptions.contains(name)) {
            if (i + 1 >= args.size())
                return fail(QStringLiteral("option --%1 needs a value").arg(name));
            values.insert(name, args[++i]);
        } else {
            return fail(QStringLiteral("unknown option --%1").arg(name));
        }
    }
    for (const char *required : {"db", "test", "from", "to", "out"}) {
        if (!values.contains(QString::fromLatin1(required)))
            return fail(QStringLiteral("option --%1 is required").arg(QString::fromLatin1(required)));
    }

    TrackRequest request;
    request.databasePath = values.value(QStringLiteral("db"));
    request.outPath = values.value(QStringLiteral("out"));
    TrackingCriteria &c = request.criteria;
    c.testName = values.value(QStringLiteral("test"));
    if (c.testName == u"Generic" || !clsTests::allTestNames().contains(c.testName))
        return fail(QStringLiteral("\"%1\" is not a test kit that can be tracked").arg(c.testName));
    if (values.contains(QStringLiteral("lot")))
        c.lotNumber = values.value(QStringLiteral("lot"));
    if (values.contains(QStringLiteral("tech")))
        c.techName = values.value(QStringLiteral("tech"));

    const std::optional<QDate> from = parseDate(values.value(QStringLiteral("from")));
    const std::optional<QDate> to = parseDate(values.value(QStringLiteral("to")));
    if (!from)
        return fail(QStringLiteral("--from \"%1\" is not a date (M/D/YYYY)").arg(values.value(QStringLiteral("from"))));
    if (!to)
        return fail(QStringLiteral("--to \"%1\" is not a date (M/D/YYYY)").arg(values.value(QStringLiteral("to"))));
    if (*from > *to)
        return fail(QStringLiteral("The date range is invalid: --from is after --to"));
    c.start = *from;
    c.end = *to;

    TrackingChartOptions &chart = request.chart;
    chart.stdDev = !noStdDev;
    if (values.contains(QStringLiteral("x"))) {
        chart.plateName = false;
        const QStringList names = values.value(QStringLiteral("x")).split(u',', Qt::SkipEmptyParts);
        for (const QString &raw : names) {
            const QString name = raw.trimmed();
            if (name == u"plate")
                chart.plateName = true;
            else if (name == u"run")
                chart.runName = true;
            else if (name == u"date")
                chart.date = true;
            else if (name == u"time")
                chart.time = true;
            else
                return fail(QStringLiteral("--x: \"%1\" is none of plate, run, date, time").arg(name));
        }
        if (chart.numChecked() == 0)
            return fail(QStringLiteral("--x must name at least one of plate, run, date, time"));
    }
    return request;
}

QJsonArray TrackRequest::rowsJson(const RecordSet &table)
{
    RecordSet rows = copyRecordset(table);
    QJsonArray list;
    for (rows.moveFirst(); !rows.eof(); rows.moveNext()) {
        QJsonObject row;
        for (const QString &field : rows.fieldNames())
            row.insert(field, jsonOf(rows.value(field)));
        list.append(row);
    }
    return list;
}
