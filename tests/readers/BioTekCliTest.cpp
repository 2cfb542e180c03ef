// tavimetra-cli read with a Bio-Tek model: with --simulated-autoreader a simulated reader
// answers in place of the vendor's control.

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

struct CliRun {
    int exitCode = -1;
    QJsonObject result;
};

CliRun readWithCli(const QStringList &extra)
{
    CliRun run;
    const QString cli = QCoreApplication::applicationDirPath() + QStringLiteral("/../tavimetra-cli");
    if (!QFileInfo::exists(cli)) {
        ADD_FAILURE() << "tavimetra-cli is not built at " << cli.toStdString();
        return run;
    }
    QProcess process;
    process.start(cli, QStringList({"read", "--model", "11", "--settings", "9600,N,8,2", "--filter-no", "1",
                                    "--filter-value", "450"}) +
                           extra);
    if (!process.waitForFinished(30000)) {
        ADD_FAILURE() << "tavimetra-cli did not finish";
        process.kill();
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.result = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    return run;
}

} // namespace

TEST(BioTekCli, TheSimulatedAutoreaderReadsAPlate)
{
    const CliRun run =
        readWithCli({QStringLiteral("--port"), QStringLiteral("2"), QStringLiteral("--simulated-autoreader")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.result.value(QStringLiteral("ok")).toBool());
    const QJsonArray values = run.result.value(QStringLiteral("values")).toArray();
    ASSERT_EQ(values.size(), 96);
    EXPECT_EQ(values[0].toString(), QStringLiteral("0.041"));
    EXPECT_EQ(values[1].toString(), QStringLiteral("0.054"));  // B1
    EXPECT_EQ(values[95].toString(), QStringLiteral("1.850")); // 1.859 without its last digit
}
