// The Open and Save As dialogs driven through their widgets.
#include "RunDialogWidgets.h"

#include "FakePrompt.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/DatabaseSchema.h"
#include "store/PlateRows.h"
#include "store/RunOpenLogic.h"
#include "store/RunSaveAsLogic.h"
#include "ui/frmRunOpen.h"
#include "ui/frmRunSaveAs.h"

#include <QPushButton>

#include <gtest/gtest.h>

namespace {

using namespace RunDialogWidgets;

// The dialog on a fresh program folder, shown and active, with its widgets.
template <typename Logic, typename Dialog> struct ShownDialog {
    TempProgramFolder temp;
    FakePrompt prompt;
    Logic logic{temp.folder(), prompt};
    Dialog dialog{logic};
    QListWidget *lstFolders = nullptr;
    QListWidget *lstRunNames = nullptr;
    QLineEdit *txtRunName = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdDelete = nullptr;

    QPushButton *button(const char *name)
    {
        return dialog.template findChild<QPushButton *>(QString::fromLatin1(name));
    }
    void show()
    {
        lstFolders = dialog.template findChild<QListWidget *>(QStringLiteral("lstFolders"));
        lstRunNames = dialog.template findChild<QListWidget *>(QStringLiteral("lstRunNames"));
        txtRunName = dialog.template findChild<QLineEdit *>(QStringLiteral("txtRunName"));
        cmdCancel = button("cmdCancel");
        cmdDelete = button("cmdDelete");
        dialog.show();
        dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }
};

// Folders "Farm" (runs "abc" and "Second") and "Runs" (empty); the dialog shown with two
// plates of a new run in hand.
struct SaveAsDialog : ShownDialog<RunSaveAsLogic, frmRunSaveAs> {
    QPushButton *cmdSave = nullptr;

    SaveAsDialog()
    {
        const DbConnection db = temp.open();
        const qint64 farm = RunPlates::addFolder(db, QStringLiteral("Farm"));
        RecordSet abc = RunPlates::make(1, RunPlates::addRun(db, QStringLiteral("abc"), farm));
        PlateRows::insert(db, abc);
        RunPlates::addRun(db, QStringLiteral("Second"), farm);
        logic.setPlatesRecord(RunPlates::make(2, 10));
        show();
        cmdSave = button("cmdSave");
    }
    qint64 runID(const QString &folder, const QString &name) const
    {
        return RunPlates::runID(temp.open(), folder, name);
    }
};

// What each gesture does to the folders and runs is the logic's (tests/store); here one
// pass through the widgets that reaches every gesture.
TEST(frmRunSaveAs, EveryGestureOfTheListsReachesItsCommandAndEnterSaves)
{
    SaveAsDialog f;
    clickItem(f.lstRunNames, 1);
    EXPECT_EQ(f.txtRunName->text(), "Second");
    renameInPlace(f.lstRunNames, 1, QStringLiteral("Bob's"));
    EXPECT_EQ(f.runID(QStringLiteral("Farm"), QStringLiteral("Bob's")), 2);
    EXPECT_TRUE(f.dialog.isVisible()); // Enter ended the edit and nothing else
    EXPECT_FALSE(f.logic.getUserOk());

    // The Delete key inside the editor edits the name; on the list it deletes the run.
    clickItem(f.lstRunNames, 0);
    QTest::keyClick(f.lstRunNames, Qt::Key_F2);
    QLineEdit *editor = openEditor(f.lstRunNames);
    ASSERT_NE(editor, nullptr);
    editor->setCursorPosition(0);
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.runID(QStringLiteral("Farm"), QStringLiteral("bc")), 1);
    QTest::keyClick(f.lstRunNames, Qt::Key_Delete);
    EXPECT_EQ(f.prompt.last().text, "Are you sure you want to delete 'bc'?");
    EXPECT_EQ(itemTexts(f.lstRunNames), QStringList{"Bob's"});

    // The Delete button acts on the list that had the focus last.
    f.prompt.clearBoxes();
    f.prompt.queueAnswers({MsgAnswer::Yes, MsgAnswer::No});
    f.lstFolders->setFocus();
    QTest::mouseClick(f.cmdDelete, Qt::LeftButton);
    ASSERT_EQ(f.prompt.count(), 2);
    EXPECT_EQ(f.prompt.boxes()[0].text, "Are you sure you want to delete 'Farm'?");
    EXPECT_EQ(itemTexts(f.lstFolders), (QStringList{"Farm", "Runs"}));

    // A blank name sends the focus to the name box.
    f.prompt.clearBoxes();
    f.txtRunName->clear();
    QTest::keyClicks(f.txtRunName, QStringLiteral("   "));
    f.lstFolders->setFocus();
    QTest::mouseClick(f.cmdSave, Qt::LeftButton);
    EXPECT_TRUE(f.dialog.isVisible());
    EXPECT_TRUE(f.txtRunName->hasFocus());
    EXPECT_EQ(f.prompt.count(), 0);

    clickItem(f.lstFolders, 1);
    f.txtRunName->clear();
    QTest::keyClicks(f.txtRunName, QStringLiteral("Tuesday's run"));
    QTest::keyClick(f.txtRunName, Qt::Key_Return);
    EXPECT_FALSE(f.dialog.isVisible());
    EXPECT_TRUE(f.logic.getUserOk());
    EXPECT_EQ(f.logic.getRunName(), "Tuesday's run");
    EXPECT_EQ(f.runID(QStringLiteral("Runs"), QStringLiteral("Tuesday's run")), 10);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 10), 2);
}

} // namespace

namespace {

// Folder "O'Neil's" with runs "Bob's" (three plates) and "Empty"; the delivered "Runs".
struct OpenDialog : ShownDialog<RunOpenLogic, frmRunOpen> {
    OpenDialog()
    {
        const DbConnection db = temp.open();
        const qint64 folder = RunPlates::addFolder(db, QStringLiteral("O'Neil's"));
        RecordSet plates = RunPlates::make(3, RunPlates::addRun(db, QStringLiteral("Bob's"), folder));
        PlateRows::insert(db, plates);
        RunPlates::addRun(db, QStringLiteral("Empty"), folder);
        show();
    }
};

TEST(frmRunOpen, ADoubleClickOnARunOpensItAndCancelReportsNotOk)
{
    OpenDialog f;
    doubleClickItem(f.lstRunNames, 0);
    EXPECT_FALSE(f.dialog.isVisible());
    EXPECT_TRUE(f.logic.getUserOk());
    EXPECT_EQ(f.logic.getRunName(), "Bob's");
    const RecordSet plates = f.logic.getPlatesRecord();
    EXPECT_EQ(plates.recordCount(), 3);
    EXPECT_EQ(plates.text(u"CurrentTest"), "PZV 419");

    f.dialog.show();
    QTest::mouseClick(f.cmdCancel, Qt::LeftButton);
    EXPECT_FALSE(f.dialog.isVisible());
    EXPECT_FALSE(f.logic.getUserOk());
}

} // namespace
