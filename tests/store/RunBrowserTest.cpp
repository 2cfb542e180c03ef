// The folder and run lists of the run dialogs: filling, selecting, renaming in place, New
// Folder and Delete.
#include "FakePrompt.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "InjectedFailure.h"
#include "TempProgramFolder.h"

#include "store/DatabaseSchema.h"
#include "store/PlateRows.h"
#include "store/RunOpenLogic.h"

#include <gtest/gtest.h>

namespace {

// A database with folders "Runs" (delivered, id 1), "Farm" and "Zoo"; "Farm" holds runs
// "abc" (two plates) and "Second" (one plate), "Zoo" holds "Third".
struct Lists {
    TempProgramFolder temp;
    FakePrompt prompt;
    RunOpenLogic dialog{temp.folder(), prompt};
    qint64 farm = 0, zoo = 0, abc = 0, second = 0, third = 0;

    Lists()
    {
        const DbConnection db = temp.open();
        zoo = RunPlates::addFolder(db, QStringLiteral("Zoo"));
        farm = RunPlates::addFolder(db, QStringLiteral("Farm"));
        abc = RunPlates::addRun(db, QStringLiteral("abc"), farm);
        second = RunPlates::addRun(db, QStringLiteral("Second"), farm);
        third = RunPlates::addRun(db, QStringLiteral("Third"), zoo);
        RecordSet plates = RunPlates::make(2, abc);
        PlateRows::insert(db, plates);
        plates = RunPlates::make(1, second);
        PlateRows::insert(db, plates);
        plates = RunPlates::make(1, third);
        PlateRows::insert(db, plates);
        dialog.load();
    }
    void selectFolder(const QString &name) { dialog.selectFolder(int(dialog.folderNames().indexOf(name))); }
    void selectRun(const QString &name) { dialog.selectRun(int(dialog.runNames().indexOf(name))); }
    int count(const QString &sql) const { return temp.open().scalar(sql).toInt(); }
    QString folderName(qint64 id) const
    {
        return temp.open().scalar(QStringLiteral("SELECT FolderName FROM Folders WHERE FolderID = ?"), {id}).toString();
    }
    QString runName(qint64 id) const
    {
        return temp.open().scalar(QStringLiteral("SELECT RunName FROM Runs WHERE RunID = ?"), {id}).toString();
    }
};

TEST(RunLists, ShowTheFoldersByNameWithTheFirstSelectedAndItsRuns)
{
    Lists f;
    EXPECT_EQ(f.dialog.folderNames(), (QStringList{"Farm", "Runs", "Zoo"}));
    EXPECT_EQ(f.dialog.selectedFolder(), 0);
    EXPECT_EQ(f.dialog.runNames(), (QStringList{"abc", "Second"}));
    EXPECT_EQ(f.dialog.selectedRun(), -1);
    EXPECT_EQ(f.dialog.runNameText(), "");
    EXPECT_EQ(f.dialog.activeList(), RunBrowser::ActiveList::Folders);
}

TEST(RunLists, SelectingAFolderShowsItsRunsAndARunPutsItsNameInTheBox)
{
    Lists f;
    f.selectFolder(QStringLiteral("Zoo"));
    EXPECT_EQ(f.dialog.runNames(), QStringList{"Third"});
    f.selectRun(QStringLiteral("Third"));
    EXPECT_EQ(f.dialog.runNameText(), "Third");
    f.selectFolder(QStringLiteral("Runs"));
    EXPECT_TRUE(f.dialog.runNames().isEmpty());
}

TEST(RunLists, AreReadAnewAtEachShowingWithAnEmptyNameBox)
{
    Lists f;
    f.selectFolder(QStringLiteral("Zoo"));
    f.dialog.setRunNameText(QStringLiteral("typed"));
    RunPlates::addFolder(f.temp.open(), QStringLiteral("Barn"));
    f.dialog.load();
    EXPECT_EQ(f.dialog.folderNames().first(), "Barn");
    EXPECT_EQ(f.dialog.runNameText(), "");
}

TEST(RenamingInPlace, ChangesAFolderAndARun)
{
    Lists f;
    EXPECT_TRUE(f.dialog.renameFolder(0, QStringLiteral("Stable")));
    EXPECT_EQ(f.folderName(f.farm), "Stable");
    EXPECT_EQ(f.dialog.folderNames().at(0), "Stable");
    EXPECT_TRUE(f.dialog.renameRun(1, QStringLiteral("Later")));
    EXPECT_EQ(f.runName(f.second), "Later");
    EXPECT_EQ(f.dialog.runNames().at(1), "Later");
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(RenamingInPlace, OfAbcToABCIsRefusedSilently)
{
    Lists f;
    EXPECT_FALSE(f.dialog.renameRun(0, QStringLiteral("ABC")));
    EXPECT_EQ(f.runName(f.abc), "abc");
    EXPECT_EQ(f.dialog.runNames().at(0), "abc");
    EXPECT_FALSE(f.dialog.renameFolder(0, QStringLiteral(" FARM ")));
    EXPECT_EQ(f.folderName(f.farm), "Farm");
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(RenamingInPlace, ToBlanksIsRefusedSilently)
{
    Lists f;
    EXPECT_FALSE(f.dialog.renameRun(0, QStringLiteral("   ")));
    EXPECT_FALSE(f.dialog.renameFolder(0, QString()));
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.runName(f.abc), "abc");
}

TEST(RenamingInPlace, ToTheNameOfAnotherFolderIsRefusedWithABox)
{
    Lists f;
    EXPECT_FALSE(f.dialog.renameFolder(0, QStringLiteral("zoo")));
    EXPECT_EQ(f.prompt.last(), (PromptBox{"Folder Name Already Exists",
                                           "This folder name already exists.  Please choose another.",
                                           MsgIcon::Exclamation, MsgButtons::Ok}));
    EXPECT_EQ(f.folderName(f.farm), "Farm");
    EXPECT_EQ(f.dialog.folderNames().at(0), "Farm");
}

TEST(RenamingInPlace, ToTheNameOfAnotherRunOfTheFolderIsRefusedWithABox)
{
    Lists f;
    EXPECT_FALSE(f.dialog.renameRun(0, QStringLiteral("Second")));
    EXPECT_EQ(f.prompt.last(), (PromptBox{"Name Already Exists",
                                           "A run with this name already exists in this folder.  Please choose another.",
                                           MsgIcon::Exclamation, MsgButtons::Ok}));
    EXPECT_EQ(f.runName(f.abc), "abc");
}

TEST(RenamingInPlace, ToTheNameOfARunOfAnotherFolderIsAllowed)
{
    Lists f;
    EXPECT_TRUE(f.dialog.renameRun(0, QStringLiteral("Third")));
    EXPECT_EQ(f.runName(f.abc), "Third");
}

TEST(NewFolder, IsNewFolder1ThenTheFirstFreeNumberAndIsSelected)
{
    Lists f;
    f.dialog.newFolder();
    EXPECT_EQ(f.dialog.folderNames().at(f.dialog.selectedFolder()), "New Folder 1");
    EXPECT_TRUE(f.dialog.runNames().isEmpty());
    f.dialog.newFolder();
    f.dialog.newFolder();
    EXPECT_EQ(f.dialog.folderNames().at(f.dialog.selectedFolder()), "New Folder 3");
    f.selectFolder(QStringLiteral("New Folder 2"));
    EXPECT_TRUE(f.dialog.renameFolder(f.dialog.selectedFolder(), QStringLiteral("Pigs")));
    f.dialog.newFolder();
    EXPECT_EQ(f.dialog.folderNames().at(f.dialog.selectedFolder()), "New Folder 2");
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Folders WHERE FolderName LIKE 'New Folder %'")), 3);
}

TEST(NewFolder, TakesTheSmallestFreeId)
{
    Lists f;
    f.temp.open().execute(QStringLiteral("DELETE FROM Folders WHERE FolderID = 1"));
    f.dialog.load();
    f.dialog.newFolder();
    EXPECT_EQ(f.folderName(1), "New Folder 1");
    EXPECT_EQ(f.dialog.getNewFolderID(), 4);
}

TEST(DeletingARun, AsksThenRemovesItWithItsPlates)
{
    Lists f;
    f.selectRun(QStringLiteral("abc"));
    f.dialog.deleteRun();
    EXPECT_EQ(f.prompt.last(), (PromptBox{"Delete Run?", "Are you sure you want to delete 'abc'?", MsgIcon::Question,
                                           MsgButtons::YesNo}));
    EXPECT_EQ(f.dialog.runNames(), QStringList{"Second"});
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Runs WHERE RunName = 'abc'")), 0);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), f.abc), 0);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), f.second), 1);
}

TEST(DeletingARun, AnsweredNoKeepsIt)
{
    Lists f;
    f.selectRun(QStringLiteral("abc"));
    f.prompt.queueAnswer(MsgAnswer::No);
    f.dialog.deleteRun();
    EXPECT_EQ(f.dialog.runNames().size(), 2);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), f.abc), 2);
}

