// Saving runs: Save As into a folder, the plain save of a known run, overwriting, the id
// rule, and the outcome the main window reads.
#include "FakePrompt.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/DatabaseSchema.h"
#include "store/RunSaveAsLogic.h"

#include <gtest/gtest.h>

namespace {

using End = RunBrowser::CommandEnd;

struct SaveAs {
    TempProgramFolder temp;
    FakePrompt prompt;
    RunSaveAsLogic dialog{temp.folder(), prompt};

    // Shows the dialog, picks the folder, types the name and presses Save.
    End saveAs(const RecordSet &plates, const QString &name, const QString &folder = kDeliveryFolderName)
    {
        dialog.setPlatesRecord(plates);
        dialog.load();
        dialog.selectFolder(int(dialog.folderNames().indexOf(folder)));
        dialog.setRunNameText(name);
        return dialog.save();
    }
    qint64 runID(const QString &name, const QString &folder = kDeliveryFolderName) const
    {
        return RunPlates::runID(temp.open(), folder, name);
    }
    int runCount() const { return temp.open().scalar(QStringLiteral("SELECT COUNT(*) FROM Runs")).toInt(); }
    int plateRowCount() const { return temp.open().scalar(QStringLiteral("SELECT COUNT(*) FROM Plates")).toInt(); }
};

QList<qint64> runIDsOf(const RecordSet &plates)
{
    QList<qint64> ids;
    for (int row = 0; row < plates.recordCount(); ++row)
        ids.append(plates.valueAt(row, u"RunID").toLongLong());
    return ids;
}

TEST(SavingARun, SaveAsOfANewRunWritesItsRunRowAndOneRowPerPlate)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(3, 1), QStringLiteral("Run A")), End::Close);
    EXPECT_TRUE(f.dialog.getUserOk());
    EXPECT_EQ(f.dialog.getRunName(), "Run A");
    EXPECT_EQ(f.runID(QStringLiteral("Run A")), 1);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 3);
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(SavingARun, TwiceLeavesExactlyOneRowPerPlate)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(3, 1), QStringLiteral("Run A")), End::Close);
    RecordSet changed = f.dialog.getPlatesRecord();
    RunPlates::retag(changed, QStringLiteral("second"));
    f.dialog.setPlatesRecord(changed);
    ASSERT_TRUE(f.dialog.simpleSave());
    ASSERT_TRUE(f.dialog.simpleSave());

    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 3);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"second"});
    EXPECT_EQ(f.plateRowCount(), 3);
    EXPECT_EQ(f.runCount(), 1);
}

TEST(SavingARun, PlainSaveDropsThePlatesDeletedFromTheRun)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(4, 1), QStringLiteral("Run A")), End::Close);
    RecordSet fewer = f.dialog.getPlatesRecord();
    fewer.setPosition(1);
    fewer.deleteCurrent();
    fewer.moveFirst();
    f.dialog.setPlatesRecord(fewer);
    ASSERT_TRUE(f.dialog.simpleSave());
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 3);
    EXPECT_TRUE(f.temp.open().scalar(QStringLiteral("SELECT PlateID FROM Plates WHERE PlateName = 'Plate #2'")).isNull());
}

TEST(SavingARun, SaveAsOfASavedRunMakesASecondRunWithItsOwnIdAndRows)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(2, 1), QStringLiteral("Run A")), End::Close);
    RecordSet copy = f.dialog.getPlatesRecord();
    RunPlates::retag(copy, QStringLiteral("copy"));
    ASSERT_EQ(f.saveAs(copy, QStringLiteral("Run B")), End::Close);

    EXPECT_EQ(f.runCount(), 2);
    const qint64 a = f.runID(QStringLiteral("Run A"));
    const qint64 b = f.runID(QStringLiteral("Run B"));
    EXPECT_EQ(a, 1);
    EXPECT_EQ(b, 2);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), a), QStringList{"first"});
    EXPECT_EQ(RunPlates::tags(f.temp.open(), b), QStringList{"copy"});
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), a), 2);
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), b), 2);
    // The run in hand is now the new one.
    EXPECT_EQ(runIDsOf(f.dialog.getPlatesRecord()), (QList<qint64>{2, 2}));
    EXPECT_EQ(f.dialog.getRunName(), "Run B");
}

TEST(SavingARun, TheNewIdOfASavedRunLeavesTheCursorOnTheSamePlate)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(3, 1), QStringLiteral("Run A")), End::Close);
    RecordSet plates = f.dialog.getPlatesRecord();
    plates.setPosition(2);
    ASSERT_EQ(f.saveAs(plates, QStringLiteral("Run B")), End::Close);
    const RecordSet saved = f.dialog.getPlatesRecord();
    EXPECT_EQ(saved.text(u"PlateName"), "Plate #3");
}

