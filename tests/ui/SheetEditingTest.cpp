#include "FakeClipboard.h"
#include "FakeWorksheetDialogs.h"
#include "WorkbenchFixture.h"

#include "platform/Browser.h"
#include "ui/frmMain.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

namespace {

class NoBrowser : public Browser {
public:
    bool openFile(const QString &) override { return true; }
};

// The real main window on a fresh program folder, with scripted dialogs and clipboard.
struct EditingFixture : WorkbenchFixture {
    NoBrowser browser;
    FakeWorksheetDialogs dialogs;
    FakeClipboard clipboard;
    std::unique_ptr<frmMain> window;

    frmMain &show()
    {
        start();
        window = std::make_unique<frmMain>(*wb, prompt, browser);
        wb->setWorksheetDialogs(dialogs);
        wb->setClipboard(clipboard);
        window->show();
        QApplication::setActiveWindow(window.get());
        return *window;
    }
    QTableView *grid(int sheet) { return window->grid(sheet); }
    void clickCell(int sheet, int row, int col)
    {
        QTableView *g = grid(sheet);
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, g->visualRect(g->model()->index(row - 1, col - 1)).center());
    }
    // Types into the grid as a user does: the first key opens the cell's editor, which
    // takes the keys that follow. Returns the editor, still open.
    QLineEdit *startTyping(int sheet, const QString &text)
    {
        QTest::keyClicks(grid(sheet), text.left(1));
        QLineEdit *editor = grid(sheet)->findChild<QLineEdit *>(QStringLiteral("cellEditor"));
        if (editor)
            QTest::keyClicks(editor, text.mid(1));
        return editor;
    }
    void typeInto(int sheet, int row, int col, const QString &text)
    {
        clickCell(sheet, row, col);
        QLineEdit *editor = startTyping(sheet, text);
        ASSERT_NE(editor, nullptr);
        QTest::keyClick(editor, Qt::Key_Return);
    }
    QString cell(int sheet, int row, int col) const { return wb->sheet().text(sheet, row, col); }
    void addGroup(const QString &name)
    {
        DbConnection db = folder.open();
        db.execute(QStringLiteral("INSERT INTO Groups (GroupID, GroupName) VALUES ((SELECT COALESCE(MAX(GroupID),0)+1 FROM Groups), ?)"),
                   {name});
    }
};

} // namespace

TEST(SheetEditing, TypingBlankInSamplesGivesBlankInBothSheets)
{
    EditingFixture f;
    f.show();
    f.typeInto(PlateSheet::Samples, 2, 3, QStringLiteral("blank"));
    EXPECT_EQ(f.cell(PlateSheet::Samples, 2, 3), QStringLiteral("BLANK"));
    EXPECT_EQ(f.cell(PlateSheet::Groups, 2, 3), QStringLiteral("BLANK"));
    // Enter moved down, and the grid shows the cell.
    EXPECT_EQ(f.wb->sheet().row(), 3);
    EXPECT_EQ(f.grid(0)->model()->index(1, 2).data().toString(), QStringLiteral("BLANK"));
    EXPECT_TRUE(f.window->findChild<QAction *>(QStringLiteral("mnuEditUndo"))->isEnabled());
}

