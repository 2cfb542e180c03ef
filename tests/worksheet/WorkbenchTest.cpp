#include "WorkbenchFixture.h"

#include "core/LegacyFormat.h"
#include "core/WellList.h"
#include "store/MiscSettings.h"
#include "store/clsPlates.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

namespace {

int indexOf(const ComboState &c, const QString &text)
{
    return c.findText(text);
}

} // namespace

TEST(WorkbenchStart, ShowsANewUnnamedRunOfOnePlate)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    EXPECT_EQ(wb.statusPanel(4), QStringLiteral("Run: No Name"));
    EXPECT_EQ(wb.statusPanel(1), QStringLiteral("Plate: Plate #1"));
    EXPECT_EQ(wb.statusPanel(3), QStringLiteral("Test: Generic"));
    EXPECT_EQ(wb.statusPanel(2), QStringLiteral("11/23/2026"));
    EXPECT_EQ(wb.combo(Workbench::Tests).text(), QStringLiteral("Generic"));
    EXPECT_EQ(wb.combo(Workbench::Tests).count(), 19);
    EXPECT_EQ(wb.combo(Workbench::Plates).texts, QStringList{QStringLiteral("Plate #1")});
    EXPECT_GE(indexOf(wb.combo(Workbench::Readers), QStringLiteral("Demo")), 0);
    EXPECT_GE(indexOf(wb.combo(Workbench::Readers), QStringLiteral("Demo2")), 0);
    EXPECT_EQ(wb.combo(Workbench::Technicians).text(), QStringLiteral("<No Technician Selected>"));
    EXPECT_EQ(wb.plateInfo().plateName, QStringLiteral("Plate #1"));
    EXPECT_EQ(wb.plateInfo().runName, QStringLiteral("No Name"));
    EXPECT_FALSE(wb.isDirty());
    EXPECT_FALSE(wb.undoEnabled());
    EXPECT_EQ(f.prompt.count(), 0) << f.prompt.texts().join(u'|').toStdString();
    EXPECT_FALSE(wb.compactLight().yellow);
    // The Generic kit needs nothing: every count mark is green.
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("greencheck"));
    EXPECT_EQ(wb.testPanel().filterRequired, QStringLiteral("0 nm  - 2000 nm"));
}

TEST(WorkbenchStart, RemembersReaderAndFilterAcrossAShutdown)
{
    WorkbenchFixture f;
    const int id = f.addReader(QStringLiteral("Multiskan"), {405, 450, 492, 620});
    {
        Workbench &wb = f.start();
        wb.selectComboIndex(Workbench::Readers, indexOf(wb.combo(Workbench::Readers), QStringLiteral("Multiskan")));
        EXPECT_EQ(wb.combo(Workbench::Filters).index, 0); // the default filter
        EXPECT_EQ(wb.combo(Workbench::Filters).texts[0], QStringLiteral("1:  405 nm*"));
        wb.selectComboIndex(Workbench::Filters, 2);
        ASSERT_TRUE(wb.queryUnload());
    }
    {
        DbConnection db = f.folder.open();
        MiscSettings settings(db);
        EXPECT_EQ(settings.lastUserFilterNo(), 2);
        EXPECT_EQ(settings.lastUserReaderID(), std::optional<int>(id));
    }
    Workbench &wb = f.start();
    EXPECT_EQ(wb.combo(Workbench::Readers).text(), QStringLiteral("Multiskan"));
    EXPECT_EQ(wb.combo(Workbench::Filters).index, 2);
    EXPECT_EQ(wb.combo(Workbench::Filters).text(), QStringLiteral("3:  492 nm"));
}

TEST(WorkbenchStart, ADeletedLastReaderSelectsNothing)
{
    WorkbenchFixture f;
    const int id = f.addReader(QStringLiteral("Gone"), {450});
    {
        DbConnection db = f.folder.open();
        MiscSettings(db).setLastUserReaderID(id);
        db.execute(QStringLiteral("DELETE FROM UserReaders WHERE UserReaderID = ?"), {id});
    }
    Workbench &wb = f.start();
    EXPECT_FALSE(wb.combo(Workbench::Readers).hasSelection());
    EXPECT_EQ(wb.combo(Workbench::Filters).count(), 0);
    EXPECT_EQ(wb.testPanel().filterCurrent, QStringLiteral("Not Selected"));
    EXPECT_EQ(wb.testPanel().filterMark, QStringLiteral("xmark"));
    ASSERT_TRUE(wb.queryUnload());
    DbConnection db = f.folder.open();
    EXPECT_FALSE(MiscSettings(db).lastUserReaderID().has_value());
    EXPECT_EQ(MiscSettings(db).lastUserFilterNo(), -1);
}

