// Replacing a file: whatever fails on the way, the former file stays whole and no
// temporary file is left; what is not a regular file is never replaced.
#include "FailingFileLayer.h"
#include "TempProgramFolder.h"

#include "platform/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

const QByteArray kOld = "the former contents, whole\r\n";

struct Folder {
    QTemporaryDir dir;
    QString target = dir.filePath(QStringLiteral("settings.txt"));
    Folder() { TempProgramFolder::writeFile(target, kOld); }
    QStringList entries() const
    {
        return QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

struct Fault {
    const char *name;
    void (*set)(FailingFileLayer &);
    const char *reason;
};

class AFailedReplacement : public testing::TestWithParam<Fault> {};

TEST_P(AFailedReplacement, LeavesTheFormerFileWholeAndNoTemporaryFile)
{
    Folder f;
    FailingFileLayer disk;
    GetParam().set(disk);
    QString error;
    // Far more than any buffer, so that a write fails before the end as on a full disk.
    const QByteArray contents(3 << 20, 'n');

    EXPECT_FALSE(SafeFile::writeWhole(f.target, contents, &error, disk));

    EXPECT_EQ(TempProgramFolder::readFile(f.target), kOld);
    EXPECT_EQ(f.entries(), QStringList{QStringLiteral("settings.txt")});
    EXPECT_TRUE(
        error.startsWith(QStringLiteral("The file %1 could not be written: ").arg(QDir::toNativeSeparators(f.target))))
        << error.toStdString();
    EXPECT_TRUE(error.contains(QLatin1String(GetParam().reason))) << error.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Faults, AFailedReplacement,
    testing::Values(Fault{"NothingFits", [](FailingFileLayer &d) { d.failAfterBytes = 0; }, "No space left"},
                    Fault{"DiskFullHalfWay", [](FailingFileLayer &d) { d.failAfterBytes = 1 << 20; }, "No space left"},
                    Fault{"SyncFails", [](FailingFileLayer &d) { d.failSync = true; }, "Input/output error"},
                    Fault{"CloseFails", [](FailingFileLayer &d) { d.failClose = true; }, "No space left"},
                    Fault{"RenameFails", [](FailingFileLayer &d) { d.failRename = true; }, "Input/output error"}),
    [](const testing::TestParamInfo<Fault> &info) { return std::string(info.param.name); });

TEST(AReplacement, PutsTheWholeContentsInPlaceKeepingThePermissions)
{
    Folder f;
    QFile::setPermissions(f.target, QFile::ReadOwner | QFile::WriteOwner);
    const QFile::Permissions permissions = QFile::permissions(f.target);
    FailingFileLayer disk;
    const QByteArray contents(3 << 20, 'n');
    ASSERT_TRUE(SafeFile::writeWhole(f.target, contents, nullptr, disk));
    EXPECT_EQ(TempProgramFolder::readFile(f.target), contents);
    EXPECT_EQ(disk.renames, 1);
    EXPECT_EQ(QFile::permissions(f.target), permissions);
    EXPECT_EQ(f.entries(), QStringList{QStringLiteral("settings.txt")});
}

TEST(AReplacement, OfALinkReplacesTheFileItNamesAndKeepsTheLink)
{
    Folder f;
    const QString link = f.dir.filePath(QStringLiteral("link.txt"));
    ASSERT_TRUE(QFile::link(f.target, link));
    ASSERT_TRUE(SafeFile::writeWhole(link, "new"));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(TempProgramFolder::readFile(f.target), "new");
}

TEST(AReplacement, RefusesWhatIsNotARegularFileAndLeavesItAlone)
{
    Folder f;
    const QString fifo = f.dir.filePath(QStringLiteral("fifo"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString folder = f.dir.filePath(QStringLiteral("folder"));
    ASSERT_TRUE(QDir().mkdir(folder));
    for (const QString &target : {fifo, folder, QStringLiteral("/dev/null")}) {
        QString error;
        FailingFileLayer disk;
        EXPECT_FALSE(SafeFile::writeWhole(target, "x", &error, disk)) << target.toStdString();
        EXPECT_EQ(error, QStringLiteral("%1 is not a regular file; it is left as it is.").arg(target));
        EXPECT_EQ(disk.renames, 0);
    }
    struct stat info {};
    ASSERT_EQ(::lstat(QFile::encodeName(fifo).constData(), &info), 0);
    EXPECT_TRUE(S_ISFIFO(info.st_mode));
    EXPECT_TRUE(QFileInfo(folder).isDir());
}

TEST(ACopy, OfASourceThatCanNotBeReadLeavesTheTargetAsItWas)
{
    Folder f;
    QString error;
    EXPECT_FALSE(SafeFile::copy(f.dir.filePath(QStringLiteral("missing.db")), f.target, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("missing.db could not be read"))) << error.toStdString();
    EXPECT_EQ(TempProgramFolder::readFile(f.target), kOld);
}

} // namespace
