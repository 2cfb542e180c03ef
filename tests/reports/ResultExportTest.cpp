// Results leaving for a laboratory information system: the rows (the report's values, the
// controls, the plates that can't go), each format read back by a reader of its own, and
// the command line end to end (HL7 read by python-hl7).
#include "FakePrompt.h"
#include "ReportFixtures.h"
#include "SavedPlates.h"

#include "reports/CsvExport.h"
#include "reports/ExportBuffer.h"
#include "reports/ExportTable.h"
#include "reports/Hl7Export.h"
#include "reports/JsonExport.h"
#include "reports/ResultExport.h"
#include "reports/clsReport.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <optional>

namespace {

const QString kHardSample = QStringLiteral("Cow, \"Daisy\"\r\nline two");
const QString kDelimiters = QStringLiteral("a|b^c&d~e\\f");
const QString kApostrophe = QStringLiteral("O'Brien's calf");
const QString kCyrillic = QStringLiteral("Корова №7 牛");
const QString kHardGroup = QStringLiteral("Herd \"North\"; Ärla|Σ");
const QString kTechnician = QStringLiteral("Zoë O'Neil ^&~");

// Plate #1 of the shared run with names that every format has to carry.
TestPlate hardPlate()
{
    TestPlate p = fixtures::orvexaPlate();
    p.techName = kTechnician;
    p.lotNumber = QStringLiteral("L-7;8,\"9\"");
    p.wells[QStringLiteral("D1")].sample = kHardSample;
    p.wells[QStringLiteral("E1")].sample = kDelimiters;
    p.wells[QStringLiteral("F1")].sample = kApostrophe;
    p.wells[QStringLiteral("G1")].sample = kCyrillic;
    p.wells[QStringLiteral("G1")].group = kHardGroup;
    p.wells[QStringLiteral("H1")] = {QStringLiteral("NC"), QString(), QStringLiteral("2.900"), QString(),
                                     0}; // left out
    return p;
}

ExportTable build(const RecordSet &plates, FakePrompt &prompt, const QString &plateName = {}, const QString &group = {},
                  bool controls = true)
{
    return ExportTable::build(
        plates, plateName, group, [](const QVariant &) { return QStringLiteral("Spring Run"); }, controls, prompt);
}

// A strict reader of RFC 4180: every record ends in CR LF, a field is quoted whole or not
// at all, a quote inside quotes is doubled, and an unquoted field holds no quote, CR or LF.
std::optional<QList<QStringList>> parseCsv(const QString &text, QChar sep)
{
    QList<QStringList> records;
    QStringList record;
    int i = 0;
    const int n = int(text.size());
    while (i < n) {
        QString field;
        if (text[i] == u'"') {
            ++i;
            for (;;) {
                if (i >= n)
                    return std::nullopt;
                if (text[i] == u'"') {
                    if (i + 1 < n && text[i + 1] == u'"') {
                        field += u'"';
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                field += text[i++];
            }
        } else {
            while (i < n && text[i] != sep && text[i] != u'\r') {
                if (text[i] == u'"' || text[i] == u'\n')
                    return std::nullopt;
                field += text[i++];
            }
        }
        record << field;
        if (i < n && text[i] == sep) {
            ++i;
            continue;
        }
        if (i + 1 < n && text[i] == u'\r' && text[i + 1] == u'\n') {
            i += 2;
            records << record;
            record.clear();
            continue;
        }
        return std::nullopt; // a record not ended by CR LF, or junk after a closing quote
    }
    if (!record.isEmpty())
        return std::nullopt;
    return records;
}

TEST(ExportRows, SamplesCarryTheReportsValuesAndControlsTheirInclusion)
{
    const RecordSet plates = plateRecordSet({hardPlate(), fixtures::genericPlate(), fixtures::unreadPlate()});
    FakePrompt prompt;
    const ExportTable table = build(plates, prompt);

    // The analytical report's rows for the same plates, sample by sample.
    const ResultTable report =
        clsReport(prompt, QString()).resultTable(plates, QStringLiteral("Spring Run"), 0, {}, {});
    QList<const ExportRow *> samples;
    for (const ExportRow &r : table.rows) {
        if (!r.control)
            samples << &r;
    }
    ASSERT_EQ(samples.size(), report.count());
    for (int i = 0; i < report.count(); ++i) {
        const ResultRow &expected = report.rows()[i];
        EXPECT_EQ(samples[i]->well, expected.platePosition);
        EXPECT_EQ(samples[i]->sample, expected.sample);
        EXPECT_EQ(samples[i]->od, expected.od);
        EXPECT_EQ(samples[i]->result, expected.result);
        EXPECT_EQ(samples[i]->ratio, expected.calcRatio);
    }

    EXPECT_EQ(table.plateCount, 2);
    EXPECT_EQ(table.notes, QStringList{ExportTable::leftOutText(1)});
    const ExportRow &nc = table.rows[7];
    EXPECT_TRUE(nc.control && !nc.included);
    EXPECT_EQ(nc.well, u"H1");
    EXPECT_TRUE(table.rows[0].included);
    const ExportRow &first = *samples[0];
    EXPECT_EQ(first.ratioName, u"%I");
    EXPECT_TRUE(first.verdict.startsWith(u"TEST VALIDATION PASSED")) << first.verdict.toStdString();
    EXPECT_EQ(first.technician, kTechnician);
    EXPECT_EQ(first.reader, u"Demo");
    EXPECT_EQ(first.kitExpiry, QDate(2027, 1, 31));
    EXPECT_EQ(table.rows.last().verdict, u"Generic Test:  Validation Not Required.");

    const ExportTable noControls = build(plates, prompt, {}, {}, false);
    EXPECT_EQ(noControls.rows.size(), samples.size());
    // A group takes its samples and the controls of their plates only.
    const ExportTable group = build(plates, prompt, {}, kHardGroup);
    EXPECT_EQ(group.plateCount, 1);
    EXPECT_EQ(group.rows.size(), 5); // four controls and G1
}

TEST(ExportRows, WhatCantBeExportedIsSaidAndNothingIsMade)
{
    TestPlate badStamp = fixtures::orvexaPlate();
    badStamp.version = QStringLiteral("1.x.2");
    const RecordSet run = fixtures::springRun();
    const struct {
        RecordSet plates;
        QString plate;
        QString group;
        QString message;
    } cases[] = {
        {run, QStringLiteral("Plate #3"), {}, ExportTable::notReadText(QStringLiteral("Plate #3"))},
        {plateRecordSet({fixtures::unreadPlate()}), {}, {}, ExportTable::nothingText()},
        {plateRecordSet({}), {}, {}, ExportTable::nothingText()},
        {run, {}, QStringLiteral("Nobody's herd"), ExportTable::nothingText()},
        {plateRecordSet({badStamp}),
         {},
         {},
         ExportTable::badVersionText(QStringLiteral("Plate #1"), QStringLiteral("1.x.2"))},
    };
    for (const auto &c : cases) {
        FakePrompt prompt;
        try {
            build(c.plates, prompt, c.plate, c.group);
            ADD_FAILURE() << "exported: " << c.message.toStdString();
        } catch (const ExportError &e) {
            EXPECT_EQ(e.message(), c.message);
        }
    }
}

TEST(ExportRows, APlateOfAnOlderVersionKeepsItsRulesAndSaysSo)
{
    TestPlate old = fixtures::orvexaPlate();
    old.version = QStringLiteral("1.2");
    FakePrompt prompt;
    const ExportTable table = build(plateRecordSet({old}), prompt);
    EXPECT_EQ(table.notes,
              QStringList{ExportTable::olderVersionText(QStringLiteral("Plate #1"), QStringLiteral("1.2"))});
    EXPECT_EQ(table.rows.first().version, u"1.2");
}

TEST(ExportFormats, CsvInBothDialectsReadsBackThroughAStrictParser)
{
    FakePrompt prompt;
    const ExportTable table = build(plateRecordSet({hardPlate()}), prompt);
    for (const auto dialect : {CsvExport::Dialect::Comma, CsvExport::Dialect::Semicolon}) {
        const QChar sep = dialect == CsvExport::Dialect::Comma ? u',' : u';';
        const std::optional<QList<QStringList>> records =
            parseCsv(QString::fromUtf8(CsvExport::write(table.rows, dialect)), sep);
        ASSERT_TRUE(records.has_value());
        ASSERT_EQ(records->size(), table.rows.size() + 1);
        EXPECT_EQ(records->first(), CsvExport::header());
        const int sample = int(CsvExport::header().indexOf(u"Sample"));
        const int od = int(CsvExport::header().indexOf(u"OD"));
        const int ratio = int(CsvExport::header().indexOf(u"Ratio"));
        for (int i = 0; i < table.rows.size(); ++i) {
            const QStringList &r = (*records)[i + 1];
            ASSERT_EQ(r.size(), CsvExport::header().size());
            EXPECT_EQ(r[sample], table.rows[i].sample);
            EXPECT_EQ(r[int(CsvExport::header().indexOf(u"Group"))], table.rows[i].group);
            EXPECT_EQ(r[int(CsvExport::header().indexOf(u"Technician"))], kTechnician);
            EXPECT_EQ(r[int(CsvExport::header().indexOf(u"Plate Verdict"))], table.rows[i].verdict);
        }
        // D1 reads 0.500 and has the figure the kit gives against the NC mean (47.3%).
        const QStringList &d1 = (*records)[4];
        EXPECT_EQ(d1[sample], kHardSample);
        EXPECT_EQ(d1[od], sep == u',' ? u"0.500" : u"0,500");
        EXPECT_EQ(d1[ratio], sep == u',' ? u"47.3" : u"47,3");
    }
}

TEST(ExportFormats, JsonReadsBackThroughQtWithNumbersDatesAndFlags)
{
    FakePrompt prompt;
    const ExportTable table = build(plateRecordSet({hardPlate()}), prompt);
    QJsonParseError error;
    const QJsonDocument doc =
        QJsonDocument::fromJson(ResultExport::encode(table, ResultExport::Format::Json, {}), &error);
    ASSERT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    const QJsonArray rows = doc.array();
    ASSERT_EQ(rows.size(), table.rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i][u"sample"].toString(), table.rows[i].sample);
        EXPECT_EQ(rows[i][u"group"].toString(), table.rows[i].group);
    }
    const QJsonObject nc = rows[7].toObject();
    EXPECT_EQ(nc[u"control"], QJsonValue(true));
    EXPECT_EQ(nc[u"included"], QJsonValue(false));
    const QJsonObject d1 = rows[3].toObject();
    EXPECT_EQ(d1[u"od"], QJsonValue(0.5));
    EXPECT_EQ(d1[u"ratio"], QJsonValue(47.3));
    EXPECT_EQ(d1[u"filter"], QJsonValue(630));
    EXPECT_EQ(d1[u"plateId"], QJsonValue(1));
    EXPECT_EQ(d1[u"kitExpiry"], QJsonValue(u"2027-01-31"_qs));
    EXPECT_EQ(d1[u"read"], QJsonValue(u"2026-11-23T09:30:00"_qs));
    EXPECT_EQ(d1[u"kitLot"], QJsonValue(u"L-7;8,\"9\""_qs));
    EXPECT_EQ(d1[u"result"], QJsonValue(u"POS"_qs));
}

TEST(ExportFormats, AFigureIsANumberOnlyWhenItReadsWhole)
{
    const std::pair<const char *, std::optional<double>> cases[] = {
        {"0.512", 0.512},
        {"47.4%", 47.4},
        {"-3", -3.0},
        {" 0.5 ", 0.5},
        {"1e3", 1000.0},
        {"1.2.3", {}},
        {"abc", {}},
        {"", {}},
        {"%", {}},
        {"1,5", {}},
        {"-", {}},
        {"1e999", {}},
        {"0.5x", {}},
        {"12345678901234567890123456789012345", 1.2345678901234568e34},
        {"123456789012345678901234567890", 1.2345678901234568e29}};
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(ExportRow::number(QString::fromLatin1(text)), expected) << text;
}

TEST(ExportFormats, JsonWritesAFigureInTheShortestFormOfItsNumber)
{
    const std::pair<const char *, const char *> cases[] = {
        {"0.512", "0.512"}, {"47.4%", "47.4"},  {"-0.25", "-0.25"},  {"0.05", "0.05"},    {"1.00", "1"},
        {"0.050", "0.05"},  {"0.005", "0.005"}, {"0.0001", "1e-04"}, {"100000", "1e+05"}, {"1.2.3", "\"1.2.3\""}};
    for (const auto &[od, json] : cases) {
        ExportRow row;
        row.od = QString::fromLatin1(od);
        EXPECT_TRUE(JsonExport::write({row}).contains("\"od\":" + QByteArray(json) + ',')) << od;
    }
}

TEST(ExportFormats, Hl7EscapesEveryDelimiterAndLineBreak)
{
    EXPECT_EQ(Hl7Export::escape(u"a|b^c&d~e\\f\r\n"_qs), u"a\\F\\b\\S\\c\\T\\d\\R\\e\\E\\f\\X0D\\\\X0A\\"_qs);
}

TEST(ExportFormats, BytesWrittenInPiecesAreTheBytesMadeWhole)
{
    FakePrompt prompt;
    const ExportTable table = build(plateRecordSet({hardPlate()}), prompt);
    const auto ids = [] { return QStringLiteral("7"); };
    QByteArray pieces;
    ExportBuffer window([&pieces](const char *data, qsizetype size) { pieces.append(data, size); }, 16);
    CsvExport::write(window, table.rows, CsvExport::Dialect::Semicolon);
    JsonExport::write(window, table.rows);
    Hl7Export::write(window, table.rows, QDateTime(), ids);
    window.flush();
    EXPECT_EQ(pieces, CsvExport::write(table.rows, CsvExport::Dialect::Semicolon) + JsonExport::write(table.rows) +
                          Hl7Export::write(table.rows, QDateTime(), ids));
}

TEST(ExportFile, AFileThatCantBeWrittenIsSaidAndLeavesNothingBehind)
{
    QTemporaryDir dir;
    const QString kept = dir.filePath(QStringLiteral("kept.csv"));
    {
        QFile f(kept);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("earlier export\r\n");
    }
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("a folder")));
    for (const QString &target :
         {dir.filePath(QStringLiteral("a folder")), dir.filePath(QStringLiteral("gone/x.csv"))}) {
        for (const bool whole : {true, false}) {
            try {
                FakePrompt prompt;
                if (whole)
                    ResultExport::write("new", target);
                else
                    ResultExport::write(build(plateRecordSet({hardPlate()}), prompt), ResultExport::Format::Csv,
                                        QDateTime(), target);
                ADD_FAILURE() << "written to " << target.toStdString();
            } catch (const ExportError &e) {
                EXPECT_TRUE(e.message().contains(QFileInfo(target).fileName())) << e.message().toStdString();
            }
        }
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::NoDotAndDotDot), QStringList{u"kept.csv"_qs});
}