TEST(PlateRecord, NewRecordSetHoldsTheNeverStoredForms)
{
    RecordSet plates = clsPlates::getNewPlateRecordSet(7);
    ASSERT_EQ(plates.recordCount(), 1);
    EXPECT_EQ(plates.value(u"plateid").toInt(), 1);
    EXPECT_EQ(plates.text(u"PLATENAME"), QStringLiteral("Plate #1"));
    EXPECT_EQ(plates.value(u"runID").toLongLong(), 7);
    EXPECT_EQ(plates.text(u"Groups"), emptyWellList());
    EXPECT_EQ(plates.text(u"Results"), emptyWellList());
    EXPECT_TRUE(plates.text(u"RawODs").isEmpty());
    EXPECT_FALSE(plates.isNull(u"RawODs"));
    EXPECT_EQ(plates.text(u"IncludeExcludeFlags"), QString(96, u'1'));
    EXPECT_TRUE(plates.isNull(u"ExpDate"));
    EXPECT_TRUE(plates.isNull(u"FilterUsed"));
    EXPECT_EQ(plates.fieldCount(), 21);
}

TEST(PlateRecord, StoredOnceTakesTheWellListForms)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.storePlateRecord();
    EXPECT_EQ(wb.plates().text(u"IncludeExcludeFlags").size(), 192);
    const QStringList raw = splitWellList(wb.plates().text(u"RawODs"));
    EXPECT_EQ(raw.count(QStringLiteral("0")), 96);
    EXPECT_EQ(wb.plates().text(u"TechName"), QStringLiteral("<No Technician Selected>"));
    EXPECT_EQ(wb.plates().text(u"CurrentTest"), QStringLiteral("Generic"));
}

TEST(PlateRecord, StoreAndLoadGiveBackGridsArraysAndCombos)
{
    WorkbenchFixture f;
    f.addReader(QStringLiteral("Multiskan"), {405, 450, 620});
    Workbench &wb = f.start();
    PlateSheet &s = wb.sheet();
    s.setText(PlateSheet::Groups, 1, 1, QStringLiteral("O'Brien"));
    s.setText(PlateSheet::Samples, 1, 1, QStringLiteral("Cow 1"));
    s.setText(PlateSheet::Samples, 2, 1, QStringLiteral("PC"));
    s.setText(PlateSheet::Samples, 3, 1, QStringLiteral("NC"));
    s.setText(PlateSheet::ODs, 8, 12, QStringLiteral("1.234"));
    s.setText(PlateSheet::Results, 1, 2, QStringLiteral("POS"));
    s.setRawODAt(0, 0.1234567890123);
    s.setRawODAt(95, -0.01);
    s.setInclusionFlag(2, 1, 0);
    s.setInclusionFlag(3, 1, 2);
    wb.selectComboIndex(Workbench::Tests, indexOf(wb.combo(Workbench::Tests), QStringLiteral("Orvexa 412")));
    wb.selectComboIndex(Workbench::Readers, indexOf(wb.combo(Workbench::Readers), QStringLiteral("Multiskan")));
    wb.selectComboIndex(Workbench::Filters, 2);
    wb.storePlateRecord();
    const RecordSet stored = copyRecordset(wb.plates());

    // Change everything on screen, then load the record again.
    for (int sheet = 0; sheet < 4; ++sheet)
        s.clearSheet(sheet);
    s.setRawODAt(0, 2.0);
    s.setInclusionFlag(2, 1, 1);
    wb.selectComboIndex(Workbench::Tests, indexOf(wb.combo(Workbench::Tests), QStringLiteral("Generic")));
    wb.selectComboIndex(Workbench::Readers, indexOf(wb.combo(Workbench::Readers), QStringLiteral("Demo")));
    wb.loadPlateRecord();

    EXPECT_EQ(s.text(PlateSheet::Groups, 1, 1), QStringLiteral("O'Brien"));
    EXPECT_EQ(s.text(PlateSheet::Samples, 2, 1), QStringLiteral("PC"));
    EXPECT_EQ(s.text(PlateSheet::ODs, 8, 12), QStringLiteral("1.234"));
    EXPECT_EQ(s.text(PlateSheet::Results, 1, 2), QStringLiteral("POS"));
    EXPECT_EQ(s.getRawOD(1, 1), 0.1234567890123);
    EXPECT_EQ(s.getRawOD(8, 12), -0.01);
    EXPECT_EQ(s.getInclusionFlag(2, 1), 0);
    EXPECT_TRUE(s.isMarked(2, 1));
    EXPECT_EQ(s.getInclusionFlag(3, 1), 2);
    EXPECT_EQ(wb.combo(Workbench::Tests).text(), QStringLiteral("Orvexa 412"));
    EXPECT_EQ(wb.combo(Workbench::Readers).text(), QStringLiteral("Multiskan"));
    EXPECT_EQ(wb.combo(Workbench::Filters).index, 2);
    EXPECT_EQ(f.prompt.count(), 0);

    wb.storePlateRecord();
    for (const QString &field : clsPlates::fieldNames())
        EXPECT_EQ(wb.plates().value(field), stored.value(field)) << field.toStdString();
}

