// A program killed in the middle of a save: started again as a user starts it, it opens
// without a box, and the run it finds is whole, either as it was before that save or as
// that save made it, never a mix and never less.
#include "ChildProcess.h"
#include "QtPrinters.h"
#include "RestartedProgram.h"
#include "RunSaveDesk.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <memory>
#include <unistd.h>

namespace {

constexpr int kPlates = 50;

// A child that saves the run again and again, each time with a new tag "gN", and tells 'c'
// after each save that was made lasting. With stopAtPlate > 0 the first save tells 'x'
// once that many plate rows are in, and waits there to be killed.
std::unique_ptr<ChildProcess> startSavingChild(const ProgramFolder &folder, const RecordSet &plates, int stopAtPlate)
{
    return std::make_unique<ChildProcess>([&folder, &plates, stopAtPlate](int pipeOut) {
        FakePrompt prompt;
        RunSaveAsLogic dialog(folder, prompt);
        if (stopAtPlate > 0) {
            dialog.setSaveProgress([pipeOut, stopAtPlate](int written) {
                if (written == stopAtPlate) {
                    ChildProcess::tell(pipeOut, 'x');
                    ChildProcess::waitToBeKilled();
                }
            });
        }
        RecordSet working = copyRecordset(plates);
        for (int generation = 1;; ++generation) {
            RunPlates::retag(working, QStringLiteral("g%1").arg(generation));
            dialog.setPlatesRecord(working);
            if (!dialog.simpleSave())
                return 2;
            ChildProcess::tell(pipeOut, 'c');
        }
    });
}

struct Crash : RunSaveDesk {
    RecordSet saved;

    Crash()
    {
        EXPECT_EQ(saveAs(RunPlates::make(kPlates, 1, QStringLiteral("g0")), QStringLiteral("Big run")),
                  RunBrowser::CommandEnd::Close);
        saved = dialog.getPlatesRecord();
    }

    // The program starts again without a box, and the run it finds is whole, with one tag
    // for all its plates.
    QString expectWholeRunAfterRestart() const
    {
        const RestartedProgram restart = RestartedProgram::run(temp.folder());
        EXPECT_TRUE(restart.started);
        EXPECT_EQ(restart.boxes, QStringList());
        const DbConnection db = temp.open();
        EXPECT_EQ(db.scalar(QStringLiteral("PRAGMA integrity_check")).toString(), "ok");
        EXPECT_EQ(RunPlates::runID(db, kDeliveryFolderName, QStringLiteral("Big run")), 1);
        EXPECT_EQ(RunPlates::rowCount(db, 1), kPlates);
        const QStringList tags = RunPlates::tags(db, 1);
        EXPECT_EQ(tags.size(), 1) << tags.join(',').toStdString();
        EXPECT_EQ(db.scalar(QStringLiteral("SELECT COUNT(DISTINCT PlateName) FROM Plates WHERE RunID = 1")).toInt(),
                  kPlates);
        return tags.value(0);
    }

    // The trail agrees with the run: each plate's last lot change in it is the lot the
    // plate has (none while it still has the lot of the first save), so no save that was
    // lost left rows, and none that was kept lost its rows.
    void expectTrailInStepWithTheRun() const
    {
        const DbConnection db = temp.open();
        EXPECT_EQ(
            db.scalar(QStringLiteral(
                          "SELECT COUNT(*) FROM Plates p WHERE RunID = 1 AND LotNumber <> COALESCE("
                          "(SELECT NewValue FROM AuditTrail a WHERE a.FieldName = 'LotNumber' AND a.RunID = 1 "
                          "AND a.PlateID = p.PlateID ORDER BY EntryID DESC LIMIT 1), 'Lot ' || p.PlateID || ' g0')"))
                .toInt(),
            0);
    }
};

TEST(KilledDuringASave, HalfWayThroughThePlatesTheOldRunIsFoundWhole)
{
    Crash f;
    const std::unique_ptr<ChildProcess> child = startSavingChild(f.temp.folder(), f.saved, kPlates / 2);
    char byte = 0;
    const bool reached = child->readByte(byte);
    child->kill();
    ASSERT_TRUE(reached) << "the child never got half-way through its save";
    ASSERT_EQ(byte, 'x');

    // The save was under way: its journal is still beside the database.
    EXPECT_TRUE(QFileInfo::exists(f.temp.databasePath() + QStringLiteral("-journal")));
    EXPECT_EQ(f.expectWholeRunAfterRestart(), "g0");
    f.expectTrailInStepWithTheRun();
}

TEST(KilledDuringASave, AtAnyMomentTheRunIsFoundWholeOldOrNew)
{
    Crash f;
    QRandomGenerator random(20261123);
    int killedMidSave = 0;
    for (int round = 0; round < 6; ++round) {
        const std::unique_ptr<ChildProcess> child = startSavingChild(f.temp.folder(), f.saved, 0);
        char byte = 0;
        const bool saving = child->readByte(byte); // one save went through: the loop runs
        ::usleep(random.bounded(2000, 60000));
        child->kill();
        ASSERT_TRUE(saving) << "the child made no save";

        if (QFileInfo::exists(f.temp.databasePath() + QStringLiteral("-journal")))
            ++killedMidSave;
        const QString tag = f.expectWholeRunAfterRestart();
        ASSERT_TRUE(tag.startsWith('g'));
        EXPECT_GE(tag.mid(1).toInt(), 1) << "round " << round;
        f.expectTrailInStepWithTheRun();
    }
    RecordProperty("RoundsKilledMidSave", killedMidSave);
}

} // namespace
