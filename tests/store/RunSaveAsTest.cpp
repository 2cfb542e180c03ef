// Saving runs: Save As into a folder, the plain save of a known run, overwriting, the id
// rule, and the outcome the main window reads.
#include "QtPrinters.h"
#include "RunSaveDesk.h"

#include <gtest/gtest.h>

namespace {

using End = RunBrowser::CommandEnd;

struct SaveAs : RunSaveDesk {
    qint64 runID(const QString &name, const QString &folder = kDeliveryFolderName) const
    {
        return RunPlates::runID(temp.open(), folder, name);
    }
    int runCount() const { return count(QStringLiteral("SELECT COUNT(*) FROM Runs")); }
    int plateRowCount() const { return count(QStringLiteral("SELECT COUNT(*) FROM Plates")); }
};

QList<qint64> runIDsOf(const RecordSet &plates)
{
    QList<qint64> ids;
    for (int row = 0; row < plates.recordCount(); ++row)
        ids.append(plates.valueAt(row, u"RunID").toLongLong());
    return ids;
}

TEST(SavingARun, SaveAsOfANewRunWritesItsRunRowAndOneRowPerPlateUnderTheNameAsTyped)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(3, 1), QStringLiteral(" Run ¬ A ")), End::Close);
    EXPECT_TRUE(f.dialog.getUserOk());
    EXPECT_EQ(f.dialog.getRunName(), " Run ¬ A ");
    EXPECT_EQ(f.runID(QStringLiteral(" Run ¬ A ")), 1);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 3);
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(SavingARun, APlainSaveRewritesTheRowsOnceAndDropsThePlatesDeletedFromTheRun)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(4, 1), QStringLiteral("Run A")), End::Close);
    RecordSet changed = f.dialog.getPlatesRecord();
    RunPlates::retag(changed, QStringLiteral("second"));
    changed.setPosition(1);
    changed.deleteCurrent();
    changed.moveFirst();
    f.dialog.setPlatesRecord(changed);
    f.dialog.cancel();
    ASSERT_TRUE(f.dialog.simpleSave());
    ASSERT_TRUE(f.dialog.simpleSave());
    EXPECT_TRUE(f.dialog.getUserOk());

    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 3);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"second"});
    EXPECT_TRUE(
        f.temp.open().scalar(QStringLiteral("SELECT PlateID FROM Plates WHERE PlateName = 'Plate #2'")).isNull());
    EXPECT_EQ(f.plateRowCount(), 3);
    EXPECT_EQ(f.runCount(), 1);
}

TEST(SavingARun, SaveAsOfASavedRunMakesASecondRunWithItsOwnIdAndRows)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(2, 1), QStringLiteral("Run A")), End::Close);
    RecordSet copy = f.dialog.getPlatesRecord();
    RunPlates::retag(copy, QStringLiteral("copy"));
    copy.setPosition(1);
    ASSERT_EQ(f.saveAs(copy, QStringLiteral("Run B")), End::Close);

    EXPECT_EQ(f.runCount(), 2);
    EXPECT_EQ(f.runID(QStringLiteral("Run A")), 1);
    EXPECT_EQ(f.runID(QStringLiteral("Run B")), 2);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"first"});
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 2), QStringList{"copy"});
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 2), 2);
    // The run in hand is now the new one, on the same plate.
    const RecordSet inHand = f.dialog.getPlatesRecord();
    EXPECT_EQ(runIDsOf(inHand), (QList<qint64>{2, 2}));
    EXPECT_EQ(inHand.text(u"PlateName"), "Plate #2");
    EXPECT_EQ(f.dialog.getRunName(), "Run B");
}

TEST(SavingARun, OverwritingAnotherRunOfTheFolderAsksThenReplacesItAndANewRunKeepsItsId)
{
    SaveAs f;
    const QString name = QStringLiteral("Bob's run '1'");
    ASSERT_EQ(f.saveAs(RunPlates::make(5, 1, QStringLiteral("bee")), name), End::Close);
    // Run A was never saved: the id it was handed at New is still free.
    f.prompt.queueAnswer(MsgAnswer::Yes);
    ASSERT_EQ(f.saveAs(RunPlates::make(2, 2, QStringLiteral("ay")), name), End::Close);

    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last(), (PromptBox{"Run Already Exists",
                                          "The Run 'Bob's run '1'' already exists in this folder.  Do you want to "
                                          "overwrite?",
                                          MsgIcon::Question, MsgButtons::YesNo}));
    EXPECT_EQ(f.runCount(), 1);
    EXPECT_EQ(f.runID(name), 2);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 0);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 2), QStringList{"ay"});
    EXPECT_EQ(f.plateRowCount(), 2);
}