TEST(PlateRecord, ANeverStoredPlateTakesOverRawODsAndFlags)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.sheet().setRawODAt(5, 0.75);
    wb.sheet().setInclusionFlag(6, 1, 0);
    wb.plates() = clsPlates::getNewPlateRecordSet(9);
    wb.loadPlateRecord();
    EXPECT_EQ(wb.sheet().getInclusionFlag(6, 1), 0);
    EXPECT_TRUE(wb.sheet().isMarked(6, 1));
    EXPECT_EQ(wb.sheet().rawODAt(5), 0.75);
}

TEST(PlateRecord, ANewRunKeepsTheRawODsOfThePlateBefore)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.sheet().setRawODAt(5, 0.75);
    wb.fileNew();
    EXPECT_EQ(wb.sheet().rawODAt(5), 0.75);
    // The panel refresh of the new run puts back every well that holds no control.
    EXPECT_EQ(wb.sheet().getInclusionFlag(6, 1), 1);
}

TEST(PlateRecord, AVanishedReaderOrFilterIsToldAndTheSelectionStays)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    const int before = wb.combo(Workbench::Readers).index;
    wb.plates().setValue(u"CurrentReader", QStringLiteral("Removed Reader"));
    wb.plates().setValue(u"CurrentFilter", 999);
    wb.loadPlateRecord();
    ASSERT_EQ(f.prompt.count(), 2);
    EXPECT_EQ(f.prompt.boxes()[0].title, QStringLiteral("Filter No Longer Exists"));
    EXPECT_EQ(f.prompt.boxes()[0].text, QStringLiteral("The reader previously selected for this plate no longer exists."));
    EXPECT_EQ(f.prompt.boxes()[1].title, QStringLiteral("Filter No Longer Exists"));
    EXPECT_EQ(f.prompt.boxes()[1].text, QStringLiteral("The filter previously selected for this plate no longer exists."));
    EXPECT_EQ(wb.combo(Workbench::Readers).index, before);
}

TEST(PlateRecord, AnUnreadableNumberListLeavesTheScreenAlone)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("keep"));
    wb.plates().setValue(u"Samples", emptyWellList());
    wb.plates().setValue(u"RawODs", QStringLiteral("0.1") + kWellDelimiter + QStringLiteral("abc") + kWellDelimiter);
    EXPECT_THROW(wb.loadPlateRecord(), ConversionError);
    EXPECT_EQ(wb.sheet().text(PlateSheet::Samples, 1, 1), QStringLiteral("keep"));
}

TEST(RunCommands, NewWithCancelKeepsEverything)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("S1"));
    wb.setDirty(true);
    const QVariant runID = wb.plates().value(u"RunID");
    f.prompt.queueAnswer(MsgAnswer::Cancel);
    wb.fileNew();
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().title, QStringLiteral("Save Changes?"));
    EXPECT_EQ(f.prompt.last().text, QStringLiteral("Save changes to 'No Name'?"));
    EXPECT_EQ(f.prompt.last().buttons, MsgButtons::YesNoCancel);
    EXPECT_TRUE(wb.isDirty());
    EXPECT_EQ(wb.sheet().text(PlateSheet::Samples, 1, 1), QStringLiteral("S1"));
    EXPECT_EQ(wb.plates().value(u"RunID"), runID);
}