// --- the command line ---------------------------------------------------------------

struct CliResult {
    int exitCode = -1;
    QByteArray out;
    QString err;
};

CliResult runCli(const QStringList &args)
{
    CliResult result;
    QProcess process;
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../tavimetra-cli"), args);
    if (!process.waitForFinished(60000)) {
        ADD_FAILURE() << "tavimetra-cli did not finish";
        return result;
    }
    result.exitCode = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

struct ExportCommand : ::testing::Test {
    SavedPlates saved;
    QTemporaryDir dir;
    void SetUp() override
    {
        TestPlate second = fixtures::orvexaPlate();
        second.plateID = 2;
        second.plateName = QStringLiteral("Plate #2");
        saved.saveRun(QStringLiteral("Spring, \"hard\" run"), {hardPlate(), second, fixtures::unreadPlate()});
    }
    QStringList args(const QStringList &more) const
    {
        return QStringList{u"export"_qs, u"--db"_qs, saved.databasePath()} + more;
    }
};

TEST_F(ExportCommand, Hl7OfARunReadsBackThroughPythonHl7)
{
    const QString out = dir.filePath(QStringLiteral("run.hl7"));
    const CliResult run =
        runCli(args({u"--run"_qs, u"Spring, \"hard\" run"_qs, u"--format"_qs, u"hl7"_qs, u"--out"_qs, out}));
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(ExportTable::leftOutText(1)));

    const QString expected = dir.filePath(QStringLiteral("expected.json"));
    QFile e(expected);
    ASSERT_TRUE(e.open(QIODevice::WriteOnly));
    e.write(QJsonDocument(QJsonObject{{u"plates"_qs, 2},
                                      {u"samples"_qs, QJsonArray{kHardSample, kDelimiters, kApostrophe, kCyrillic}},
                                      {u"groups"_qs, QJsonArray{kHardGroup, u"Herd A"_qs}},
                                      {u"technician"_qs, kTechnician}})
                .toJson());
    e.close();
    QString python = QStandardPaths::findExecutable(u"python3"_qs, {u"/usr/bin"_qs});
    if (python.isEmpty())
        python = QStandardPaths::findExecutable(u"python3"_qs);
    QProcess check;
    check.start(python, {QStringLiteral(TESTS_DATA_DIR "/../reports/hl7_check.py"), out, expected});
    ASSERT_TRUE(check.waitForFinished(60000));
    EXPECT_EQ(check.exitCode(), 0) << check.readAll().toStdString() << check.readAllStandardError().toStdString();
}