TEST(DeletingARun, WithNoRunSelectedAsksNothing)
{
    Lists f;
    f.dialog.deleteRun();
    f.selectFolder(QStringLiteral("Runs"));
    f.dialog.deleteRun();
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(DeletingAFolder, WithNoRunsTakesOneQuestion)
{
    Lists f;
    f.selectFolder(QStringLiteral("Runs"));
    f.dialog.deleteFolder();
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last(), (PromptBox{"Delete Run?", "Are you sure you want to delete 'Runs'?", MsgIcon::Question,
                                           MsgButtons::YesNo}));
    EXPECT_EQ(f.dialog.folderNames(), (QStringList{"Farm", "Zoo"}));
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Folders")), 2);
}

TEST(DeletingAFolder, WithRunsTakesTwoQuestionsAndTakesItsRunsAndPlates)
{
    Lists f;
    f.dialog.deleteFolder();
    ASSERT_EQ(f.prompt.count(), 2);
    EXPECT_EQ(f.prompt.boxes()[0].text, "Are you sure you want to delete 'Farm'?");
    EXPECT_EQ(f.prompt.boxes()[1], (PromptBox{"Delete Contents of Folder?",
                                              "There are existing runs in this folder.  Delete this folder and runs "
                                              "contained in it as well?",
                                              MsgIcon::Question, MsgButtons::YesNo}));
    EXPECT_EQ(f.dialog.folderNames(), (QStringList{"Runs", "Zoo"}));
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Runs")), 1);
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Plates")), 1);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), f.third), 1);
    // The folder now selected shows its runs.
    EXPECT_EQ(f.dialog.selectedFolder(), 0);
    EXPECT_TRUE(f.dialog.runNames().isEmpty());
}

