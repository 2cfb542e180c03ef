// The command-line companion's evaluation commands, run as the built program on files
// written here: evaluate, kit and classify, their JSON, and their answers to bad input.

#include "QtPrinters.h"

#include "core/Wells.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <functional>
#include <string>

namespace {

struct CliRun {
    int exitCode = -1;
    QByteArray out;
    QString err;
    QJsonObject json() const { return QJsonDocument::fromJson(out).object(); }
};

// The program is built beside the test programs' folder.
QString cliPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../tavimetra-cli");
}

CliRun runCli(const QStringList &args)
{
    CliRun run;
    if (!QFileInfo::exists(cliPath())) {
        ADD_FAILURE() << "tavimetra-cli is not built at " << cliPath().toStdString();
        return run;
    }
    QProcess process;
    process.start(cliPath(), args);
    if (!process.waitForFinished(60000)) {
        ADD_FAILURE() << "tavimetra-cli did not finish: " << args.join(u' ').toStdString();
        process.kill();
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = process.readAllStandardOutput();
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

int at(const char *well)
{
    return wells::index(well[0] - 'A' + 1, std::stoi(well + 1));
}

// A read plate: JMV v2 (filter 450) with PC A1..D1 (D1 far off), NC E1 F1, a blank of 0.2
// in G1, S1 in A2 above the PC mean and S2 in B2 below it; every other well reads 0.05.
QJsonObject jmvPlate()
{
    QJsonArray samples, ods;
    for (int k = 0; k < wells::kCount; ++k) {
        samples.append(QString());
        ods.append(0.05);
    }
    auto put = [&](const char *well, const char *sample, double od) {
        samples[at(well)] = QString::fromLatin1(sample);
        ods[at(well)] = od;
    };
    put("A1", "PC", 1.0);
    put("B1", "PC", 1.0);
    put("C1", "PC", 1.0);
    put("D1", "PC", 3.0);
    put("E1", "NC", 0.1);
    put("F1", "NC", 0.1);
    put("G1", "BLANK", 0.2);
    put("A2", "S1", 1.2);
    put("B2", "S2", 0.3);
    return QJsonObject{{QStringLiteral("test"), QStringLiteral("JMV v2 6615.01-1")},
                       {QStringLiteral("lastVersionValidated"), QString()},
                       {QStringLiteral("filter"), 450},
                       {QStringLiteral("expDate"), QStringLiteral("2026-11-23")},
                       {QStringLiteral("dateRead"), QStringLiteral("2026-11-23")},
                       {QStringLiteral("samples"), samples},
                       {QStringLiteral("rawODs"), ods}};
}

class CliEvaluate : public ::testing::Test {
protected:
    QString write(const QByteArray &contents)
    {
        const QString path = mDir.filePath(QStringLiteral("plate%1.json").arg(++mFiles));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return path;
    }
    QString write(const QJsonObject &plate) { return write(QJsonDocument(plate).toJson()); }

    QTemporaryDir mDir;
    int mFiles = 0;
};

} // namespace

TEST_F(CliEvaluate, PrintsTheVerdictODsResultsAndTheBoxesShown)
{
    const CliRun run = runCli({QStringLiteral("evaluate"), write(jmvPlate())});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.isEmpty());
    const QJsonObject out = run.json();
    EXPECT_TRUE(out.value(u"passed").toBool());
    EXPECT_EQ(out.value(u"validation").toString(),
              QStringLiteral("TEST VALIDATION PASSED\r\nNeg Control (AVG): 0.100\r\nPos Control (AVG): 1.000"));
    EXPECT_EQ(out.value(u"lastVersionValidated").toString(), QStringLiteral("1.5.4"));
    QStringList titles;
    for (const QJsonValue &box : out.value(u"messages").toArray())
        titles << box.toObject().value(u"title").toString();
    EXPECT_EQ(titles,
              (QStringList{QStringLiteral("Abnormal Blanks Excluded"), QStringLiteral("Abnormal Controls Detected")}));

    // The blank is excluded, so nothing is subtracted; D1 is the PC far off.
    EXPECT_EQ(out.value(u"ods").toArray()[at("A2")].toString(), QStringLiteral("1.200"));
    EXPECT_EQ(out.value(u"results").toArray()[at("B2")].toString(), QStringLiteral("NEG"));
    EXPECT_EQ(out.value(u"flags").toArray()[at("D1")].toInt(), 0);
    EXPECT_EQ(out.value(u"flags").toArray().size(), 96);
}

// --- Bad input -------------------------------------------------------------------------------------

struct BadPlate {
    const char *name;
    std::function<QByteArray()> contents;
    const char *message; // a part of what stderr says
};

QByteArray withField(const char *key, const QJsonValue &value)
{
    QJsonObject plate = jmvPlate();
    if (value.isUndefined())
        plate.remove(QString::fromLatin1(key));
    else
        plate.insert(QString::fromLatin1(key), value);
    return QJsonDocument(plate).toJson();
}

QByteArray withWell(const char *key, const char *well, const QJsonValue &value)
{
    QJsonArray list = jmvPlate().value(QString::fromLatin1(key)).toArray();
    if (list.isEmpty())
        for (int k = 0; k < wells::kCount; ++k)
            list.append(1);
    list[at(well)] = value;
    return withField(key, list);
}

