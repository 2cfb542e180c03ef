// Reports, workbooks and the companion's output on a disk that is full or a target that is
// no file: the former file stays whole, and the failure is told (non-zero exit code).
#include "SmallDisk.h"
#include "TempProgramFolder.h"

#include "platform/XlsxWorkbook.h"
#include "reports/ReportFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

const QByteArray kOld = "the report of yesterday\r\n";

struct FullDisk {
    SmallDisk disk{1 << 20};
    QString path(const char *name) const { return QDir(disk.path()).filePath(QLatin1String(name)); }
    // A file of yesterday, and the disk then filled to the last byte.
    QString oldFileThenFull(const char *name) const
    {
        const QString file = path(name);
        TempProgramFolder::writeFile(file, kOld);
        disk.fillLeaving(0);
        return file;
    }
};

TEST(OnAFullDisk, AReportIsNotWrittenAndYesterdaysStaysWhole)
{
    FullDisk f;
    if (!f.disk.mounted())
        GTEST_SKIP() << f.disk.whyNot().toStdString();
    const QString path = f.oldFileThenFull("TempHTML.htm");

    EXPECT_THROW(
        {
            ReportFile report(path);
            for (int line = 0; line < 20000; ++line)
                report.writeLine(u"<tr><td>Sample</td><td>Positive</td></tr>");
            report.close();
        },
        ReportFileError);
    EXPECT_EQ(TempProgramFolder::readFile(path), kOld);
}

TEST(OnAFullDisk, AWorkbookIsNotWrittenAndTheFormerStaysWhole)
{
    FullDisk f;
    if (!f.disk.mounted())
        GTEST_SKIP() << f.disk.whyNot().toStdString();
    const QString path = f.oldFileThenFull("Tracking.xlsx");
    XlsxWorkbook book;
    for (int row = 1; row <= 2000; ++row)
        book.setText(row, 1, QStringLiteral("control %1").arg(row));

    QString error;
    EXPECT_FALSE(book.save(path, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("Tracking.xlsx"))) << error.toStdString();
    EXPECT_EQ(TempProgramFolder::readFile(path), kOld);
    EXPECT_EQ(QDir(f.disk.path()).entryList(QDir::Files | QDir::Hidden).size(), 2); // the file and the filler
}

QString cliPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../tavimetra-cli");
}

TEST(TheCompanion, FailsWhenItsOutputCanNotBeWritten)
{
    QProcess cli;
    cli.setStandardOutputFile(QStringLiteral("/dev/full"));
    cli.start(cliPath(), {QStringLiteral("kit"), QStringLiteral("Generic")});
    ASSERT_TRUE(cli.waitForFinished(60000));
    EXPECT_NE(cli.exitCode(), 0);
    EXPECT_TRUE(cli.readAllStandardError().contains("could not be written to standard output"));
}

TEST(TheCompanion, RefusesAReportOverSomethingElseThanAFile)
{
    QTemporaryDir dir;
    const QString fifo = dir.filePath(QStringLiteral("report.htm"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString plates = dir.filePath(QStringLiteral("plates.json"));
    TempProgramFolder::writeFile(plates, R"({"plates": []})");

    QProcess cli;
    cli.start(cliPath(), {"report", "--style", "client", "--plates", plates, "--run-name", "R", "--out", fifo});
    ASSERT_TRUE(cli.waitForFinished(60000));
    EXPECT_NE(cli.exitCode(), 0);
    EXPECT_TRUE(cli.readAllStandardError().contains("is not a regular file"));
    EXPECT_TRUE(QFileInfo(fifo).exists() && !QFileInfo(fifo).isFile());
}

} // namespace
