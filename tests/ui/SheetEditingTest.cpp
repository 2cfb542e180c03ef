#include "MainWindowFixture.h"

#include <gtest/gtest.h>

#include "worksheet/LayoutEditor.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QPointer>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

namespace {

// The main window with helpers for its grids.
struct EditingFixture : MainWindowFixture {
    QTableView *grid(int sheet) { return window->grid(sheet); }
    void clickCell(int sheet, int row, int col)
    {
        QTableView *g = grid(sheet);
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {},
                          g->visualRect(g->model()->index(row - 1, col - 1)).center());
    }
    // Types into the grid as a user does: the first key opens the cell's editor, which
    // takes the keys that follow. Returns the editor, still open.
    QLineEdit *startTyping(int sheet, const QString &text)
    {
        QTest::keyClicks(grid(sheet), text.left(1));
        QLineEdit *editor = nullptr; // an editor closed before may not be gone yet
        for (QLineEdit *open : grid(sheet)->findChildren<QLineEdit *>(QStringLiteral("cellEditor")))
            editor = open->isVisible() ? open : editor;
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
};

} // namespace

// How a group completes is the layout editor's; here that the cell's editor shows it.
TEST(SheetEditing, AKnownGroupCompletesInTheEditor)
{
    EditingFixture f;
    f.folder.addGroup(QStringLiteral("Hillside Dairy"));
    f.show();
    f.window->findChild<QTabWidget *>(QStringLiteral("ssDataSheetTab"))->setCurrentIndex(0);
    f.clickCell(PlateSheet::Groups, 1, 1);
    QLineEdit *editor = f.startTyping(PlateSheet::Groups, QStringLiteral("hil"));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), QStringLiteral("hillside Dairy"));
    EXPECT_EQ(editor->selectedText(), QStringLiteral("lside Dairy"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(f.cell(PlateSheet::Groups, 1, 1), QStringLiteral("Hillside Dairy"));
    EXPECT_EQ(f.dialogs.groupQuestions, 0);
}

// The buttons, the Delete key and Undo act on the selection, which a click inside it keeps.
TEST(SheetEditing, ControlButtonsTheDeleteKeyAndUndo)
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

    f.clickCell(PlateSheet::Samples, 3, 3);
    QTest::keyClick(f.grid(1), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(f.grid(1), Qt::Key_Right, Qt::ShiftModifier);
    f.clickCell(PlateSheet::Samples, 4, 4);
    const SheetRange kept = f.wb->sheet().getSheetSelection();
    EXPECT_EQ(std::tuple(kept.firstRow, kept.firstCol, kept.lastRow, kept.lastCol), std::tuple(3, 3, 4, 4));
    f.window->findChild<QPushButton *>(QStringLiteral("cmdNC_1"))->click();
    EXPECT_EQ(f.cell(PlateSheet::Samples, 3, 4), QStringLiteral("NC"));
    f.clickCell(PlateSheet::Samples, 5, 5);
    const SheetRange collapsed = f.wb->sheet().getSheetSelection();
    EXPECT_EQ(std::tuple(collapsed.firstRow, collapsed.firstCol, collapsed.lastRow, collapsed.lastCol),
              std::tuple(5, 5, 5, 5));
}

TEST(SheetEditing, ToolTipDescribesTheWell)
{
    EditingFixture f;
    f.show();
    f.wb->sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("Cow 4"));
    EXPECT_EQ(f.wb->wellToolTip(1, 1), QStringLiteral("Sample: Cow 4, Group: , Optical Density: , Result: "));
    EXPECT_TRUE(f.wb->wellToolTip(9, 1).isEmpty());
}

namespace {

// Closes the modal dialogs that open one after the other, each by clicking the button of
// that name in it (or by rejecting it when the name is empty), as a user would.
class DialogCloser : public QObject {
public:
    explicit DialogCloser(QStringList buttons) : mButtons(std::move(buttons)) { startTimer(5); }
    int closed = 0;

protected:
    void timerEvent(QTimerEvent *) override
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || modal == mLast || closed >= mButtons.size())
            return;
        mLast = modal;
        const QString name = mButtons.at(closed++);
        if (name.isEmpty()) {
            static_cast<QDialog *>(modal)->reject();
        } else if (auto *b = modal->findChild<QPushButton *>(name)) {
            b->click();
        }
    }

private:
    QStringList mButtons;
    QPointer<QWidget> mLast;
};

QComboBox *testsCombo(frmMain &w)
{
    return w.findChild<QComboBox *>(QStringLiteral("cboTests"));
}

} // namespace