TEST_F(CliEvaluate, BadInputIsToldOnStderrWithExitCode2)
{
    const BadPlate cases[] = {
        BadPlate{"NotJson", [] { return QByteArray("{\"test\": "); }, "not valid JSON"},
        BadPlate{"NotAnObject", [] { return QByteArray("[1, 2]"); }, "must be a JSON object"},
        BadPlate{"UnknownTest", [] { return withField("test", QStringLiteral("jmv 420")); },
                 "unknown test \"jmv 420\""},
        BadPlate{"NoTest", [] { return withField("test", QJsonValue::Undefined); }, "\"test\" must be"},
        BadPlate{"ShortODs",
                 [] {
                     return withField("rawODs", QJsonArray{0.1, 0.2});
                 },
                 "\"rawODs\" has 2 values; a plate has 96 wells"},
        BadPlate{"NoSamples", [] { return withField("samples", QJsonValue::Undefined); },
                 "\"samples\" must be an array of 96 values"},
        BadPlate{"TextOD", [] { return withWell("rawODs", "C3", QStringLiteral("0.1")); },
                 "\"rawODs\"[18] (C3) must be a number"},
        BadPlate{"FlagOutOfRange", [] { return withWell("flags", "A1", 3); }, "\"flags\"[0] (A1) must be 0, 1 or 2"},
        BadPlate{"BadDate", [] { return withField("expDate", QStringLiteral("11/23/2026")); },
                 "\"expDate\" must be a date \"YYYY-MM-DD\" or null"},
        BadPlate{"FractionalFilter", [] { return withField("filter", 450.5); }, "\"filter\" must be a whole number"},
        BadPlate{"UnknownField", [] { return withField("fliter", 450); }, "unknown field \"fliter\""},
        BadPlate{"BadVersion", [] { return withField("lastVersionValidated", QStringLiteral("1.x")); },
                 "version \"1.x\" is not a version text"},
        BadPlate{"NoFilterOnAPlateInRange", [] { return withField("filter", QJsonValue::Null); },
                 "\"filter\" is null"}};
    for (const BadPlate &c : cases) {
        SCOPED_TRACE(c.name);
        const CliRun run = runCli({QStringLiteral("evaluate"), write(c.contents())});
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
        EXPECT_TRUE(run.err.startsWith(QStringLiteral("tavimetra-cli: "))) << run.err.toStdString();
        EXPECT_TRUE(run.err.contains(QString::fromLatin1(c.message))) << run.err.toStdString();
        EXPECT_FALSE(run.err.contains(QStringLiteral("Could Not Identify Test Class"))) << run.err.toStdString();
    }
}

// --- kit and classify ---------------------------------------------------------------------------------

TEST(CliKit, AnswersEveryQuestionOfTheKitForThePlatesVersion)
{
    const CliRun run = runCli(
        {QStringLiteral("kit"), QStringLiteral("JMV 420"), QStringLiteral("--version"), QStringLiteral("1.2.0")});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.json().size(), 18);
    EXPECT_FALSE(run.json().value(u"isTestCurrent").toBool(true));
    const CliRun current = runCli({QStringLiteral("kit"), QStringLiteral("JMV 420")});
    EXPECT_TRUE(current.json().value(u"isTestCurrent").toBool(false));
}

QStringList classifyArgs(const char *test, const char *od, const char *pc, const char *nc)
{
    return {QString::fromLatin1(test),   QStringLiteral("--od"),  QString::fromLatin1(od),
            QStringLiteral("--mean-pc"), QString::fromLatin1(pc), QStringLiteral("--mean-nc"),
            QString::fromLatin1(nc)};
}

// The figure and verdict of one sample, and null for a kit without a figure.
TEST(CliClassify, GivesTheVerdictAndFigureOfOneSample)
{
    const QString classify = QStringLiteral("classify");
    QJsonObject out = runCli(QStringList{classify} + classifyArgs("Orvexa 412", "0.8764", "0.2", "1.0")).json();
    EXPECT_EQ(out.value(u"result").toString(), QStringLiteral("NEG"));
    EXPECT_EQ(out.value(u"ratio").toString(), QStringLiteral("12.3%"));
    EXPECT_EQ(out.value(u"ratioValue"), QJsonValue((1 - 0.8764 / 1.0) * 100));
    out = runCli(QStringList{classify} + classifyArgs("Generic", "0.5", "1.0", "0.1")).json();
    EXPECT_EQ(out.value(u"ratio").toString(), QString());
    EXPECT_EQ(out.value(u"ratioValue"), QJsonValue(QJsonValue::Null));
}

TEST(CliArguments, BadOrMissingArgumentsNumbersFilesAndUnknownTestsAreErrors)
{
    struct Case {
        QStringList args;
        const char *message;
        const char *command = "classify";
    };
    const Case cases[] = {
        {{QStringLiteral("Dalvenia 405"), QStringLiteral("--od"), QStringLiteral("0.5")}, "--mean-pc is missing"},
        {classifyArgs("Dalvenia 405", "high", "1.0", "0.1"), "--od must be a number, not \"high\""},
        {classifyArgs("Dalvenia 405", "0.5", "0.3", "0.3"), "divides by zero"},
        {classifyArgs("Orvexa 412", "1e309", "1.0", "1.5"), "--od \"1e309\" is beyond the range of numbers"},
        {classifyArgs("Dalvenia", "0.5", "1.0", "0.1"), "unknown test \"Dalvenia\""},
        {classifyArgs("JMV 420", "0.5", "1.0", "0.1") + QStringList{QStringLiteral("--version")},
         "option --version needs a value"},
        {{QStringLiteral("Orvexa")}, "unknown test \"Orvexa\"", "kit"},
        {{QStringLiteral("/nonexistent/plate.json")}, "/nonexistent/plate.json: cannot read", "evaluate"},
        {{}, "usage: tavimetra-cli evaluate PLATE.json", "evaluate"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.message);
        const CliRun run = runCli(QStringList{QString::fromLatin1(c.command)} + c.args);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_TRUE(run.out.isEmpty());
        EXPECT_TRUE(run.err.contains(QString::fromLatin1(c.message))) << run.err.toStdString();
    }
}
