// tavimetra-cli audit: the trail of a database as JSON lines, and its bad options told.
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/NamedRunStore.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

struct Cli {
    int exit = -1;
    QStringList lines;
    QString err;
};

Cli runCli(const QStringList &args)
{
    QProcess process;
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../tavimetra-cli"), args);
    process.waitForFinished(60000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST(AuditCommand, PrintsTheRowsOfARunInTimeOrder)
{
    const TempProgramFolder temp;
    const QString db = temp.databaseLocation();
    {
        const DbConnection connection = temp.open();
        const NamedRunStore store(connection);
        store.save("F", "A", RunPlates::make(1, 1), false);
        store.save("F", "B", RunPlates::make(2, 1), false);
        RecordSet changed = RunPlates::make(2, 1);
        changed.setValueAt(1, u"LotNumber", "L2");
        store.save("F", "B", changed, true);
    }
    const Cli all = runCli({"audit", "--db", db});
    ASSERT_EQ(all.exit, 0) << all.err.toStdString();
    EXPECT_EQ(all.lines.size(), 7); // folder; run A, its plate; run B, its two plates; the lot

    const Cli runB = runCli({"audit", "--db", db, "--run-id", "2", "--from", "1/1/2000", "--to", "12/31/2999"});
    ASSERT_EQ(runB.exit, 0) << runB.err.toStdString();
    QStringList actions;
    for (const QString &line : runB.lines)
        actions << QJsonDocument::fromJson(line.toUtf8()).object().value("action").toString();
    EXPECT_EQ(actions, (QStringList{"Run saved as", "Plate added", "Plate added", "Plate changed"}));
    const QJsonObject last = QJsonDocument::fromJson(runB.lines.last().toUtf8()).object();
    EXPECT_EQ(last.value("field").toString(), "LotNumber");
    EXPECT_EQ(last.value("new").toString(), "L2");
    EXPECT_EQ(last.value("plateId").toInt(), 2);

    EXPECT_TRUE(runCli({"audit", "--db", db, "--from", "1/1/2999"}).lines.isEmpty());
}

TEST(AuditCommand, BadOptionsAreNamed)
{
    const TempProgramFolder temp;
    const QString db = temp.databaseLocation();
    const struct {
        QStringList args;
        const char *message;
    } cases[] = {
        {{"audit"}, "audit: --db is required"},
        {{"audit", "--db", db, "--run-id", "x"}, "audit: --run-id must be a whole number from 1 up, not 'x'"},
        {{"audit", "--db", db, "--from", "2026-01-01"}, "audit: --from must be a date as M/D/YYYY, not '2026-01-01'"},
        {{"audit", "--db", db, "--from", "2/1/2026", "--to", "1/1/2026"}, "audit: --to comes before --from"},
    };
    for (const auto &c : cases) {
        const Cli cli = runCli(c.args);
        EXPECT_EQ(cli.exit, 2) << c.message;
        EXPECT_TRUE(cli.err.contains(c.message)) << cli.err.toStdString();
    }
}

} // namespace
