#include "FakeClipboard.h"
#include "FakeWorksheetDialogs.h"
#include "WorkbenchFixture.h"

#include "core/WellList.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/SheetClipboard.h"

#include <gtest/gtest.h>

namespace {

struct LayoutFixture : WorkbenchFixture {
    FakeWorksheetDialogs dialogs;
    FakeClipboard clipboard;

    Workbench &begin()
    {
        Workbench &w = start();
        w.setWorksheetDialogs(dialogs);
        w.setClipboard(clipboard);
        return w;
    }
    // Types text into a cell as the user does: start of edit, then its end.
    void type(int sheet, int row, int col, const QString &text)
    {
        wb->sheet().setCursor(row, col);
        LayoutEditor editor(*wb);
        editor.beginEdit();
        editor.afterEdit(sheet, row, col, text);
    }
    const QString &cell(int sheet, int row, int col) const { return wb->sheet().text(sheet, row, col); }
};

} // namespace

TEST(CellEditing, ReenteringTheSameTextLeavesNoUndoRecord)
{
    LayoutFixture f;
    f.begin();
    f.type(PlateSheet::Samples, 1, 1, QStringLiteral("Cow 1"));
    EXPECT_EQ(f.wb->undoStack().size(), 1);
    f.type(PlateSheet::Samples, 1, 1, QStringLiteral("Cow 1 "));
    EXPECT_EQ(f.wb->undoStack().size(), 1);
}

// A control name typed in any case is that control, twinned in the other sheet, over the
// whole selection; the cursor goes down one well.
TEST(CellEditing, AnEditInASelectionFillsTheSelection)
{
    LayoutFixture f;
    f.begin();
    LayoutEditor editor(*f.wb);
    f.wb->sheet().setSelection(1, 1, 3, 2);
    editor.beginEdit();
    editor.afterEdit(PlateSheet::Samples, 1, 1, QStringLiteral(" nc "));
    for (int c = 1; c <= 2; ++c)
        for (int r = 1; r <= 3; ++r) {
            EXPECT_EQ(f.cell(PlateSheet::Samples, r, c), QStringLiteral("NC"));
            EXPECT_EQ(f.cell(PlateSheet::Groups, r, c), QStringLiteral("NC"));
        }
    EXPECT_TRUE(f.cell(PlateSheet::Samples, 4, 1).isEmpty());
    EXPECT_TRUE(f.wb->isDirty());
    EXPECT_TRUE(f.wb->undoEnabled());
    EXPECT_EQ(f.wb->sheet().row(), 2);
}

TEST(CellEditing, TheDelimiterCannotBeTyped)
{
    LayoutFixture f;
    f.begin();
    f.type(PlateSheet::Samples, 1, 1, QStringLiteral("A") + kWellDelimiter + QStringLiteral("B"));
    EXPECT_EQ(f.cell(PlateSheet::Samples, 1, 1), QStringLiteral("AB"));
    f.wb->storePlateRecord();
    EXPECT_EQ(f.wb->plates().text(u"Samples").count(kWellDelimiter), 96);
}

TEST(GroupCells, SetGroupWithAnOldNameHoldingTheDelimiterStoresAListThatReadsBack)
{
    // Databases from before the rule may hold such a group; the saved run must open.
    LayoutFixture f;
    f.begin();
    f.folder.addGroup(QStringLiteral("Half") + kWellDelimiter + QStringLiteral("Half"));
    f.dialogs.chosenGroup = QStringLiteral("Half") + kWellDelimiter + QStringLiteral("Half");
    f.wb->sheet().setSelection(1, 1, 8, 12);
    LayoutEditor(*f.wb).setGroup();
    f.wb->storePlateRecord();
    const QStringList groups = splitWellList(f.wb->plates().text(u"Groups"));
    EXPECT_EQ(groups[0], QStringLiteral("HalfHalf"));
    EXPECT_EQ(groups[95], QStringLiteral("HalfHalf"));
}

