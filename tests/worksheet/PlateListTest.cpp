#include "FakeWorksheetDialogs.h"
#include "WorkbenchFixture.h"

#include "store/clsPlates.h"
#include "worksheet/PlatesEditLogic.h"

#include <gtest/gtest.h>

namespace {

RecordSet platesWithIds(std::initializer_list<int> ids)
{
    RecordSet set = clsPlates::getNewPlateRecordSet(5);
    set.clear();
    for (int id : ids) {
        clsPlates::addDefaultPlate(set, id, QStringLiteral("P%1").arg(id), 5);
        set.setValue(u"TechName", QStringLiteral("Ann"));
    }
    set.moveFirst();
    return set;
}

} // namespace

TEST(DeletePlate, TheOnlyPlateCannotGo)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.deletePlate();
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().title, QStringLiteral("At Least One Plate Required"));
}

TEST(PlatesEdit, ANewPlateTakesTheFirstFreeIdAndName)
{
    FakePrompt prompt;
    PlatesEditLogic logic(prompt);
    RecordSet plates = platesWithIds({1, 3});
    plates.setPosition(1);
    plates.setValue(u"PlateName", QStringLiteral("New Plate 1"));
    logic.setPlatesRecord(plates);
    logic.setSelectedPlate(QStringLiteral("P1"));
    logic.load();
    logic.cmdNewPlate();
    const RecordSet out = logic.getPlatesRecord();
    ASSERT_EQ(out.recordCount(), 3);
    EXPECT_EQ(out.valueAt(1, u"PlateID").toInt(), 2);
    EXPECT_EQ(out.valueAt(1, u"PlateName").toString(), QStringLiteral("New Plate 2"));
    EXPECT_EQ(out.valueAt(1, u"TechName").toString(), QStringLiteral("Ann"));
    EXPECT_EQ(out.valueAt(1, u"RunID").toInt(), 5);
    EXPECT_EQ(logic.plateList(), (QStringList{"P1", "New Plate 2", "New Plate 1"}));
    EXPECT_EQ(logic.box(PlatesEditLogic::PlateName), QStringLiteral("New Plate 2"));
}

TEST(PlatesEdit, NamesDifferingOnlyInCaseAreRefused)
{
    FakePrompt prompt;
    PlatesEditLogic logic(prompt);
    logic.setPlatesRecord(platesWithIds({1, 2}));
    logic.setSelectedPlate(QStringLiteral("P2"));
    logic.load();
    logic.setBox(PlatesEditLogic::PlateName, QStringLiteral("p1"));
    EXPECT_FALSE(logic.cmdOK());
    EXPECT_EQ(prompt.last().title, QStringLiteral("Duplicate Plate Name"));
    EXPECT_FALSE(logic.getUserOk());
    // The line stays where it was when the boxes are refused.
    EXPECT_FALSE(logic.selectLine(0));
    EXPECT_EQ(logic.selectedLine(), 1);
}

TEST(PlatesEdit, ExpiryDatesAreCheckedAndAnEmptyMonthMeansNone)
{
    FakePrompt prompt;
    PlatesEditLogic logic(prompt);
    logic.setPlatesRecord(platesWithIds({1}));
    logic.setSelectedPlate(QStringLiteral("P1"));
    logic.load();
    logic.setBox(PlatesEditLogic::ExpMonth, QStringLiteral("13"));
    logic.setBox(PlatesEditLogic::ExpDay, QStringLiteral("1"));
    logic.setBox(PlatesEditLogic::ExpYear, QStringLiteral("2027"));
    EXPECT_FALSE(logic.cmdOK());
    EXPECT_EQ(prompt.last().title, QStringLiteral("Invalid Date"));
    EXPECT_EQ(logic.focusBox(), PlatesEditLogic::ExpMonth);

    logic.setBox(PlatesEditLogic::ExpMonth, QStringLiteral("2"));
    logic.setBox(PlatesEditLogic::ExpDay, QStringLiteral("28"));
    ASSERT_TRUE(logic.cmdOK());
    EXPECT_EQ(logic.getPlatesRecord().valueAt(0, u"ExpDate").toDate(), QDate(2027, 2, 28));

    logic.setBox(PlatesEditLogic::ExpMonth, QString());
    ASSERT_TRUE(logic.cmdOK());
    EXPECT_TRUE(logic.getPlatesRecord().valueAt(0, u"ExpDate").isNull());
}