TEST(RunCommands, NewWithYesThenCancelledSaveKeepsEverything)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("S1"));
    wb.setDirty(true);
    f.prompt.queueAnswer(MsgAnswer::Yes);
    f.runDialogs.saveAsOk = false;
    wb.fileNew();
    EXPECT_EQ(f.runDialogs.saveAsShown, 1);
    EXPECT_TRUE(wb.isDirty());
    EXPECT_EQ(wb.sheet().text(PlateSheet::Samples, 1, 1), QStringLiteral("S1"));
    EXPECT_EQ(wb.statusPanel(4), QStringLiteral("Run: No Name"));
}

TEST(RunCommands, NewWithNoStartsAFreshRun)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("S1"));
    wb.setDirty(true);
    f.prompt.queueAnswer(MsgAnswer::No);
    QSignalSpy tab(&wb, &Workbench::tabRequested);
    wb.fileNew();
    EXPECT_FALSE(wb.isDirty());
    EXPECT_TRUE(wb.sheet().text(PlateSheet::Samples, 1, 1).isEmpty());
    EXPECT_EQ(wb.plates().recordCount(), 1);
    ASSERT_EQ(tab.count(), 1);
    EXPECT_EQ(tab[0][0].toInt(), 1);
}

TEST(RunCommands, OpenDropsUnsavedChangesWithoutAQuestion)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.setDirty(true);
    RecordSet other = clsPlates::getNewPlateRecordSet(42);
    other.setValue(u"PlateName", QStringLiteral("Herd A"));
    other.setValue(u"TechName", QStringLiteral("<No Technician Selected>"));
    f.runDialogs.platesToOpen = other;
    f.runDialogs.openName = QStringLiteral("Spring O'Brien");
    wb.fileOpen();
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_FALSE(wb.isDirty());
    EXPECT_EQ(wb.statusPanel(4), QStringLiteral("Run: Spring O'Brien"));
    EXPECT_EQ(wb.statusPanel(1), QStringLiteral("Plate: Herd A"));
    EXPECT_EQ(wb.plates().value(u"RunID").toInt(), 42);
    EXPECT_EQ(wb.plateInfo().runName, QStringLiteral("Spring O'Brien"));
}

TEST(RunCommands, SaveOfANewRunAsksForAName)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.setDirty(true);
    wb.fileSave();
    EXPECT_EQ(f.runDialogs.saveAsShown, 1);
    EXPECT_EQ(f.runDialogs.simpleSaves, 0);
    EXPECT_FALSE(wb.isDirty());
    EXPECT_EQ(wb.statusPanel(4), QStringLiteral("Run: Saved Run"));
    DbConnection db = f.folder.open();
    EXPECT_EQ(MiscSettings(db).changesSinceLastCompact(), 1.0);
}

TEST(RunCommands, SaveOfAKnownRunSavesInPlace)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    {
        DbConnection db = f.folder.open();
        db.execute(QStringLiteral("INSERT INTO Runs (RunID, RunName, FolderID) VALUES (?, ?, 1)"),
                   {wb.plates().value(u"RunID"), QStringLiteral("Known")});
    }
    wb.setDirty(true);
    wb.fileSave();
    EXPECT_EQ(f.runDialogs.saveAsShown, 0);
    EXPECT_EQ(f.runDialogs.simpleSaves, 1);
    EXPECT_FALSE(wb.isDirty());
    EXPECT_EQ(f.runDialogs.handedOver.text(u"TechName"), QStringLiteral("<No Technician Selected>"));
}

TEST(RunCommands, ExitCancelledKeepsTheRunAndWritesNothing)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.setDirty(true);
    f.prompt.queueAnswer(MsgAnswer::Cancel);
    EXPECT_FALSE(wb.queryUnload());
    f.prompt.queueAnswer(MsgAnswer::No);
    EXPECT_TRUE(wb.queryUnload());
}

