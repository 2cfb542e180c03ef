#include "reports/ReportRequest.h"

#include "core/RecordSet.h"
#include "reports/clsReport.h"

#include <QDate>
#include <QJsonObject>
#include <QJsonValue>
#include <QTime>

std::optional<ReportRequest> ReportRequest::parse(Command command, const QStringList &args, QString *error)
{
    auto fail = [error](const QString &message) {
        if (error)
            *error = message;
        return std::optional<ReportRequest>();
    };
    const bool report = command == Command::Report;
    QStringList flags = {QStringLiteral("replicates")};
    QStringList valued = {QStringLiteral("plates"), QStringLiteral("run-name"), QStringLiteral("plate"),
                          QStringLiteral("group")};
    if (report) {
        flags << QStringLiteral("separate-groups");
        valued << QStringLiteral("style") << QStringLiteral("sort") << QStringLiteral("out");
    }

    ReportRequest request;
    QString style;
    QString sort;
    QStringList seen;
    for (int i = 0; i < args.size(); ++i) {
        const QString &arg = args[i];
        if (!arg.startsWith(QStringLiteral("--")))
            return fail(QStringLiteral("unexpected argument \"%1\"").arg(arg));
        const QString name = arg.mid(2);
        if (seen.contains(name))
            return fail(QStringLiteral("option --%1 is given twice").arg(name));
        seen << name;
        if (flags.contains(name)) {
            if (name == u"replicates")
                request.replicates = true;
            else
                request.separateGroups = true;
            continue;
        }
        if (!valued.contains(name))
            return fail(QStringLiteral("unknown option --%1").arg(name));
        if (i + 1 >= args.size())
            return fail(QStringLiteral("option --%1 needs a value").arg(name));
        const QString value = args[++i];
        if (name == u"plates")
            request.platesPath = value;
        else if (name == u"run-name")
            request.runName = value;
        else if (name == u"plate")
            request.plateName = value;
        else if (name == u"group")
            request.groupName = value;
        else if (name == u"style")
            style = value;
        else if (name == u"sort")
            sort = value;
        else
            request.outPath = value;
    }

    if (request.platesPath.isEmpty())
        return fail(QStringLiteral("--plates PLATES.json is required"));
    if (!seen.contains(QStringLiteral("run-name")))
        return fail(QStringLiteral("--run-name NAME is required"));
    if (report) {
        if (style == u"client")
            request.analytical = false;
        else if (style == u"analytical")
            request.analytical = true;
        else if (style.isEmpty())
            return fail(QStringLiteral("--style client|analytical is required"));
        else
            return fail(QStringLiteral("--style must be client or analytical, not \"%1\"").arg(style));
        if (sort.isEmpty() || sort == u"name")
            request.sortByName = true;
        else if (sort == u"position")
            request.sortByName = false;
        else
            return fail(QStringLiteral("--sort must be position or name, not \"%1\"").arg(sort));
        if (request.outPath.isEmpty())
            return fail(QStringLiteral("--out FILE.htm is required"));
    }
    return request;
}

QJsonArray ReportRequest::rowsToJson(const RecordSet &rows)
{
    QJsonArray array;
    for (int r = 0; r < rows.recordCount(); ++r) {
        QJsonObject object;
        for (const QString &field : clsReport::resultFields()) {
            const QVariant value = rows.valueAt(r, field);
            QJsonValue json;
            if (value.isNull())
                json = QJsonValue(QJsonValue::Null);
            else if (value.typeId() == QMetaType::QDate)
                json = value.toDate().toString(QStringLiteral("yyyy-MM-dd"));
            else if (value.typeId() == QMetaType::QTime)
                json = value.toTime().toString(QStringLiteral("HH:mm:ss"));
            else if (value.typeId() == QMetaType::ULongLong || value.typeId() == QMetaType::LongLong ||
                     value.typeId() == QMetaType::Int)
                json = value.toDouble();
            else
                json = value.toString();
            object.insert(field, json);
        }
        array.append(object);
    }
    return array;
}