TEST(GroupCells, AKnownGroupInAnyCaseTakesItsStoredSpellingAndCompletes)
{
    LayoutFixture f;
    f.begin();
    f.folder.addGroup(QStringLiteral("O'Brien Farm"));
    f.folder.addGroup(QStringLiteral("Ødegård Farm"));
    f.type(PlateSheet::Groups, 1, 1, QStringLiteral("o'brien farm"));
    f.type(PlateSheet::Groups, 2, 1, QStringLiteral("ØDEGÅRD farm"));
    EXPECT_EQ(f.cell(PlateSheet::Groups, 1, 1), QStringLiteral("O'Brien Farm"));
    EXPECT_EQ(f.cell(PlateSheet::Groups, 2, 1), QStringLiteral("Ødegård Farm"));
    EXPECT_EQ(f.dialogs.groupQuestions, 0);
    EXPECT_EQ(LayoutEditor(*f.wb).groupEditKey({QStringLiteral("ødegÅ"), 5, 0}, u'r', false).text,
              QStringLiteral("ødegÅrd Farm"));
}

TEST(GroupCells, TypingCompletesAndBackspaceDropsTheCompletion)
{
    LayoutFixture f;
    f.begin();
    f.folder.addGroup(QStringLiteral("O'Brien Farm"));
    LayoutEditor editor(*f.wb);
    GroupEditText t = editor.groupEditKey({}, u'o', false);
    EXPECT_EQ(t.text, QStringLiteral("o'Brien Farm"));
    EXPECT_EQ(t.selectionStart, 1);
    EXPECT_EQ(t.selectionLength, 11);
    t = editor.groupEditKey(t, u'\'', false);
    EXPECT_EQ(t.text, QStringLiteral("o'Brien Farm"));
    EXPECT_EQ(t.selectionStart, 2);
    t = editor.groupEditKey(editor.groupEditKey(t, QChar(), true), u'x', false);
    EXPECT_EQ(t.text, QStringLiteral("o'x"));
    EXPECT_EQ(t.selectionLength, 0);
    // A wildcard typed is a character, not a pattern.
    EXPECT_EQ(editor.groupEditKey({}, u'%', false).text, QStringLiteral("%"));
}

// An unknown group asks: Yes adds it, No lets the user choose one, Cancel empties the cell.
TEST(GroupCells, AnUnknownGroupIsAddedChosenOrDropped)
{
    LayoutFixture f;
    f.begin();
    f.dialogs.groupAnswers = {GroupQueryAnswer::Yes, GroupQueryAnswer::No, GroupQueryAnswer::Cancel};
    f.dialogs.chosenGroup = QStringLiteral("Chosen");
    f.type(PlateSheet::Groups, 1, 1, QStringLiteral("New Herd"));
    f.type(PlateSheet::Groups, 1, 2, QStringLiteral("Other"));
    f.type(PlateSheet::Groups, 1, 3, QStringLiteral("Nobody Known"));
    EXPECT_EQ(f.dialogs.groupQuestions, 3);
    EXPECT_EQ(f.dialogs.groupsAdded, QStringList{QStringLiteral("New Herd")});
    EXPECT_EQ(f.cell(PlateSheet::Groups, 1, 1), QStringLiteral("New Herd"));
    EXPECT_EQ(f.cell(PlateSheet::Groups, 1, 2), QStringLiteral("Chosen"));
    EXPECT_TRUE(f.cell(PlateSheet::Groups, 1, 3).isEmpty());
}

TEST(ControlButtons, FillTheSelectionTwinAndMoveOn)
{
    LayoutFixture f;
    f.begin();
    LayoutEditor editor(*f.wb);
    f.wb->sheet().setSelection(1, 1, 2, 1);
    editor.controlButton(PlateSheet::Samples, QStringLiteral("PC"));
    EXPECT_EQ(f.cell(PlateSheet::Groups, 2, 1), QStringLiteral("PC"));
    EXPECT_EQ(f.wb->sheet().row(), 2); // Enter from A1
    EXPECT_EQ(f.wb->testPanel().pcCurrent, QStringLiteral("2"));
}

