// Export of results for a laboratory information system over 1,000 read plates (91,000
// samples and 5,000 controls). Aim: under 200 ms for each format, rows and file together.
// The rows are timed alone too, since every format pays for them.
#include "FakePrompt.h"
#include "PlateRecordBuilder.h"

#include "core/Wells.h"
#include "reports/ExportTable.h"
#include "reports/Hl7Export.h"
#include "reports/ResultExport.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

namespace {

// Read Orvexa plates: three NCs and two PCs, then 91 samples in 20 herds whose names need
// quoting or escaping now and then.
RecordSet readPlates(int count)
{
    QRandomGenerator random(16);
    QList<TestPlate> plates;
    int accession = 10000;
    for (int p = 0; p < count; ++p) {
        TestPlate plate;
        plate.plateID = p + 1;
        plate.plateName = QStringLiteral("Plate #%1").arg(p + 1);
        plate.testName = QStringLiteral("Orvexa 412");
        plate.lotNumber = QStringLiteral("L-77");
        plate.expDate = QDate(2027, 1, 31);
        plate.dateRead = QDate(2026, 1, 1).addDays(p / 8);
        plate.timeRead = QTime(8, 0).addSecs(600 * (p % 8));
        plate.techName = QStringLiteral("Zoë O'Neil");
        for (int k = 0; k < wells::kCount; ++k) {
            TestWell well;
            if (k < 3) {
                well.sample = QStringLiteral("NC");
                well.od = QStringLiteral("1.0%1").arg(k * 2);
            } else if (k < 5) {
                well.sample = QStringLiteral("PC");
                well.od = QStringLiteral("0.2%1").arg(k);
            } else {
                well.sample = k % 10 == 0 ? QStringLiteral("Cow \"%1\", Ärla|^").arg(accession++)
                                          : QStringLiteral("A-%1").arg(accession++);
                well.group = QStringLiteral("Herd %1").arg(random.bounded(20));
                const double od = random.bounded(1.2);
                well.od = QString::number(od, 'f', 3);
                well.result = od <= 0.7 ? QStringLiteral("POS") : QStringLiteral("NEG");
            }
            plate.wells.insert(wells::name(k), well);
        }
        plates << plate;
    }
    return plateRecordSet(plates);
}

const ExportTable::RunNamer kRun = [](const QVariant &) { return QStringLiteral("Bench"); };

// With TAVIMETRA_EXPORT_DUMP=<folder>, the benchmark's plates are written there in every
// format (all plates with and without controls, one group, one plate; HL7 with counting
// control ids), for a change to the export to be checked with cmp before and after.
void dumpExports(const RecordSet &plates)
{
    const QString folder = qEnvironmentVariable("TAVIMETRA_EXPORT_DUMP");
    if (folder.isEmpty())
        return;
    FakePrompt prompt;
    const QDateTime now(QDate(2026, 11, 24), QTime(1, 0));
    struct Selection {
        const char *name;
        QString plate;
        QString group;
        bool controls;
    };
    for (const Selection &s : {Selection{"all", {}, {}, true}, Selection{"samples", {}, {}, false},
                               Selection{"group", {}, QStringLiteral("Herd 3"), true},
                               Selection{"plate", QStringLiteral("Plate #7"), {}, true}}) {
        const ExportTable table = ExportTable::build(plates, s.plate, s.group, kRun, s.controls, prompt);
        for (int f = 0; f < 4; ++f) {
            const auto format = static_cast<ResultExport::Format>(f);
            int id = 0;
            const QByteArray bytes = format == ResultExport::Format::Hl7
                                         ? Hl7Export::write(table.rows, now, [&id] { return QString::number(++id); })
                                         : ResultExport::encode(table, format, now);
            const QString name = QStringLiteral("%1.%2").arg(QLatin1String(s.name), ResultExport::name(format));
            QFile file(QDir(folder).filePath(name));
            if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
                qFatal("Can't write %s", qPrintable(file.fileName()));
            if (format != ResultExport::Format::Hl7) // its control ids are random
                ResultExport::write(table, format, now, QDir(folder).filePath(QStringLiteral("streamed-") + name));
        }
    }
}

void exportRows(benchmark::State &state)
{
    const RecordSet plates = readPlates(1000);
    dumpExports(plates);
    FakePrompt prompt;
    for (auto _ : state) {
        const ExportTable table = ExportTable::build(plates, QString(), QString(), kRun, true, prompt);
        benchmark::DoNotOptimize(table.rows.size());
    }
}
BENCHMARK(exportRows)->Unit(benchmark::kMillisecond)->Iterations(3);

// The contents alone, from rows made once. Arg: the format.
void exportContents(benchmark::State &state)
{
    const auto format = static_cast<ResultExport::Format>(state.range(0));
    const RecordSet plates = readPlates(1000);
    FakePrompt prompt;
    const ExportTable table = ExportTable::build(plates, QString(), QString(), kRun, true, prompt);
    for (auto _ : state)
        benchmark::DoNotOptimize(ResultExport::encode(table, format, QDateTime(QDate(2026, 11, 24), QTime(1, 0))));
    state.SetLabel(ResultExport::name(format).toStdString());
}
BENCHMARK(exportContents)->DenseRange(0, 3)->Unit(benchmark::kMillisecond)->Iterations(3);

// The whole export: rows, and the file written safely as its contents are made. Arg: the
// format.
void exportResults(benchmark::State &state)
{
    const auto format = static_cast<ResultExport::Format>(state.range(0));
    const RecordSet plates = readPlates(1000);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("results.") + ResultExport::suffix(format));
    FakePrompt prompt;
    qint64 bytes = 0;
    for (auto _ : state) {
        const ExportTable table = ExportTable::build(plates, QString(), QString(), kRun, true, prompt);
        ResultExport::write(table, format, QDateTime(QDate(2026, 11, 24), QTime(1, 0)), path);
    }
    bytes = QFileInfo(path).size();
    state.SetLabel(ResultExport::name(format).toStdString());
    state.counters["MB"] = double(bytes) / 1e6;
}
// The floor of the whole export: the same bytes, made once, written the same way (whole,
// through a temporary file renamed over the old one). Arg: the format.
void exportResults_Floor(benchmark::State &state)
{
    const auto format = static_cast<ResultExport::Format>(state.range(0));
    FakePrompt prompt;
    const ExportTable table = ExportTable::build(readPlates(1000), QString(), QString(), kRun, true, prompt);
    const QByteArray contents = ResultExport::encode(table, format, QDateTime(QDate(2026, 11, 24), QTime(1, 0)));
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("results.") + ResultExport::suffix(format));
    for (auto _ : state)
        ResultExport::write(contents, path);
    state.SetLabel(ResultExport::name(format).toStdString());
    state.counters["MB"] = double(contents.size()) / 1e6;
}

#define EXPORT_FORMATS(bench)                                                                                          \
    BENCHMARK(bench)                                                                                                   \
        ->Arg(int(ResultExport::Format::Csv))                                                                          \
        ->Arg(int(ResultExport::Format::CsvSemicolon))                                                                 \
        ->Arg(int(ResultExport::Format::Json))                                                                         \
        ->Arg(int(ResultExport::Format::Hl7))                                                                          \
        ->Unit(benchmark::kMillisecond)                                                                                \
        ->Iterations(3)
EXPORT_FORMATS(exportResults);
EXPORT_FORMATS(exportResults_Floor);

} // namespace