TEST(SheetEditing, AKnownGroupCompletesAndBackspaceDropsTheCompletion)
{
    EditingFixture f;
    f.addGroup(QStringLiteral("Hillside Dairy"));
    f.show();
    f.window->findChild<QTabWidget *>(QStringLiteral("ssDataSheetTab"))->setCurrentIndex(0);
    f.clickCell(PlateSheet::Groups, 1, 1);
    QLineEdit *editor = f.startTyping(PlateSheet::Groups, QStringLiteral("hil"));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), QStringLiteral("hillside Dairy"));
    EXPECT_EQ(editor->selectedText(), QStringLiteral("lside Dairy"));
    QTest::keyClick(editor, Qt::Key_Backspace);
    EXPECT_EQ(editor->text(), QStringLiteral("hil"));
    QTest::keyClicks(editor, QStringLiteral("l"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(f.cell(PlateSheet::Groups, 1, 1), QStringLiteral("Hillside Dairy"));
    EXPECT_EQ(f.dialogs.groupQuestions, 0);
}

TEST(SheetEditing, AnUnknownGroupAsksAndCancelEmptiesTheCell)
{
    EditingFixture f;
    f.show();
    f.window->findChild<QTabWidget *>(QStringLiteral("ssDataSheetTab"))->setCurrentIndex(0);
    f.typeInto(PlateSheet::Groups, 1, 1, QStringLiteral("Stranger"));
    EXPECT_EQ(f.dialogs.groupQuestions, 1);
    EXPECT_TRUE(f.cell(PlateSheet::Groups, 1, 1).isEmpty());
}

TEST(SheetEditing, EnterAtH12GoesToA1AndArrowsWrap)
{
    EditingFixture f;
    f.show();
    f.clickCell(PlateSheet::Samples, 8, 12);
    QTest::keyClick(f.grid(1), Qt::Key_Return);
    EXPECT_EQ(f.wb->sheet().row(), 1);
    EXPECT_EQ(f.wb->sheet().col(), 1);
    QTest::keyClick(f.grid(1), Qt::Key_Up);
    EXPECT_EQ(f.wb->sheet().row(), 8);
    EXPECT_EQ(f.wb->sheet().col(), 12);
    EXPECT_EQ(f.grid(2)->currentIndex(), f.grid(2)->model()->index(7, 11));
    QTest::keyClick(f.grid(1), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(f.wb->sheet().colSel(), 11);
    EXPECT_EQ(f.wb->sheet().col(), 12);
}

TEST(SheetEditing, TabEndsAnEditAndMovesRight)
{
    EditingFixture f;
    f.show();
    f.clickCell(PlateSheet::Samples, 1, 1);
    QLineEdit *editor = f.startTyping(PlateSheet::Samples, QStringLiteral("S1"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Tab);
    EXPECT_EQ(f.cell(PlateSheet::Samples, 1, 1), QStringLiteral("S1"));
    EXPECT_EQ(f.wb->sheet().row(), 1);
    EXPECT_EQ(f.wb->sheet().col(), 2);
}

TEST(SheetEditing, EscapeLeavesNoUndoRecord)
{
    EditingFixture f;
    f.show();
    f.clickCell(PlateSheet::Samples, 1, 1);
    QLineEdit *editor = f.startTyping(PlateSheet::Samples, QStringLiteral("abc"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_TRUE(f.cell(PlateSheet::Samples, 1, 1).isEmpty());
    EXPECT_TRUE(f.wb->undoStack().isEmpty());
}

TEST(SheetEditing, ControlButtonsAndDeleteKey)
{
    EditingFixture f;
    f.show();
    f.clickCell(PlateSheet::Samples, 1, 1);
    f.window->findChild<QPushButton *>(QStringLiteral("cmdPC_1"))->click();
    f.window->findChild<QPushButton *>(QStringLiteral("cmdNC_1"))->click();
    EXPECT_EQ(f.cell(PlateSheet::Samples, 1, 1), QStringLiteral("PC"));
    EXPECT_EQ(f.cell(PlateSheet::Groups, 2, 1), QStringLiteral("NC"));
    EXPECT_TRUE(f.wb->isDirty());
    f.clickCell(PlateSheet::Samples, 1, 1);
    QTest::keyClick(f.grid(1), Qt::Key_Delete);
    EXPECT_TRUE(f.cell(PlateSheet::Samples, 1, 1).isEmpty());
    f.window->findChild<QAction *>(QStringLiteral("mnuEditUndo"))->trigger();
    EXPECT_EQ(f.cell(PlateSheet::Samples, 1, 1), QStringLiteral("PC"));
}

TEST(SheetEditing, PasteOfABlockAtRowEightIsRefused)
{
    EditingFixture f;
    f.show();
    f.clipboard.contents = QStringLiteral("a\tb\r\nc\td\r\n");
    f.clickCell(PlateSheet::Samples, 8, 1);
    f.window->findChild<QAction *>(QStringLiteral("mnuEditPaste"))->trigger();
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().title, QStringLiteral("Source and Destination Cell Range Not The Same"));
    EXPECT_TRUE(f.cell(PlateSheet::Samples, 8, 1).isEmpty());
}

TEST(SheetEditing, ToolTipDescribesTheWell)
{
    EditingFixture f;
    f.show();
    f.wb->sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("Cow 4"));
    EXPECT_EQ(f.wb->wellToolTip(1, 1), QStringLiteral("Sample: Cow 4, Group: , Optical Density: , Result: "));
    EXPECT_TRUE(f.wb->wellToolTip(9, 1).isEmpty());
}
