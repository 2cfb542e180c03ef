// Names with apostrophes go through every step of a run's life: save, overwrite, open,
// rename and delete, for runs and folders alike.
#include "FakePrompt.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/RunOpenLogic.h"
#include "store/RunSaveAsLogic.h"

#include <gtest/gtest.h>

namespace {

using End = RunBrowser::CommandEnd;

const QString kFolder = QStringLiteral("O'Neil's Farm");
const QString kRun = QStringLiteral("Bob's run '1'");

struct Apostrophes {
    TempProgramFolder temp;
    FakePrompt prompt;
    RunSaveAsLogic saveAs{temp.folder(), prompt};
    RunOpenLogic open{temp.folder(), prompt};

    Apostrophes() { RunPlates::addFolder(temp.open(), kFolder); }

    static void pick(RunBrowser &dialog, const QString &folder, const QString &run)
    {
        dialog.load();
        dialog.selectFolder(int(dialog.folderNames().indexOf(folder)));
        dialog.setRunNameText(run);
    }
    End save(const RecordSet &plates, const QString &folder, const QString &run)
    {
        saveAs.setPlatesRecord(plates);
        pick(saveAs, folder, run);
        return saveAs.save();
    }
};

TEST(NamesWithApostrophes, SaveOverwriteAndOpen)
{
    Apostrophes f;
    ASSERT_EQ(f.save(RunPlates::make(2, 1, QStringLiteral("first")), kFolder, kRun), End::Close);
    EXPECT_EQ(RunPlates::runID(f.temp.open(), kFolder, kRun), 1);

    f.prompt.queueAnswer(MsgAnswer::Yes);
    ASSERT_EQ(f.save(RunPlates::make(3, 2, QStringLiteral("second")), kFolder, kRun), End::Close);
    EXPECT_EQ(f.prompt.last().text, "The Run 'Bob's run '1'' already exists in this folder.  Do you want to overwrite?");
    const qint64 id = RunPlates::runID(f.temp.open(), kFolder, kRun);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), id), 3);
    EXPECT_EQ(f.temp.open().scalar(QStringLiteral("SELECT COUNT(*) FROM Plates")).toInt(), 3);

    Apostrophes::pick(f.open, kFolder, kRun);
    ASSERT_EQ(f.open.open(), End::Close);
    const RecordSet opened = f.open.getPlatesRecord();
    ASSERT_EQ(opened.recordCount(), 3);
    EXPECT_EQ(opened.text(u"TechName"), "D'Arcy");
    EXPECT_TRUE(opened.text(u"Groups").startsWith("O'Brien 1/0 second"));
    EXPECT_EQ(f.open.getRunName(), kRun);
}

TEST(NamesWithApostrophes, RenameAFolderAndARun)
{
    Apostrophes f;
    ASSERT_EQ(f.save(RunPlates::make(1, 1), kFolder, kRun), End::Close);
    Apostrophes::pick(f.open, kFolder, QString());
    const int folder = f.open.selectedFolder();
    EXPECT_TRUE(f.open.renameRun(0, QStringLiteral("Bob's 'other' run")));
    EXPECT_TRUE(f.open.renameFolder(folder, QStringLiteral("D'Arcy's")));
    EXPECT_EQ(RunPlates::runID(f.temp.open(), QStringLiteral("D'Arcy's"), QStringLiteral("Bob's 'other' run")), 1);

    // The checks against names in use see apostrophes too.
    RunPlates::addRun(f.temp.open(), QStringLiteral("It's taken"), 2);
    f.open.selectFolder(f.open.selectedFolder());
    EXPECT_FALSE(f.open.renameRun(f.open.runNames().indexOf("Bob's 'other' run"), QStringLiteral("It's taken")));
    EXPECT_EQ(f.prompt.last().title, "Name Already Exists");
    EXPECT_FALSE(f.open.renameFolder(f.open.selectedFolder(), QStringLiteral("Runs")));
    EXPECT_TRUE(f.open.renameFolder(f.open.selectedFolder(), QStringLiteral("D'Arcy's 2")));
}

TEST(NamesWithApostrophes, DeleteARunAndAFolder)
{
    Apostrophes f;
    ASSERT_EQ(f.save(RunPlates::make(2, 1), kFolder, kRun), End::Close);
    ASSERT_EQ(f.save(RunPlates::make(2, 2), kFolder, QStringLiteral("Ann's")), End::Close);

    Apostrophes::pick(f.open, kFolder, QString());
    f.open.selectRun(int(f.open.runNames().indexOf(kRun)));
    f.open.deleteRun();
    EXPECT_EQ(f.prompt.last().text, "Are you sure you want to delete 'Bob's run '1''?");
    EXPECT_EQ(RunPlates::runID(f.temp.open(), kFolder, kRun), -1);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 0);

    f.open.deleteFolder();
    EXPECT_EQ(f.prompt.boxes().at(f.prompt.count() - 2).text, "Are you sure you want to delete 'O'Neil's Farm'?");
    EXPECT_FALSE(f.open.folderNames().contains(kFolder));
    EXPECT_EQ(f.temp.open().scalar(QStringLiteral("SELECT COUNT(*) FROM Plates")).toInt(), 0);
    EXPECT_EQ(f.temp.open().scalar(QStringLiteral("SELECT COUNT(*) FROM Runs")).toInt(), 0);
}

} // namespace