TEST(CompactLight, TurnsYellowPastOneHundredSaves)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    QSignalSpy notice(&wb, &Workbench::compactNoticeRequested);
    {
        DbConnection db = f.folder.open();
        MiscSettings(db).setChangesSinceLastCompact(99);
    }
    wb.noteDatabaseChanges();
    wb.showCompactLight(true);
    EXPECT_FALSE(wb.compactLight().yellow);
    EXPECT_EQ(wb.compactLight().toolTip, QStringLiteral("The database is currently compact."));
    EXPECT_EQ(notice.count(), 0);
    wb.noteDatabaseChanges();
    wb.showCompactLight(false);
    EXPECT_TRUE(wb.compactLight().yellow);
    EXPECT_EQ(wb.compactLight().toolTip,
              QStringLiteral("Compacting the database is recommended. Click the light to start."));
    EXPECT_EQ(notice.count(), 0);
    wb.showCompactLight(true);
    EXPECT_EQ(notice.count(), 1);
}

TEST(CompactLight, AYellowStartShowsNoNotice)
{
    WorkbenchFixture f;
    {
        DbConnection db = f.folder.open();
        MiscSettings(db).setChangesSinceLastCompact(150);
    }
    Workbench &wb = f.start();
    EXPECT_TRUE(wb.compactLight().yellow);
    QSignalSpy notice(&wb, &Workbench::compactNoticeRequested);
    wb.setDirty(true);
    wb.fileSave(); // a save of a new run goes through Save As
    EXPECT_EQ(notice.count(), 1);
}

TEST(TestPanel, MarksFollowTheKitsNumbers)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.selectComboIndex(Workbench::Tests, indexOf(wb.combo(Workbench::Tests), QStringLiteral("HTV 402")));
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("xmark"));
    EXPECT_EQ(wb.testPanel().pcRequired, QStringLiteral("1"));
    EXPECT_EQ(wb.testPanel().pcRecommended, QStringLiteral("2"));
    wb.sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("PC"));
    wb.refreshTestPanel(QStringLiteral("HTV 402"));
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("bluecheck"));
    wb.sheet().setText(PlateSheet::Samples, 2, 1, QStringLiteral("PC"));
    wb.refreshTestPanel(QStringLiteral("HTV 402"));
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("greencheck"));
    EXPECT_EQ(wb.testPanel().pcCurrent, QStringLiteral("2"));
    // An excluded control no longer counts.
    wb.sheet().setInclusionFlag(2, 1, 0);
    wb.refreshTestPanel(QStringLiteral("HTV 402"));
    EXPECT_EQ(wb.testPanel().pcCurrent, QStringLiteral("1"));
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("bluecheck"));
    EXPECT_EQ(wb.testPanel().filterRequired, QStringLiteral("450 nm  - 450 nm"));
}

TEST(TestPanel, ASampleWellLosesItsExclusionMark)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("PC"));
    wb.sheet().setInclusionFlag(1, 1, 0);
    wb.refreshTestPanel(QStringLiteral("Generic"));
    EXPECT_TRUE(wb.sheet().isMarked(1, 1));
    wb.sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("Calf 3"));
    wb.refreshTestPanel(QStringLiteral("Generic"));
    EXPECT_FALSE(wb.sheet().isMarked(1, 1));
    EXPECT_EQ(wb.sheet().getInclusionFlag(1, 1), 1);
}

TEST(TestPanel, EmptyTestNameShowsNoMarks)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.refreshTestPanel(QString());
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("nomark"));
    EXPECT_EQ(wb.testPanel().filterMark, QStringLiteral("nomark"));
}

TEST(Technicians, AVanishedTechnicianIsToldAndTheFirstEntryTaken)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.plates().setValue(u"TechName", QStringLiteral("Someone Gone"));
    wb.showPlateInfo();
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().title, QStringLiteral("Technician No Longer Exists"));
    EXPECT_EQ(f.prompt.last().text,
              QStringLiteral("The technician selected for this plate no longer exists.\r\nPlease contact Qorn."));
    EXPECT_EQ(wb.combo(Workbench::Technicians).index, 0);
}

TEST(Technicians, PaddedNamesMatchWhenTrimmed)
{
    WorkbenchFixture f;
    {
        DbConnection db = f.folder.open();
        db.execute(QStringLiteral("INSERT INTO Technicians VALUES (?)"), {QStringLiteral("Ann O'Neil")});
    }
    Workbench &wb = f.start();
    wb.plates().setValue(u"TechName", QStringLiteral("Ann O'Neil      "));
    wb.showPlateInfo();
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(wb.combo(Workbench::Technicians).text(), QStringLiteral("Ann O'Neil"));
}