TEST(DeletingAFolder, WithRunsAnsweredNoAtTheSecondQuestionKeepsEverything)
{
    Lists f;
    f.prompt.queueAnswers({MsgAnswer::Yes, MsgAnswer::No});
    f.dialog.deleteFolder();
    EXPECT_EQ(f.dialog.folderNames().size(), 3);
    EXPECT_EQ(f.dialog.runNames().size(), 2);
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Plates")), 4);
}

TEST(DeletingAFolder, TheLastOneClearsTheRunList)
{
    Lists f;
    f.selectFolder(QStringLiteral("Zoo"));
    f.dialog.deleteFolder();
    f.dialog.deleteFolder();
    f.dialog.deleteFolder();
    EXPECT_TRUE(f.dialog.folderNames().isEmpty());
    EXPECT_EQ(f.dialog.selectedFolder(), -1);
    EXPECT_TRUE(f.dialog.runNames().isEmpty());
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Runs")), 0);
    f.dialog.deleteFolder();
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Plates")), 0);
}

TEST(TheDeleteButton, ActsOnTheListThatHadTheFocusLast)
{
    Lists f;
    f.selectRun(QStringLiteral("Second"));
    f.dialog.setActiveList(RunBrowser::ActiveList::Runs);
    f.dialog.deleteActive();
    EXPECT_EQ(f.prompt.last().text, "Are you sure you want to delete 'Second'?");
    EXPECT_EQ(f.dialog.folderNames().size(), 3);
    f.dialog.setActiveList(RunBrowser::ActiveList::Folders);
    f.prompt.queueAnswers({MsgAnswer::Yes, MsgAnswer::No});
    f.dialog.deleteActive();
    EXPECT_EQ(f.prompt.boxes()[1].text, "Are you sure you want to delete 'Farm'?");
}

TEST(ADatabaseFailure, InTheListsIsToldAndChangesNothing)
{
    Lists f;
    injectFailure(f.temp.open(), QStringLiteral("keep_runs"), QStringLiteral("DELETE"), QStringLiteral("Runs"),
                  QStringLiteral("runs are kept"));
    f.dialog.deleteFolder();
    EXPECT_EQ(f.prompt.last().title, "Database Error");
    EXPECT_EQ(f.prompt.last().icon, MsgIcon::Critical);
    EXPECT_TRUE(f.prompt.last().text.startsWith("The folder could not be deleted. Nothing was changed.\r\n\r\n"));
    EXPECT_TRUE(f.prompt.last().text.contains("runs are kept"));
    // The plates of the folder's runs were deleted first: they are back.
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Plates")), 4);
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Folders")), 3);
    EXPECT_EQ(f.dialog.folderNames().size(), 3);
}

TEST(ADatabaseFailure, OfAMissingDatabaseAtLoadLeavesEmptyLists)
{
    Lists f;
    if (f.temp.onServer())
        GTEST_SKIP() << "a database file that is gone";
    QFile::remove(f.temp.databasePath());
    f.dialog.load();
    EXPECT_TRUE(f.dialog.folderNames().isEmpty());
    EXPECT_EQ(f.prompt.last().title, "Database Error");
    EXPECT_TRUE(f.prompt.last().text.startsWith("The folders and runs could not be read from the database."));
}

} // namespace
