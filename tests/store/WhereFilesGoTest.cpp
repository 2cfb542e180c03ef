// Where the program's files go: the workbooks kept for the user, and the delivered data
// that an installed program finds beside itself.
#include "TempProgramFolder.h"

#include "store/DocumentFolder.h"
#include "store/ProgramFolder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

const QDateTime kWhen(QDate(2026, 11, 23), QTime(14, 5, 9));

TEST(DocumentFolder, NamesSayWhatTheFileHoldsAndWhen)
{
    QTemporaryDir root;
    const DocumentFolder folder(QDir(root.path()).filePath(QStringLiteral("Documents/Tavimetra")));
    const struct {
        QStringList parts;
        const char *name;
    } cases[] = {
        {{"OD values", "Generic", "Spring Run", "Plate #1"},
         "OD values - Generic - Spring Run - Plate #1 - 2026-11-23 14-05-09.xlsx"},
        {{"Control report", "", "L-100"}, "Control report - L-100 - 2026-11-23 14-05-09.xlsx"},
        {{"OD values", "a/b\\c:d*e?f\"g<h>i|j", " ..Herd\t7.. "},
         "OD values - a_b_c_d_e_f_g_h_i_j - Herd_7 - 2026-11-23 14-05-09.xlsx"},
        {{QString(60, u'x')}, "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx - 2026-11-23 14-05-09.xlsx"},
    };
    for (const auto &c : cases) {
        const QString path = folder.newFilePath(c.parts, kWhen);
        EXPECT_EQ(QFileInfo(path).fileName(), QString::fromUtf8(c.name));
        EXPECT_EQ(QFileInfo(path).absolutePath(), QFileInfo(folder.path()).absoluteFilePath());
    }
    EXPECT_TRUE(QFileInfo(folder.path()).isDir());
}

TEST(DocumentFolder, AnEarlierFileIsNeverWrittenOver)
{
    QTemporaryDir root;
    const DocumentFolder folder(root.path());
    const QStringList parts{QStringLiteral("OD values")};
    const QString first = folder.newFilePath(parts, kWhen);
    TempProgramFolder::writeFile(first, "kept");
    const QString second = folder.newFilePath(parts, kWhen);
    TempProgramFolder::writeFile(second, "kept too");
    EXPECT_EQ(QFileInfo(second).fileName(), QStringLiteral("OD values - 2026-11-23 14-05-09 (2).xlsx"));
    EXPECT_EQ(QFileInfo(folder.newFilePath(parts, kWhen)).fileName(),
              QStringLiteral("OD values - 2026-11-23 14-05-09 (3).xlsx"));
    EXPECT_EQ(TempProgramFolder::readFile(first), "kept");
}

TEST(DocumentFolder, AFolderThatCannotBeMadeIsNamed)
{
    QTemporaryDir root;
    const QString blocked = QDir(root.path()).filePath(QStringLiteral("Documents"));
    TempProgramFolder::writeFile(blocked, "a file in the way");
    try {
        DocumentFolder(QDir(blocked).filePath(QStringLiteral("Tavimetra"))).newFilePath({QStringLiteral("x")}, kWhen);
        FAIL() << "no error";
    } catch (const DocumentFolderError &e) {
        EXPECT_NE(QString::fromUtf8(e.what()).indexOf(QStringLiteral("Documents")), -1) << e.what();
    }
    EXPECT_EQ(TempProgramFolder::readFile(blocked), "a file in the way");
}

TEST(InstalledData, FoundBesideTheProgramAndFromTheSourceTreeOnlyInABuild)
{
    QTemporaryDir root;
    const QDir dir(root.path());
    const QString build = dir.filePath(QStringLiteral("build"));
    const QString source = dir.filePath(QStringLiteral("src/data"));
    QDir().mkpath(dir.filePath(QStringLiteral("usr/bin")));
    QDir().mkpath(dir.filePath(QStringLiteral("usr/share/tavimetra")));
    QDir().mkpath(dir.filePath(QStringLiteral("opt/bin")));
    QDir().mkpath(dir.filePath(QStringLiteral("build/tests")));
    const struct {
        const char *programDir;
        QString expected;
    } cases[] = {
        {"usr/bin", dir.filePath(QStringLiteral("usr/share/tavimetra"))}, // installed
        {"build/tests", source},                                          // in the build tree
        {"opt/bin",
         dir.filePath(QStringLiteral("opt/share/tavimetra"))}, // installed, data missing: named, never the source
    };
    for (const auto &c : cases)
        EXPECT_EQ(ProgramFolder::dataDirFor(dir.filePath(QString::fromLatin1(c.programDir)), build, source), c.expected)
            << c.programDir;
}

} // namespace
