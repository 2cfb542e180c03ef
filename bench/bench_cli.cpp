// The command-line companion as a whole process: one plate's evaluation against the kit
// question, the cheapest command there is. Both figures are printed side by side; the
// evaluation should take no more than about one and a half times the kit question.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

QString cliPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/tavimetra-cli");
}

// An Orvexa plate: four PC, four NC, two blanks and 86 samples.
QByteArray plateJson()
{
    QJsonArray samples, ods;
    for (int k = 0; k < 96; ++k) {
        const char *name = k < 4 ? "PC" : k < 8 ? "NC" : k < 10 ? "BLANK" : nullptr;
        samples.append(name ? QString::fromLatin1(name) : QStringLiteral("Sample %1").arg(k - 9));
        ods.append(k < 4 ? 0.2 : k < 8 ? 1.0 : k < 10 ? 0.04 : 0.1 + (k % 23) * 0.05);
    }
    const QJsonObject plate{{QStringLiteral("test"), QStringLiteral("Orvexa 412")},
                            {QStringLiteral("filter"), 630},
                            {QStringLiteral("expDate"), QJsonValue::Null},
                            {QStringLiteral("dateRead"), QStringLiteral("2026-11-23")},
                            {QStringLiteral("samples"), samples},
                            {QStringLiteral("rawODs"), ods}};
    return QJsonDocument(plate).toJson();
}

void runCli(benchmark::State &state, const QStringList &args)
{
    if (!QFileInfo::exists(cliPath())) {
        state.SkipWithError("tavimetra-cli is not built beside the benchmarks");
        return;
    }
    for (auto _ : state) {
        QProcess process;
        process.start(cliPath(), args);
        if (!process.waitForFinished(60000) || process.exitCode() != 0) {
            state.SkipWithError(("tavimetra-cli failed: " + args.join(u' ')).toStdString().c_str());
            return;
        }
        benchmark::DoNotOptimize(process.readAllStandardOutput());
    }
}

void BM_CliKitQuestion(benchmark::State &state)
{
    runCli(state, {QStringLiteral("kit"), QStringLiteral("Orvexa 412")});
}

void BM_CliEvaluatePlate(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("plate.json"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(plateJson()) < 0) {
        state.SkipWithError("cannot write the plate file");
        return;
    }
    file.close();
    runCli(state, {QStringLiteral("evaluate"), path});
}

} // namespace

BENCHMARK(BM_CliKitQuestion)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CliEvaluatePlate)->Unit(benchmark::kMillisecond)->UseRealTime();