TEST(ControlButtons, ClearingAControlClearsItsTwinButAGroupLeavesTheSample)
{
    LayoutFixture f;
    f.begin();
    LayoutEditor editor(*f.wb);
    f.type(PlateSheet::Samples, 1, 1, QStringLiteral("PC"));
    f.wb->sheet().setCursor(1, 1);
    editor.controlButton(PlateSheet::Groups, QString());
    EXPECT_TRUE(f.cell(PlateSheet::Samples, 1, 1).isEmpty());

    f.folder.addGroup(QStringLiteral("Herd"));
    f.type(PlateSheet::Samples, 1, 2, QStringLiteral("Calf"));
    f.type(PlateSheet::Groups, 1, 2, QStringLiteral("Herd"));
    f.wb->sheet().setCursor(1, 2);
    editor.controlButton(PlateSheet::Groups, QString());
    EXPECT_EQ(f.cell(PlateSheet::Samples, 1, 2), QStringLiteral("Calf"));
}

// Each key once inside the plate and once across its edge.
TEST(Navigation, WrapsAroundThePlate)
{
    const struct {
        SheetKey key;
        int row, col, toRow, toCol;
    } moves[] = {{SheetKey::Enter, 8, 12, 1, 1}, {SheetKey::Down, 8, 3, 1, 4},  {SheetKey::Down, 7, 3, 8, 3},
                 {SheetKey::Up, 1, 1, 8, 12},    {SheetKey::Up, 1, 5, 8, 4},    {SheetKey::Up, 2, 5, 1, 5},
                 {SheetKey::Left, 1, 1, 8, 12},  {SheetKey::Left, 4, 1, 3, 12}, {SheetKey::Left, 4, 2, 4, 1},
                 {SheetKey::Right, 8, 12, 1, 1}, {SheetKey::Tab, 3, 12, 4, 1},  {SheetKey::Right, 3, 11, 3, 12}};
    LayoutFixture f;
    f.begin();
    for (const auto &m : moves) {
        SCOPED_TRACE(testing::Message() << "key " << int(m.key) << " from " << m.row << "," << m.col);
        f.wb->sheet().setCursor(m.row, m.col);
        LayoutEditor(*f.wb).navigate(m.key, false);
        EXPECT_EQ(f.wb->sheet().row(), m.toRow);
        EXPECT_EQ(f.wb->sheet().col(), m.toCol);
        EXPECT_EQ(f.wb->sheet().rowSel(), m.toRow);
    }
}

TEST(Navigation, ShiftMovesOnlyTheEndOfTheSelection)
{
    LayoutFixture f;
    f.begin();
    f.wb->sheet().setCursor(2, 2);
    LayoutEditor editor(*f.wb);
    editor.navigate(SheetKey::Down, true);
    editor.navigate(SheetKey::Right, true);
    const PlateSheet &s = f.wb->sheet();
    EXPECT_EQ(s.row(), 2);
    EXPECT_EQ(s.col(), 2);
    EXPECT_EQ(s.rowSel(), 3);
    EXPECT_EQ(s.colSel(), 3);
}

TEST(AddSamples, NumbersSamplesDownTheColumnsFromTheCursor)
{
    LayoutFixture f;
    f.begin();
    f.dialogs.samples = {true, QStringLiteral("Cow"), QStringLiteral("Herd"), 3, 7};
    f.wb->sheet().setCursor(7, 1);
    LayoutEditor(*f.wb).addSamples();
    EXPECT_EQ(f.dialogs.lastSampleMax, 90);
    EXPECT_EQ(f.cell(PlateSheet::Samples, 7, 1), QStringLiteral("Cow 7"));
    EXPECT_EQ(f.cell(PlateSheet::Samples, 8, 1), QStringLiteral("Cow 8"));
    EXPECT_EQ(f.cell(PlateSheet::Samples, 1, 2), QStringLiteral("Cow 9"));
    EXPECT_EQ(f.cell(PlateSheet::Groups, 1, 2), QStringLiteral("Herd"));
    EXPECT_EQ(f.wb->undoStack().size(), 1);
    // The last well offers one sample.
    f.dialogs.samples.ok = false;
    f.wb->sheet().setCursor(8, 12);
    LayoutEditor(*f.wb).addSamples();
    EXPECT_EQ(f.dialogs.lastSampleMax, 1);
    EXPECT_EQ(f.wb->undoStack().size(), 1);
}

