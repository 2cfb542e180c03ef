#include "reports/PlatesJson.h"

#include "store/PlateRows.h"
#include "store/clsPlates.h"

#include <QDate>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTime>

#include <cmath>
#include <limits>

namespace {

enum class Kind { Text, WholeNumber, Date, Time };

Kind kindOf(const QString &field)
{
    if (field == u"PlateID" || field == u"RunID")
        return Kind::WholeNumber;
    if (field == u"ExpDate" || field == u"DateRead")
        return Kind::Date;
    if (field == u"TimeRead")
        return Kind::Time;
    return Kind::Text;
}

// The value of one field, or a message saying what is wrong with it.
std::optional<QVariant> fieldValue(const QString &field, const QJsonValue &value, QString &problem)
{
    if (value.isNull())
        return QVariant();
    switch (kindOf(field)) {
    case Kind::WholeNumber: {
        const double number = value.toDouble(std::nan(""));
        if (!value.isDouble() || number != std::floor(number)) {
            problem = QStringLiteral("is not a whole number");
            return std::nullopt;
        }
        // Plate ids are the database's 32-bit integers; run ids stay exact in a double.
        const bool plateId = field == u"PlateID";
        const double limit = plateId ? double(std::numeric_limits<int>::max()) : 9.0e15;
        if (std::fabs(number) > limit) {
            problem = QStringLiteral("is out of range");
            return std::nullopt;
        }
        return plateId ? QVariant(int(number)) : QVariant(qint64(number));
    }
    case Kind::Date: {
        const QDate date = QDate::fromString(value.toString(), PlateRows::kDateFormat);
        if (!value.isString() || !date.isValid()) {
            problem = QStringLiteral("is not a date of the form YYYY-MM-DD");
            return std::nullopt;
        }
        return date;
    }
    case Kind::Time: {
        const QTime time = QTime::fromString(value.toString(), PlateRows::kTimeFormat);
        if (!value.isString() || !time.isValid()) {
            problem = QStringLiteral("is not a time of the form HH:MM:SS");
            return std::nullopt;
        }
        return time;
    }
    case Kind::Text:
        if (!value.isString()) {
            problem = QStringLiteral("is not a text");
            return std::nullopt;
        }
        return value.toString();
    }
    return std::nullopt;
}

} // namespace

std::optional<RecordSet> PlatesJson::parse(const QByteArray &json, QString *error)
{
    auto fail = [error](const QString &message) {
        if (error)
            *error = message;
        return std::optional<RecordSet>();
    };

    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return fail(
            QStringLiteral("not valid JSON at offset %1: %2").arg(parseError.offset).arg(parseError.errorString()));
    if (!doc.isObject() || !doc.object().value(QStringLiteral("plates")).isArray())
        return fail(QStringLiteral("expected an object {\"plates\": [...]}"));

    RecordSet plates(clsPlates::fieldNames());
    const QJsonArray records = doc.object().value(QStringLiteral("plates")).toArray();
    for (qsizetype i = 0; i < records.size(); ++i) {
        const QString where = QStringLiteral("plates[%1]").arg(i);
        if (!records[i].isObject())
            return fail(where + QStringLiteral(" is not an object"));
        const QJsonObject record = records[i].toObject();
        plates.addNew();
        for (auto it = record.begin(); it != record.end(); ++it) {
            const int index = plates.fieldIndex(it.key());
            if (index < 0)
                return fail(QStringLiteral("%1: unknown field \"%2\"").arg(where, it.key()));
            const QString field = plates.fieldNames().at(index);
            QString problem;
            const std::optional<QVariant> value = fieldValue(field, it.value(), problem);
            if (!value)
                return fail(QStringLiteral("%1.%2 %3").arg(where, it.key(), problem));
            plates.setValue(field, *value);
        }
    }
    plates.moveFirst();
    return plates;
}

std::optional<RecordSet> PlatesJson::readFile(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    QString problem;
    std::optional<RecordSet> plates = parse(file.readAll(), &problem);
    if (!plates && error)
        *error = QStringLiteral("%1: %2").arg(path, problem);
    return plates;
}