TEST(SavingARun, OverwritingAnotherRunOfTheFolderAsksThenReplacesItAndANewRunKeepsItsId)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(5, 1, QStringLiteral("bee")), QStringLiteral("B")), End::Close);
    // Run A was never saved: the id it was handed at New is still free.
    f.prompt.queueAnswer(MsgAnswer::Yes);
    ASSERT_EQ(f.saveAs(RunPlates::make(2, 2, QStringLiteral("ay")), QStringLiteral("B")), End::Close);

    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last(), (PromptBox{"Run Already Exists",
                                           "The Run 'B' already exists in this folder.  Do you want to overwrite?",
                                           MsgIcon::Question, MsgButtons::YesNo}));
    EXPECT_EQ(f.runCount(), 1);
    EXPECT_EQ(f.runID(QStringLiteral("B")), 2);
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
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), b), 2);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), b), QStringList{"ay"});
    EXPECT_EQ(f.plateRowCount(), 4);
    EXPECT_EQ(runIDsOf(f.dialog.getPlatesRecord()), (QList<qint64>{b, b}));
}

TEST(SavingARun, SavingASavedRunUnderItsOwnNameRewritesItWithItsId)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(2, 1), QStringLiteral("A")), End::Close);
    RecordSet plates = f.dialog.getPlatesRecord();
    RunPlates::retag(plates, QStringLiteral("again"));
    f.prompt.queueAnswer(MsgAnswer::Yes);
    ASSERT_EQ(f.saveAs(plates, QStringLiteral("A")), End::Close);
    EXPECT_EQ(f.runCount(), 1);
    EXPECT_EQ(f.runID(QStringLiteral("A")), 1);
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"again"});
    EXPECT_EQ(f.plateRowCount(), 2);
}

TEST(SavingARun, ANameInUseDifferingOnlyInCaseCountsAsTheSameRun)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral("Run A")), End::Close);
    f.prompt.queueAnswer(MsgAnswer::No);
    EXPECT_EQ(f.saveAs(RunPlates::make(1, 2), QStringLiteral("RUN a")), End::Stay);
    EXPECT_EQ(f.prompt.last().text, "The Run 'RUN a' already exists in this folder.  Do you want to overwrite?");
    EXPECT_EQ(f.runCount(), 1);
}

TEST(SavingARun, NoToTheOverwriteQuestionChangesNothingAndKeepsTheDialogOpen)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(3, 1, QStringLiteral("bee")), QStringLiteral("B")), End::Close);
    f.dialog.cancel();
    f.prompt.queueAnswer(MsgAnswer::No);
    EXPECT_EQ(f.saveAs(RunPlates::make(1, 2), QStringLiteral("B")), End::Stay);
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

TEST(SavingARun, ABlankNameOnlyAsksForTheFocus)
{
    SaveAs f;
    EXPECT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral("   ")), End::FocusRunName);
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.runCount(), 0);
    EXPECT_FALSE(f.dialog.getUserOk());
}

TEST(SavingARun, WithoutAFolderTheUserIsToldToMakeOne)
{
    SaveAs f;
    f.temp.open().execute(QStringLiteral("DELETE FROM Folders"));
    EXPECT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral("A")), End::Stay);
    EXPECT_EQ(f.prompt.last(), (PromptBox{"Folder Required",
                                           "Please create a folder to store this run in before saving.",
                                           MsgIcon::Exclamation, MsgButtons::Ok}));
    EXPECT_EQ(f.runCount(), 0);
}

TEST(SavingARun, TheNameIsKeptAsTyped)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral(" Run ¬ A ")), End::Close);
    EXPECT_EQ(f.runID(QStringLiteral(" Run ¬ A ")), 1);
    EXPECT_EQ(f.dialog.getRunName(), " Run ¬ A ");
}

TEST(TheSaveOutcome, KeepsItsValueWhenTheDialogIsShownAgainAndClosedByItsFrame)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral("A")), End::Close);
    // Shown again and closed by the window frame: nothing but load() happens.
    f.dialog.load();
    EXPECT_TRUE(f.dialog.getUserOk());
    EXPECT_EQ(f.dialog.getRunName(), "A");
    f.dialog.cancel();
    EXPECT_FALSE(f.dialog.getUserOk());
}

TEST(TheSaveOutcome, APlainSaveCountsAsOk)
{
    SaveAs f;
    ASSERT_EQ(f.saveAs(RunPlates::make(1, 1), QStringLiteral("A")), End::Close);
    f.dialog.cancel();
    ASSERT_TRUE(f.dialog.simpleSave());
    EXPECT_TRUE(f.dialog.getUserOk());
}

TEST(TheSaveOutcome, HandsBackACopyThatTheCallerCanChangeFreely)
{
    SaveAs f;
    RecordSet plates = RunPlates::make(1, 1);
    f.dialog.setPlatesRecord(plates);
    plates.setValue(u"PlateName", QStringLiteral("changed"));
    RecordSet out = f.dialog.getPlatesRecord();
    EXPECT_EQ(out.text(u"PlateName"), "Plate #1");
    out.setValue(u"PlateName", QStringLiteral("changed too"));
    EXPECT_EQ(f.dialog.getPlatesRecord().text(u"PlateName"), "Plate #1");
}

} // namespace