TEST(Undo, ElevenEditsThenTenUndosLeaveTheFirstEdit)
{
    LayoutFixture f;
    f.begin();
    for (int i = 1; i <= 11; ++i)
        f.type(PlateSheet::Samples, 1, i, QStringLiteral("S%1").arg(i));
    EXPECT_EQ(f.wb->undoStack().size(), 10);
    SheetClipboard clip(*f.wb);
    for (int i = 0; i < 10; ++i)
        clip.undo();
    EXPECT_TRUE(f.wb->undoStack().isEmpty());
    EXPECT_FALSE(f.wb->undoEnabled());
    EXPECT_EQ(f.cell(PlateSheet::Samples, 1, 1), QStringLiteral("S1"));
    for (int i = 2; i <= 11; ++i)
        EXPECT_TRUE(f.cell(PlateSheet::Samples, 1, i).isEmpty()) << i;
}

TEST(Undo, RestoresExclusionFlagsWithTheirMarks)
{
    LayoutFixture f;
    f.begin();
    f.type(PlateSheet::Samples, 1, 1, QStringLiteral("NC"));
    f.wb->excludeControl(1, 1);
    f.type(PlateSheet::Samples, 1, 1, QStringLiteral("Sample"));
    EXPECT_FALSE(f.wb->sheet().isMarked(1, 1));
    SheetClipboard(*f.wb).undo();
    EXPECT_EQ(f.cell(PlateSheet::Samples, 1, 1), QStringLiteral("NC"));
    EXPECT_TRUE(f.wb->sheet().isMarked(1, 1));
    EXPECT_EQ(f.wb->sheet().getInclusionFlag(1, 1), 0);
}

// The Delete key and the control buttons each leave an undo record of the layout before them.
TEST(Undo, TakesBackTheDeleteKeyAndAControlButton)
{
    LayoutFixture f;
    f.begin();
    f.type(PlateSheet::Samples, 1, 1, QStringLiteral("Cow"));
    for (int action = 0; action < 2; ++action) {
        SCOPED_TRACE(action == 0 ? "Delete key" : "control button");
        f.wb->sheet().setCursor(1, 1);
        if (action == 0)
            LayoutEditor(*f.wb).deleteKey(PlateSheet::Samples);
        else
            LayoutEditor(*f.wb).controlButton(PlateSheet::Samples, QStringLiteral("NC"));
        EXPECT_NE(f.cell(PlateSheet::Samples, 1, 1), QStringLiteral("Cow"));
        SheetClipboard(*f.wb).undo();
        EXPECT_EQ(f.cell(PlateSheet::Samples, 1, 1), QStringLiteral("Cow"));
    }
}

// Copy writes tabs and line ends; a cut of a control clears its twin and leaves undo as it was.
TEST(Clipboard, CopyAndCut)
{
    LayoutFixture f;
    f.begin();
    f.type(PlateSheet::Samples, 1, 1, QStringLiteral("a"));
    f.type(PlateSheet::Samples, 1, 2, QStringLiteral("b"));
    f.type(PlateSheet::Samples, 2, 2, QStringLiteral("pc"));
    f.wb->sheet().setSelection(1, 1, 2, 2);
    SheetClipboard(*f.wb).copy(PlateSheet::Samples);
    EXPECT_EQ(f.clipboard.contents, QStringLiteral("a\tb\r\n\tPC\r\n"));
    EXPECT_EQ(f.clipboard.clears, 1);

    f.wb->setUndoEnabled(false);
    f.wb->sheet().setCursor(2, 2);
    SheetClipboard(*f.wb).cut(PlateSheet::Samples);
    EXPECT_EQ(f.clipboard.contents, QStringLiteral("PC\r\n"));
    EXPECT_TRUE(f.cell(PlateSheet::Groups, 2, 2).isEmpty());
    EXPECT_EQ(f.wb->undoStack().size(), 4);
    EXPECT_FALSE(f.wb->undoEnabled());
}

