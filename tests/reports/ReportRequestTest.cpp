#include "FakePrompt.h"
#include "QtPrinters.h"
#include "ReportFixtures.h"

#include "reports/PlatesJson.h"
#include "reports/ReportRequest.h"
#include "reports/clsReport.h"

#include <gtest/gtest.h>

#include <QJsonObject>
#include <QTemporaryDir>

namespace {

std::optional<ReportRequest> parseReport(const QStringList &args, QString *error)
{
    return ReportRequest::parse(ReportRequest::Command::Report, args, error);
}

const QStringList kRequired = {"--style", "client", "--plates", "p.json", "--run-name", "Run", "--out", "r.htm"};

} // namespace

TEST(ReportRequest, ReportOptions)
{
    QString error;
    std::optional<ReportRequest> r = parseReport(kRequired, &error);
    ASSERT_TRUE(r) << error.toStdString();
    EXPECT_FALSE(r->analytical);
    EXPECT_TRUE(r->sortByName); // left out: by name
    EXPECT_FALSE(r->separateGroups);
    EXPECT_EQ(r->replicatesMode(), 0);
    EXPECT_EQ(r->outPath, QStringLiteral("r.htm"));

    r = parseReport({"--style", "analytical", "--plates", "p.json", "--run-name", "", "--separate-groups",
                     "--replicates", "--sort", "position", "--plate", "Plate #2", "--group", "Herd A", "--out",
                     "r.htm"},
                    &error);
    ASSERT_TRUE(r) << error.toStdString();
    EXPECT_TRUE(r->analytical);
    EXPECT_TRUE(r->separateGroups);
    EXPECT_EQ(r->replicatesMode(), 1);
    EXPECT_FALSE(r->sortByName);
    EXPECT_EQ(r->plateName, QStringLiteral("Plate #2"));
    EXPECT_EQ(r->groupName, QStringLiteral("Herd A"));
    EXPECT_EQ(r->runName, QString());
}

TEST(ReportRequest, BadOptionsAreNamed)
{
    using C = ReportRequest::Command;
    const struct {
        C command;
        QStringList args;
        const char *problem;
    } cases[] = {
        {C::Report,
         {"--plates", "p.json", "--run-name", "R", "--out", "r.htm"},
         "--style client|analytical is required"},
        {C::Report,
         {"--style", "fancy", "--plates", "p", "--run-name", "R", "--out", "o"},
         "--style must be client or analytical, not \"fancy\""},
        {C::Report, kRequired + QStringList{"--sort", "date"}, "--sort must be position or name, not \"date\""},
        {C::Report, {"--style", "client", "--plates", "p", "--run-name", "R"}, "--out FILE.htm is required"},
        {C::Report, {"--style", "client", "--run-name", "R", "--out", "o"}, "--plates PLATES.json is required"},
        {C::Report, {"--style", "client", "--plates", "p", "--out", "o"}, "--run-name NAME is required"},
        {C::Report, kRequired + QStringList{"--colour", "red"}, "unknown option --colour"},
        {C::Report, kRequired + QStringList{"--plate"}, "option --plate needs a value"},
        {C::Report, kRequired + QStringList{"extra"}, "unexpected argument \"extra\""},
        {C::Report, kRequired + QStringList{"--style", "client"}, "option --style is given twice"},
        {C::ReportRows, {"--plates", "p", "--run-name", "R", "--out", "o"}, "unknown option --out"},
    };
    for (const auto &c : cases) {
        QString error;
        EXPECT_FALSE(ReportRequest::parse(c.command, c.args, &error).has_value()) << c.problem;
        EXPECT_EQ(error, QString::fromUtf8(c.problem));
    }
}