// After every dialog the sheets open, the keyboard is back on the grid the work came from:
// a letter typed next goes into a cell and never picks another test.
TEST(SheetEditing, FocusReturnsToTheGridAfterEveryDialog)
{
    struct Case {
        const char *what;
        int sheet;
        QStringList buttons;
        std::function<void(EditingFixture &)> open;
    };
    const auto typeStranger = [](EditingFixture &f) {
        f.typeInto(PlateSheet::Groups, 1, 1, QStringLiteral("Stranger"));
    };
    const auto menu = [](const char *name) {
        return [name](EditingFixture &f) { f.window->findChild<QAction *>(QString::fromLatin1(name))->trigger(); };
    };
    const Case cases[] = {
        {"new-group question, cancelled", 0, {QStringLiteral("cmdCancel")}, typeStranger},
        {"Add New Group", 0, {QStringLiteral("cmdYes"), QStringLiteral("cmdOK")}, typeStranger},
        {"Set Group after No", 0, {QStringLiteral("cmdNo"), QStringLiteral("cmdOK")}, typeStranger},
        {"Set Group from the menu",
         1,
         {QStringLiteral("cmdOK")},
         [](EditingFixture &f) { LayoutEditor(*f.wb).setGroup(); }},
        {"Add Samples", 1, {QString()}, menu("mnuPlateAddSamples")},
        {"Edit Plates", 1, {QString()}, menu("mnuPlateEditPlates")},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        EditingFixture f;
        f.folder.addGroup(QStringLiteral("Acme"));
        f.show(false);
        f.window->findChild<QTabWidget *>(QStringLiteral("ssDataSheetTab"))->setCurrentIndex(c.sheet);
        f.clickCell(c.sheet, 1, 1);
        const QString test = testsCombo(*f.window)->currentText();
        {
            DialogCloser closer(c.buttons);
            f.window->runCommand([&] { c.open(f); });
            EXPECT_EQ(closer.closed, c.buttons.size());
        }
        QApplication::setActiveWindow(f.window.get());
        QCoreApplication::processEvents();

        EXPECT_EQ(QApplication::focusWidget(), f.grid(c.sheet));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("d"));
        EXPECT_EQ(testsCombo(*f.window)->currentText(), test);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); // the "d" went into a cell
    }
}

// A combo box the focus fell into by itself passes letters to the grid; one the user
// clicked or tabbed into takes them.
TEST(SheetEditing, ACombBoxTakesLettersOnlyAfterTheUserMovedIntoIt)
{
    EditingFixture f;
    f.show(false);
    QComboBox *tests = testsCombo(*f.window);
    const QString test = tests->currentText();
    tests->setFocus(Qt::ActiveWindowFocusReason);
    QTest::keyClicks(tests, QStringLiteral("d"));
    EXPECT_EQ(tests->currentText(), test);
    QLineEdit *editor = f.grid(PlateSheet::Samples)->findChild<QLineEdit *>(QStringLiteral("cellEditor"));
    ASSERT_NE(editor, nullptr); // the letter opened the cell
    EXPECT_EQ(editor->text(), QStringLiteral("d"));
    QTest::keyClick(editor, Qt::Key_Escape);

    // On the Info view there is no grid to take the key: it is dropped.
    f.window->findChild<QTabWidget *>(QStringLiteral("ssDataSheetTab"))->setCurrentIndex(4);
    tests->setFocus(Qt::OtherFocusReason);
    QTest::keyClicks(tests, QStringLiteral("d"));
    EXPECT_EQ(tests->currentText(), test);

    f.window->findChild<QTabWidget *>(QStringLiteral("ssDataSheetTab"))->setCurrentIndex(1);
    tests->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(tests, QStringLiteral("d"));
    EXPECT_NE(tests->currentText(), test);
}

// A key opens the cell's editor; Escape drops the edit, Tab and Shift+Tab end it and move
// like Right and Left (wrapping is the sheet's own).
TEST(SheetEditing, EscapeTabAndShiftTabEndAnEdit)
{
    EditingFixture f;
    f.show();
    f.clickCell(PlateSheet::Samples, 2, 12);
    QLineEdit *editor = f.startTyping(PlateSheet::Samples, QStringLiteral("abc"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_TRUE(f.cell(PlateSheet::Samples, 2, 12).isEmpty());
    EXPECT_TRUE(f.wb->undoStack().isEmpty());

    QTest::keyClick(f.grid(1), Qt::Key_Tab);
    EXPECT_EQ(std::pair(f.wb->sheet().row(), f.wb->sheet().col()), std::pair(3, 1));
    QTest::keyClick(f.grid(1), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(std::pair(f.wb->sheet().row(), f.wb->sheet().col()), std::pair(2, 12));
    EXPECT_EQ(f.wb->sheet().rowSel(), 2); // Shift+Tab moves, it does not select
    EXPECT_EQ(QApplication::focusWidget(), f.grid(1));

    editor = f.startTyping(PlateSheet::Samples, QStringLiteral("S1"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(f.cell(PlateSheet::Samples, 2, 12), QStringLiteral("S1"));
    EXPECT_EQ(f.wb->sheet().col(), 11);
    editor = f.startTyping(PlateSheet::Samples, QStringLiteral("S2"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Tab);
    EXPECT_EQ(f.cell(PlateSheet::Samples, 2, 11), QStringLiteral("S2"));
    EXPECT_EQ(f.wb->sheet().col(), 12);
}
