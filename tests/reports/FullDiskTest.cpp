// A report written line by line on a disk that is full, and the companion's output that
// can't be written: the former file stays whole, and the failure is told (non-zero exit
// code). How a file is replaced, and what is never replaced, is the file layer's.
#include "SmallDisk.h"
#include "TempProgramFolder.h"

#include "reports/ReportFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

const QByteArray kOld = "the report of yesterday\r\n";

TEST(OnAFullDisk, AReportIsNotWrittenAndYesterdaysStaysWhole)
{
    SmallDisk disk{1 << 20};
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    const QString path = QDir(disk.path()).filePath(QStringLiteral("TempHTML.htm"));
    TempProgramFolder::writeFile(path, kOld);
    disk.fillLeaving(0); // to the last byte

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

} // namespace