TEST(PlatesJson, ReadsPlateRecordsInTheirStoredForms)
{
    const QByteArray json = QStringLiteral(R"({"plates": [
        {"PlateID": 2, "PlateName": "Plate #2", "RunID": 12345678901, "TestName": "Generic", "LotNumber": "",
         "ExpDate": null, "TimeRead": "14:05:07", "DateRead": "2026-11-24", "samples": "PC¬S1¬", "techname": null}
    ]})")
                                .toUtf8();
    QString error;
    const std::optional<RecordSet> plates = PlatesJson::parse(json, &error);
    ASSERT_TRUE(plates) << error.toStdString();
    ASSERT_EQ(plates->recordCount(), 1);
    EXPECT_EQ(plates->valueAt(0, u"PlateID"), QVariant(2));
    EXPECT_EQ(plates->valueAt(0, u"RunID"), QVariant(qint64(12345678901)));
    EXPECT_EQ(plates->valueAt(0, u"DateRead"), QVariant(QDate(2026, 11, 24)));
    EXPECT_EQ(plates->valueAt(0, u"TimeRead"), QVariant(QTime(14, 5, 7)));
    EXPECT_TRUE(plates->valueAt(0, u"ExpDate").isNull());
    EXPECT_EQ(plates->valueAt(0, u"Samples"), QVariant(QStringLiteral("PC\u00ACS1\u00AC")));
    EXPECT_TRUE(plates->valueAt(0, u"TechName").isNull());
    EXPECT_TRUE(plates->valueAt(0, u"Groups").isNull()); // left out
    EXPECT_EQ(plates->valueAt(0, u"LotNumber"), QVariant(QString()));
}

TEST(PlatesJson, BadInputIsNamedByItsPlace)
{
    auto problem = [](const char *json) {
        QString error;
        EXPECT_FALSE(PlatesJson::parse(QByteArray(json), &error).has_value()) << json;
        return error;
    };
    EXPECT_TRUE(problem("{\"plates\": [").startsWith(QStringLiteral("not valid JSON at offset")));
    EXPECT_EQ(problem("[1, 2]"), QStringLiteral("expected an object {\"plates\": [...]}"));
    EXPECT_EQ(problem("{\"plates\": [3]}"), QStringLiteral("plates[0] is not an object"));
    EXPECT_EQ(problem("{\"plates\": [{}, {\"Colour\": \"red\"}]}"),
              QStringLiteral("plates[1]: unknown field \"Colour\""));
    EXPECT_EQ(problem("{\"plates\": [{\"DateRead\": \"11/24/2026\"}]}"),
              QStringLiteral("plates[0].DateRead is not a date of the form YYYY-MM-DD"));
    EXPECT_EQ(problem("{\"plates\": [{\"TimeRead\": \"2 PM\"}]}"),
              QStringLiteral("plates[0].TimeRead is not a time of the form HH:MM:SS"));
    EXPECT_EQ(problem("{\"plates\": [{\"PlateID\": 1.5}]}"), QStringLiteral("plates[0].PlateID is not a whole number"));
    EXPECT_EQ(problem("{\"plates\": [{\"PlateID\": 100008213134}]}"),
              QStringLiteral("plates[0].PlateID is out of range"));
    EXPECT_EQ(problem("{\"plates\": [{\"ODs\": 7}]}"), QStringLiteral("plates[0].ODs is not a text"));
    QString error;
    EXPECT_FALSE(PlatesJson::readFile(QStringLiteral("/no/such/plates.json"), &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("/no/such/plates.json: ")));
}

TEST(PlatesJson, RowsAsJsonKeepTableOrderAndTheStoredForms)
{
    QTemporaryDir dir;
    FakePrompt prompt;
    clsReport report(prompt, dir.filePath(QStringLiteral("r.htm")));
    const RecordSet rows =
        report.buildResultRows(fixtures::springRun(), QStringLiteral("Spring Run"), 0, QString(), QString());
    const QJsonArray json = ReportRequest::rowsToJson(rows);
    ASSERT_EQ(json.size(), 6);
    const QJsonObject first = json[0].toObject();
    EXPECT_EQ(first.value(QStringLiteral("DateRead")).toString(), QStringLiteral("2026-11-23"));
    EXPECT_EQ(first.value(QStringLiteral("TimeRead")).toString(), QStringLiteral("09:30:00"));
    EXPECT_EQ(first.value(QStringLiteral("NumericSample")).toDouble(), 6.0);
    EXPECT_EQ(first.value(QStringLiteral("CriticalOD")).toString(), QStringLiteral("0.950"));
    EXPECT_EQ(first.keys().size(), 14);

    const RecordSet one =
        report.buildResultRows(fixtures::springRun(), QStringLiteral("R"), 0, QStringLiteral("Plate #2"), QString());
    EXPECT_TRUE(ReportRequest::rowsToJson(one)[0].toObject().value(QStringLiteral("NumericSample")).isNull());
}
