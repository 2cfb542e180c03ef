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

#include <utility>

namespace {

// A database with folders "Runs" (delivered, id 1), "Farm" and "O'Neil's"; "Farm" holds
// runs "abc" (two plates) and "Second" (one plate), "O'Neil's" holds "Bob's '3'".
struct Lists {
    TempProgramFolder temp;
    FakePrompt prompt;
    RunOpenLogic dialog{temp.folder(), prompt};
    qint64 farm = 0, zoo = 0, abc = 0, second = 0, third = 0;

    Lists()
    {
        const DbConnection db = temp.open();
        zoo = RunPlates::addFolder(db, QStringLiteral("O'Neil's"));
        farm = RunPlates::addFolder(db, QStringLiteral("Farm"));
        abc = RunPlates::addRun(db, QStringLiteral("abc"), farm);
        second = RunPlates::addRun(db, QStringLiteral("Second"), farm);
        third = RunPlates::addRun(db, QStringLiteral("Bob's '3'"), zoo);
        const std::pair<int, qint64> runs[] = {{2, abc}, {1, second}, {1, third}};
        for (const auto &[count, run] : runs) {
            RecordSet plates = RunPlates::make(count, run);
            PlateRows::insert(db, plates);
        }
        dialog.load();
    }
    void selectFolder(const QString &name) { dialog.selectFolder(int(dialog.folderNames().indexOf(name))); }
    void selectRun(const QString &name) { dialog.selectRun(int(dialog.runNames().indexOf(name))); }
    int count(const QString &sql, const QVariantList &values = {}) const
    {
        return temp.open().scalar(sql, values).toInt();
    }
    QStringList names(const QString &sql) const { return RunPlates::column(temp.open(), sql); }
};

TEST(RunLists, ShowTheFoldersByNameWithTheFirstSelectedAndTheRunsOfTheSelectedFolder)
{
    Lists f;
    EXPECT_EQ(f.dialog.folderNames(), (QStringList{"Farm", "O'Neil's", "Runs"}));
    EXPECT_EQ(f.dialog.selectedFolder(), 0);
    EXPECT_EQ(f.dialog.runNames(), (QStringList{"abc", "Second"}));
    EXPECT_EQ(f.dialog.selectedRun(), -1);
    f.selectFolder(QStringLiteral("O'Neil's"));
    f.selectRun(QStringLiteral("Bob's '3'"));
    EXPECT_EQ(f.dialog.runNameText(), "Bob's '3'");
    // Read anew at each showing, with an empty name box.
    RunPlates::addFolder(f.temp.open(), QStringLiteral("Barn"));
    f.dialog.load();
    EXPECT_EQ(f.dialog.folderNames().first(), "Barn");
    EXPECT_EQ(f.dialog.runNameText(), "");
}

TEST(RenamingInPlace, TakesAFreeNameAndRefusesATakenOneInAnyCase)
{
    struct Case {
        const char *label;
        bool folder;
        int index;
        const char *name;
        bool renamed;
        const char *boxTitle; // "" when refused without a box
    };
    const Case cases[] = {
        {"a folder", true, 0, "D'Arcy's", true, ""},
        {"a run", false, 1, "Bob's 'later'", true, ""},
        {"a run to the name of a run of another folder", false, 0, "Bob's '3'", true, ""},
        {"a run to its own name in capitals", false, 0, "ABC", false, ""},
        {"a folder to its own name padded and in capitals", true, 0, " FARM ", false, ""},
        {"a run to blanks", false, 0, "   ", false, ""},
        {"a folder to nothing", true, 0, "", false, ""},
        {"a folder to another folder's name", true, 0, "o'neil's", false, "Folder Name Already Exists"},
        {"a run to another run's name in the folder", false, 0, "second", false, "Name Already Exists"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        Lists f;
        const QStringList foldersBefore = f.names("SELECT FolderName FROM Folders ORDER BY FolderID");
        const QStringList runsBefore = f.names("SELECT RunName FROM Runs ORDER BY RunID");
        const QString name = QString::fromUtf8(c.name);
        EXPECT_EQ(c.folder ? f.dialog.renameFolder(c.index, name) : f.dialog.renameRun(c.index, name), c.renamed);
        const QStringList shown = c.folder ? f.dialog.folderNames() : f.dialog.runNames();
        const QStringList stored = c.folder ? f.names("SELECT FolderName FROM Folders ORDER BY FolderID")
                                            : f.names("SELECT RunName FROM Runs ORDER BY RunID");
        if (c.renamed) {
            EXPECT_TRUE(shown.contains(name));
            EXPECT_TRUE(stored.contains(name));
        } else {
            EXPECT_EQ(stored, c.folder ? foldersBefore : runsBefore);
        }
        EXPECT_EQ(f.prompt.count() ? f.prompt.last().title : QString(), QString::fromUtf8(c.boxTitle));
    }
}

TEST(NewFolder, IsNewFolder1ThenTheFirstFreeNumberWithTheSmallestFreeIdAndIsSelected)
{
    Lists f;
    f.temp.open().execute(QStringLiteral("DELETE FROM Folders WHERE FolderID = 1"));
    f.dialog.load();
    f.dialog.newFolder();
    EXPECT_EQ(f.dialog.folderNames().at(f.dialog.selectedFolder()), "New Folder 1");
    EXPECT_EQ(f.count("SELECT FolderID FROM Folders WHERE FolderName = 'New Folder 1'"), 1);
    EXPECT_TRUE(f.dialog.runNames().isEmpty());
    f.dialog.newFolder();
    f.dialog.newFolder();
    EXPECT_EQ(f.dialog.folderNames().at(f.dialog.selectedFolder()), "New Folder 3");
    f.selectFolder(QStringLiteral("New Folder 2"));
    EXPECT_TRUE(f.dialog.renameFolder(f.dialog.selectedFolder(), QStringLiteral("Pigs")));
    f.dialog.newFolder();
    EXPECT_EQ(f.dialog.folderNames().at(f.dialog.selectedFolder()), "New Folder 2");
}

TEST(DeletingARun, AsksThenRemovesItWithItsPlatesAndNoKeepsIt)
{
    Lists f;
    f.dialog.deleteRun(); // no run selected: nothing asked
    EXPECT_EQ(f.prompt.count(), 0);
    f.selectRun(QStringLiteral("abc"));
    f.prompt.queueAnswer(MsgAnswer::No);
    f.dialog.deleteRun();
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), f.abc), 2);
    f.selectRun(QStringLiteral("abc"));
    f.dialog.deleteRun();
    EXPECT_EQ(f.prompt.last(), (PromptBox{"Delete Run?", "Are you sure you want to delete 'abc'?", MsgIcon::Question,
                                          MsgButtons::YesNo}));
    EXPECT_EQ(f.dialog.runNames(), QStringList{"Second"});
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Runs WHERE RunName = 'abc'")), 0);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), f.abc), 0);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), f.second), 1);
}