TEST(Clipboard, PasteFillsABlockFromTheCursor)
{
    LayoutFixture f;
    f.begin();
    f.clipboard.contents = QStringLiteral("x1\tx2\r\ny1\tpc\r\n");
    f.wb->sheet().setCursor(3, 4);
    SheetClipboard(*f.wb).paste(PlateSheet::Samples);
    EXPECT_EQ(f.cell(PlateSheet::Samples, 3, 4), QStringLiteral("x1"));
    EXPECT_EQ(f.cell(PlateSheet::Samples, 3, 5), QStringLiteral("x2"));
    EXPECT_EQ(f.cell(PlateSheet::Samples, 4, 4), QStringLiteral("y1"));
    // A control name in any case becomes that control, twinned in the Groups sheet.
    EXPECT_EQ(f.cell(PlateSheet::Samples, 4, 5), QStringLiteral("PC"));
    EXPECT_EQ(f.cell(PlateSheet::Groups, 4, 5), QStringLiteral("PC"));
    EXPECT_TRUE(f.wb->undoEnabled());
    EXPECT_EQ(f.wb->sheet().row(), 3);
}

// A block one row or column too many is refused and changes nothing; one that just fits goes in.
TEST(Clipboard, APasteMustFitOnThePlate)
{
    LayoutFixture f;
    f.begin();
    f.clipboard.contents = QStringLiteral("a\tb\r\nc\td\r\n");
    for (const auto &[row, col] : {std::pair{8, 1}, std::pair{1, 12}}) {
        f.wb->sheet().setCursor(row, col);
        SheetClipboard(*f.wb).paste(PlateSheet::Samples);
        EXPECT_EQ(f.prompt.last().text, QStringLiteral("There are not enough destination cells to paste onto."));
        EXPECT_TRUE(f.cell(PlateSheet::Samples, row, col).isEmpty());
    }
    EXPECT_TRUE(f.wb->undoStack().isEmpty());
    f.wb->sheet().setCursor(7, 11);
    SheetClipboard(*f.wb).paste(PlateSheet::Samples);
    EXPECT_EQ(f.prompt.count(), 2);
    EXPECT_EQ(f.cell(PlateSheet::Samples, 8, 12), QStringLiteral("d"));
}

TEST(Clipboard, BlankClipboardDoesNothing)
{
    LayoutFixture f;
    f.begin();
    for (const char *text : {"", " \t\r\n", "\r\n\r\n"}) {
        f.clipboard.contents = QString::fromLatin1(text);
        SheetClipboard(*f.wb).paste(PlateSheet::Samples);
    }
    EXPECT_TRUE(f.wb->undoStack().isEmpty());
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(Clipboard, ACancelledGroupInThePasteRestoresTheLayout)
{
    LayoutFixture f;
    f.begin();
    f.folder.addGroup(QStringLiteral("Alpha"));
    f.type(PlateSheet::Groups, 1, 3, QStringLiteral("Alpha"));
    f.dialogs.groupAnswers = {GroupQueryAnswer::Cancel};
    f.clipboard.contents = QStringLiteral("Alpha\tAlpha\tUnknown\r\n");
    f.wb->sheet().setCursor(1, 1);
    SheetClipboard(*f.wb).paste(PlateSheet::Groups);
    EXPECT_EQ(f.dialogs.groupQuestions, 1);
    EXPECT_TRUE(f.cell(PlateSheet::Groups, 1, 1).isEmpty());
    EXPECT_TRUE(f.cell(PlateSheet::Groups, 1, 2).isEmpty());
    EXPECT_EQ(f.cell(PlateSheet::Groups, 1, 3), QStringLiteral("Alpha"));
    EXPECT_EQ(f.wb->undoStack().size(), 1); // the typed edit only
}

TEST(Clipboard, LongCellsAreCutAndTheDelimiterDropped)
{
    const QList<QStringList> rows = SheetClipboard::splitClipboardText(
        QString(150, u'x') + u'\t' + u'a' + kWellDelimiter + u'b' + QStringLiteral("\r\nlast"));
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0][0].size(), 100);
    EXPECT_EQ(rows[0][1], QStringLiteral("ab"));
    EXPECT_EQ(rows[1], QStringList{QStringLiteral("last")});
}