TEST(SavingARun, OverwritingAnotherRunWithASavedRunGivesTheSavedRunANewId)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(2, 1, QStringLiteral("ay")), QStringLiteral("A")), End::Close);
    const RecordSet a = f.dialog.getPlatesRecord();
    ASSERT_EQ(f.saveAs(RunPlates::make(5, 2, QStringLiteral("bee")), QStringLiteral("B")), End::Close);

    f.prompt.queueAnswer(MsgAnswer::Yes);
    ASSERT_EQ(f.saveAs(a, QStringLiteral("B")), End::Close);

    EXPECT_EQ(f.runCount(), 2);
    EXPECT_EQ(f.runID(QStringLiteral("A")), 1);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"ay"});
    const qint64 b = f.runID(QStringLiteral("B"));
    EXPECT_NE(b, 1);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), b), QStringList{"ay"});
    EXPECT_EQ(f.plateRowCount(), 4);
    EXPECT_EQ(runIDsOf(f.dialog.getPlatesRecord()), (QList<qint64>{b, b}));
}

TEST(SavingARun, SavingASavedRunUnderItsOwnNameRewritesItWithItsId)
{
    SaveAs f;
    f.saveOldRun(2);
    f.prompt.queueAnswer(MsgAnswer::Yes);
    ASSERT_EQ(f.saveAs(f.dialog.getPlatesRecord(), QStringLiteral("A")), End::Close);
    EXPECT_EQ(f.runCount(), 1);
    EXPECT_EQ(f.runID(QStringLiteral("A")), 1);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"new"});
    EXPECT_EQ(f.plateRowCount(), 2);
}

TEST(SavingARun, ANameInUseInAnyCaseIsAskedAboutAndNoChangesNothing)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(3, 1, QStringLiteral("bee")), QStringLiteral("Run B")), End::Close);
    f.dialog.cancel();
    f.prompt.queueAnswer(MsgAnswer::No);
    EXPECT_EQ(f.saveAs(RunPlates::make(1, 2), QStringLiteral("RUN b")), End::Stay);
    EXPECT_EQ(f.prompt.last().text, "The Run 'RUN b' already exists in this folder.  Do you want to overwrite?");
    EXPECT_FALSE(f.dialog.getUserOk());
    EXPECT_EQ(f.runCount(), 1);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 3);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"bee"});
}

TEST(SavingARun, TheSameNameInAnotherFolderIsAnotherRun)
{
    SaveAs f;
    RunPlates::addFolder(f.temp.open(), QStringLiteral("Other"));
    ASSERT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral("A")), End::Close);
    ASSERT_EQ(f.saveAs(RunPlates::make(1, 2), QStringLiteral("A"), QStringLiteral("Other")), End::Close);
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.runCount(), 2);
    EXPECT_EQ(f.runID(QStringLiteral("A"), QStringLiteral("Other")), 2);
}

TEST(SavingARun, ABlankNameOnlyAsksForTheFocusAndNoFolderIsTold)
{
    SaveAs f;
    EXPECT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral("   ")), End::FocusRunName);
    EXPECT_EQ(f.prompt.count(), 0);
    f.temp.open().execute(QStringLiteral("DELETE FROM Folders"));
    EXPECT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral("A")), End::Stay);
    EXPECT_EQ(f.prompt.last(),
              (PromptBox{"Folder Required", "Please create a folder to store this run in before saving.",
                         MsgIcon::Exclamation, MsgButtons::Ok}));
    EXPECT_EQ(f.runCount(), 0);
    EXPECT_FALSE(f.dialog.getUserOk());
}

TEST(TheSaveOutcome, KeepsItsValueWhenTheDialogIsShownAgainAndClosedByItsFrame)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral("A")), End::Close);
    f.dialog.load();
    EXPECT_TRUE(f.dialog.getUserOk());
    EXPECT_EQ(f.dialog.getRunName(), "A");
    f.dialog.cancel();
    EXPECT_FALSE(f.dialog.getUserOk());
}

TEST(TheSaveOutcome, HandsBackACopyThatTheCallerCanChangeFreely)
{
    SaveAs f;
    RecordSet plates = RunPlates::make(1, 1);
    f.dialog.setPlatesRecord(plates);
    plates.setValue(u"PlateName", QStringLiteral("changed"));
    RecordSet out = f.dialog.getPlatesRecord();
    out.setValue(u"PlateName", QStringLiteral("changed too"));
    EXPECT_EQ(f.dialog.getPlatesRecord().text(u"PlateName"), "Plate #1");
}

} // namespace
