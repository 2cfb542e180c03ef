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

TEST(WorkbenchStart, RemembersReaderAndFilterAcrossAShutdown)
{
    WorkbenchFixture f;
    f.addReader(QStringLiteral("Multiskan"), {405, 450, 492, 620});
    {
        Workbench &wb = f.start();
        wb.selectComboIndex(Workbench::Readers, indexOf(wb.combo(Workbench::Readers), QStringLiteral("Multiskan")));
        EXPECT_EQ(wb.combo(Workbench::Filters).index, 0); // the default filter
        wb.selectComboIndex(Workbench::Filters, 2);
        ASSERT_TRUE(wb.queryUnload());
    }
    Workbench &wb = f.start();
    EXPECT_EQ(wb.combo(Workbench::Readers).text(), QStringLiteral("Multiskan"));
    EXPECT_EQ(wb.combo(Workbench::Filters).index, 2);
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
    ASSERT_TRUE(wb.queryUnload());
    DbConnection db = f.folder.open();
    EXPECT_FALSE(MiscSettings(db).lastUserReaderID().has_value());
    EXPECT_EQ(MiscSettings(db).lastUserFilterNo(), -1);
}

// A plate never stored holds empty raw ODs and one flag a well; once stored, both are well lists.
TEST(PlateRecord, StoredOnceTakesTheWellListForms)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    EXPECT_TRUE(clsPlates::getNewPlateRecordSet(7).text(u"RawODs").isEmpty());
    wb.storePlateRecord();
    EXPECT_EQ(wb.plates().text(u"IncludeExcludeFlags").size(), 192);
    EXPECT_EQ(splitWellList(wb.plates().text(u"RawODs")).count(QStringLiteral("0")), 96);
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
    EXPECT_EQ(s.text(PlateSheet::ODs, 8, 12), QStringLiteral("1.234"));
    EXPECT_EQ(s.getRawOD(1, 1), 0.1234567890123);
    EXPECT_EQ(s.getInclusionFlag(2, 1), 0);
    EXPECT_TRUE(s.isMarked(2, 1));
    EXPECT_EQ(wb.combo(Workbench::Readers).text(), QStringLiteral("Multiskan"));
    EXPECT_EQ(f.prompt.count(), 0);

    wb.storePlateRecord();
    for (const QString &field : clsPlates::fieldNames())
        EXPECT_EQ(wb.plates().value(field), stored.value(field)) << field.toStdString();
}

// A plate never stored takes over the raw ODs and flags on screen; so does a new run, whose
// panel refresh then puts back every well that holds no control.
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
    wb.fileNew();
    EXPECT_EQ(wb.sheet().rawODAt(5), 0.75);
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
    EXPECT_EQ(f.prompt.texts(),
              (QStringList{QStringLiteral("The reader previously selected for this plate no longer exists."),
                           QStringLiteral("The filter previously selected for this plate no longer exists.")}));
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

// New on unsaved work asks first: Cancel keeps everything, No starts a fresh run.
TEST(RunCommands, NewAsksAboutUnsavedWork)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    wb.sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("S1"));
    wb.setDirty(true);
    const QVariant runID = wb.plates().value(u"RunID");
    QSignalSpy tab(&wb, &Workbench::tabRequested);
    f.prompt.queueAnswer(MsgAnswer::Cancel);
    wb.fileNew();
    EXPECT_EQ(f.prompt.last().text, QStringLiteral("Save changes to 'No Name'?"));
    EXPECT_TRUE(wb.isDirty());
    EXPECT_EQ(wb.sheet().text(PlateSheet::Samples, 1, 1), QStringLiteral("S1"));
    EXPECT_EQ(wb.plates().value(u"RunID"), runID);
    EXPECT_EQ(tab.count(), 0);

    f.prompt.queueAnswer(MsgAnswer::No);
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

// Yellow past one hundred changes, told when the light is next shown with a notice; a start
// on a yellow light shows no notice, the next save does.
TEST(CompactLight, TurnsYellowPastOneHundredSaves)
{
    WorkbenchFixture f;
    {
        Workbench &wb = f.start();
        QSignalSpy notice(&wb, &Workbench::compactNoticeRequested);
        MiscSettings(f.folder.open()).setChangesSinceLastCompact(99);
        wb.noteDatabaseChanges();
        wb.showCompactLight(true);
        EXPECT_FALSE(wb.compactLight().yellow);
        wb.noteDatabaseChanges();
        wb.showCompactLight(false);
        EXPECT_TRUE(wb.compactLight().yellow);
        EXPECT_EQ(notice.count(), 0);
        wb.showCompactLight(true);
        EXPECT_EQ(notice.count(), 1);
    }
    Workbench &wb = f.start();
    EXPECT_TRUE(wb.compactLight().yellow);
    QSignalSpy notice(&wb, &Workbench::compactNoticeRequested);
    wb.setDirty(true);
    wb.fileSave(); // a save of a new run goes through Save As
    EXPECT_EQ(notice.count(), 1);
}

// Below the kit's minimum, at it, at its recommendation; an excluded control does not count.
TEST(TestPanel, MarksFollowTheCountOfControls)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    const QString htv = QStringLiteral("HTV 402"); // one PC needed, two recommended
    wb.selectComboIndex(Workbench::Tests, indexOf(wb.combo(Workbench::Tests), htv));
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("xmark"));
    wb.sheet().setText(PlateSheet::Samples, 1, 1, QStringLiteral("PC"));
    wb.refreshTestPanel(htv);
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("bluecheck"));
    wb.sheet().setText(PlateSheet::Samples, 2, 1, QStringLiteral("PC"));
    wb.refreshTestPanel(htv);
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("greencheck"));
    wb.sheet().setInclusionFlag(2, 1, 0);
    wb.refreshTestPanel(htv);
    EXPECT_EQ(wb.testPanel().pcCurrent, QStringLiteral("1"));
    EXPECT_EQ(wb.testPanel().pcMark, QStringLiteral("bluecheck"));
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

// A technician no longer on the list is told and the first entry taken; a stored name
// padded with blanks matches when trimmed.
TEST(Technicians, AreMatchedTrimmedAndAVanishedOneIsTold)
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
    wb.plates().setValue(u"TechName", QStringLiteral("Someone Gone"));
    wb.showPlateInfo();
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().title, QStringLiteral("Technician No Longer Exists"));
    EXPECT_EQ(wb.combo(Workbench::Technicians).index, 0);
}