TEST(DeletingAFolder, AsksOnceOrTwiceAndTakesItsRunsAndPlates)
{
    const QString kContents = QStringLiteral("There are existing runs in this folder.  Delete this folder and runs "
                                             "contained in it as well?");
    struct Case {
        const char *folder;
        QList<MsgAnswer> answers;
        QStringList questions;
        QStringList foldersLeft;
        int platesLeft;
        const char *selected; // the folder at the deleted one's place, or the one kept
    };
    const Case cases[] = {
        {"Runs", {}, {"Are you sure you want to delete 'Runs'?"}, {"Farm", "O'Neil's"}, 4, "O'Neil's"},
        {"O'Neil's", {}, {"Are you sure you want to delete 'O'Neil's'?", kContents}, {"Farm", "Runs"}, 3, "Runs"},
        {"Farm",
         {MsgAnswer::Yes, MsgAnswer::No},
         {"Are you sure you want to delete 'Farm'?", kContents},
         {"Farm", "O'Neil's", "Runs"},
         4,
         "Farm"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.folder);
        Lists f;
        f.selectFolder(QString::fromUtf8(c.folder));
        for (MsgAnswer answer : c.answers)
            f.prompt.queueAnswer(answer);
        f.dialog.deleteFolder();
        QStringList asked;
        for (const PromptBox &box : f.prompt.boxes())
            asked << box.text;
        EXPECT_EQ(asked, c.questions);
        EXPECT_EQ(f.dialog.folderNames(), c.foldersLeft);
        EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Folders")), c.foldersLeft.size());
        EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Plates")), c.platesLeft);
        // The folder now selected shows its runs.
        EXPECT_EQ(f.dialog.folderNames().value(f.dialog.selectedFolder()), c.selected);
        EXPECT_EQ(f.dialog.runNames().size(),
                  f.count(QStringLiteral("SELECT COUNT(*) FROM Runs JOIN Folders ON Runs.FolderID "
                                         "= Folders.FolderID WHERE FolderName = ?"),
                          {QString::fromUtf8(c.selected)}));
    }
}

TEST(DeletingAFolder, TheLastOneClearsTheRunList)
{
    Lists f;
    for (int i = 0; i < 3; ++i)
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