TEST_F(ExportCommand, WithoutAFileTheResultsGoToStandardOutput)
{
    const CliResult run = runCli(args({u"--plate-id"_qs, u"2"_qs, u"--format"_qs, u"csv"_qs, u"--no-controls"_qs}));
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const std::optional<QList<QStringList>> records = parseCsv(QString::fromUtf8(run.out), u',');
    ASSERT_TRUE(records.has_value());
    EXPECT_EQ(records->size(), 1 + 5); // the five samples of Plate #2
    EXPECT_EQ(records->at(1).at(1), u"Plate #2");
}

TEST_F(ExportCommand, BadInputIsToldAndWritesNothing)
{
    const QString target = dir.filePath(QStringLiteral("never.json"));
    const struct {
        QStringList more;
        QString message;
    } cases[] = {
        {{u"--run"_qs, u"No such run"_qs}, u"There is no saved run named \"No such run\"."_qs},
        {{u"--from"_qs, u"1/1/2020"_qs, u"--to"_qs, u"1/2/2020"_qs}, ExportTable::nothingText()},
        {{u"--from"_qs, u"2/30/2026"_qs, u"--to"_qs, u"1/2/2027"_qs}, u"--from and --to must be dates"_qs},
        {{u"--plate-id"_qs, u"3"_qs}, ExportTable::notReadText(u"Plate #3"_qs)},
        {{u"--plate-id"_qs, u"99999999999"_qs}, u"--plate-id must be a whole number"_qs},
    };
    for (const auto &c : cases) {
        const CliResult run = runCli(args(c.more + QStringList{u"--format"_qs, u"json"_qs, u"--out"_qs, target}));
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_TRUE(run.err.contains(c.message)) << run.err.toStdString();
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::NoDotAndDotDot), QStringList{});
}

} // namespace