TEST(PlatesEdit, OkNeedsAPlate)
{
    FakePrompt prompt;
    PlatesEditLogic logic(prompt);
    logic.setPlatesRecord(platesWithIds({1}));
    logic.setSelectedPlate(QStringLiteral("P1"));
    logic.load();
    logic.cmdDelete();
    EXPECT_TRUE(logic.plateList().isEmpty());
    EXPECT_FALSE(logic.cmdOK());
    EXPECT_EQ(prompt.last().title, QStringLiteral("One Plate Required."));
    logic.cmdNewPlate();
    EXPECT_TRUE(logic.cmdOK());
    EXPECT_EQ(logic.getSelectedPlate(), QStringLiteral("New Plate 1"));
}

TEST(PlatesEdit, CancelAfterAddingThreeLeavesTheRunAsItWas)
{
    WorkbenchFixture f;
    FakeWorksheetDialogs dialogs;
    Workbench &wb = f.start();
    wb.setWorksheetDialogs(dialogs);
    dialogs.onEditPlates = [](PlatesEditLogic &logic) {
        logic.cmdNewPlate();
        logic.cmdNewPlate();
        logic.cmdNewPlate();
        logic.cmdCancel();
    };
    wb.editPlates(true);
    EXPECT_EQ(wb.plates().recordCount(), 1);
    EXPECT_FALSE(wb.isDirty());
    EXPECT_EQ(wb.combo(Workbench::Plates).count(), 1);
}

// Add opens the dialog on a new plate and OK shows it; Delete asks, and Yes removes the plate on screen.
TEST(PlatesEdit, APlateAddedAndDeletedOnScreen)
{
    WorkbenchFixture f;
    FakeWorksheetDialogs dialogs;
    Workbench &wb = f.start();
    wb.setWorksheetDialogs(dialogs);
    dialogs.onEditPlates = [](PlatesEditLogic &logic) {
        EXPECT_EQ(logic.box(PlatesEditLogic::PlateName), QStringLiteral("New Plate 1"));
        logic.setBox(PlatesEditLogic::PlateName, QStringLiteral("Herd B"));
        logic.setBox(PlatesEditLogic::LotNumber, QStringLiteral("L-77"));
        ASSERT_TRUE(logic.cmdOK());
    };
    wb.editPlates(true);
    EXPECT_EQ(wb.plates().recordCount(), 2);
    EXPECT_EQ(wb.combo(Workbench::Plates).text(), QStringLiteral("Herd B"));
    EXPECT_EQ(wb.plates().text(u"LotNumber"), QStringLiteral("L-77"));
    EXPECT_EQ(wb.plateInfo().plateName, QStringLiteral("Herd B"));
    EXPECT_TRUE(wb.isDirty());

    f.prompt.queueAnswer(MsgAnswer::No);
    wb.deletePlate();
    EXPECT_EQ(f.prompt.last().text, QStringLiteral("Are you sure you want to delete plate 'Herd B'?"));
    EXPECT_EQ(wb.plates().recordCount(), 2);
    wb.setDirty(false);
    f.prompt.queueAnswer(MsgAnswer::Yes);
    wb.deletePlate();
    EXPECT_EQ(wb.plates().recordCount(), 1);
    EXPECT_EQ(wb.combo(Workbench::Plates).texts, QStringList{QStringLiteral("Plate #1")});
    EXPECT_TRUE(wb.isDirty());
}
