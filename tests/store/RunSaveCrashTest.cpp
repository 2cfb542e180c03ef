// A program killed in the middle of a save: the run found at the next start is whole,
// either as it was before that save or as that save made it, never a mix and never less.
#include "FakePrompt.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/DatabaseSchema.h"
#include "store/RunSaveAsLogic.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <csignal>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kPlates = 50;
constexpr int kPipeTimeoutMs = 30000;

// A child process that saves the run again and again, each time with a new tag "gN", and
// writes one byte to the pipe after each save that was made lasting. With stopAtPlate > 0
// the first save writes 'x' once that many plate rows are in, and waits there to be killed.
pid_t startSavingChild(const ProgramFolder &folder, const RecordSet &plates, int pipeOut, int stopAtPlate)
{
    const pid_t pid = ::fork();
    if (pid != 0)
        return pid;
    // The child: no test assertions here, only work and bytes on the pipe.
    FakePrompt prompt;
    RunSaveAsLogic dialog(folder, prompt);
    if (stopAtPlate > 0) {
        dialog.setSaveProgress([pipeOut, stopAtPlate](int written) {
            if (written == stopAtPlate) {
                const char mark = 'x';
                (void)!::write(pipeOut, &mark, 1);
                for (;;)
                    ::pause();
            }
        });
    }
    RecordSet working = copyRecordset(plates);
    for (int generation = 1;; ++generation) {
        RunPlates::retag(working, QStringLiteral("g%1").arg(generation));
        dialog.setPlatesRecord(working);
        if (!dialog.simpleSave())
            ::_exit(2);
        const char done = 'c';
        if (::write(pipeOut, &done, 1) != 1)
            ::_exit(3);
    }
}

// Waits for one byte from the pipe; false after the timeout.
bool readByte(int pipeIn, char &byte)
{
    pollfd waiting{pipeIn, POLLIN, 0};
    if (::poll(&waiting, 1, kPipeTimeoutMs) != 1)
        return false;
    return ::read(pipeIn, &byte, 1) == 1;
}

void killAndReap(pid_t child)
{
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
}

struct Crash {
    TempProgramFolder temp;
    FakePrompt prompt;
    RecordSet saved;
    int pipeEnds[2] = {-1, -1};

    Crash()
    {
        RunSaveAsLogic dialog(temp.folder(), prompt);
        dialog.setPlatesRecord(RunPlates::make(kPlates, 1, QStringLiteral("g0")));
        dialog.load();
        dialog.setRunNameText(QStringLiteral("Big run"));
        EXPECT_EQ(dialog.save(), RunBrowser::CommandEnd::Close);
        saved = dialog.getPlatesRecord();
        EXPECT_EQ(::pipe(pipeEnds), 0);
    }
    ~Crash()
    {
        ::close(pipeEnds[0]);
        ::close(pipeEnds[1]);
    }

    // The run as the next start finds it: whole, with one tag for all its plates.
    QString expectWholeRun() const
    {
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
};

TEST(KilledDuringASave, HalfWayThroughThePlatesTheOldRunIsFoundWhole)
{
    Crash f;
    const pid_t child = startSavingChild(f.temp.folder(), f.saved, f.pipeEnds[1], kPlates / 2);
    ASSERT_GT(child, 0);
    char byte = 0;
    const bool reached = readByte(f.pipeEnds[0], byte);
    killAndReap(child);
    ASSERT_TRUE(reached) << "the child never got half-way through its save";
    ASSERT_EQ(byte, 'x');

    // The save was under way: its journal is still beside the database.
    EXPECT_TRUE(QFileInfo::exists(f.temp.databasePath() + QStringLiteral("-journal")));
    EXPECT_EQ(f.expectWholeRun(), "g0");
}

TEST(KilledDuringASave, AtAnyMomentTheRunIsFoundWholeOldOrNew)
{
    Crash f;
    QRandomGenerator random(20261123);
    int lastGeneration = 0;
    int killedMidSave = 0;
    for (int round = 0; round < 6; ++round) {
        const pid_t child = startSavingChild(f.temp.folder(), f.saved, f.pipeEnds[1], 0);
        ASSERT_GT(child, 0);
        char byte = 0;
        const bool saving = readByte(f.pipeEnds[0], byte); // one save went through: the loop runs
        ::usleep(random.bounded(2000, 60000));
        killAndReap(child);
        ASSERT_TRUE(saving) << "the child made no save";
        while (true) { // drop what the child wrote before it died
            pollfd left{f.pipeEnds[0], POLLIN, 0};
            if (::poll(&left, 1, 0) != 1 || ::read(f.pipeEnds[0], &byte, 1) != 1)
                break;
        }

        if (QFileInfo::exists(f.temp.databasePath() + QStringLiteral("-journal")))
            ++killedMidSave;
        const QString tag = f.expectWholeRun();
        ASSERT_TRUE(tag.startsWith('g'));
        const int generation = tag.mid(1).toInt();
        EXPECT_GE(generation, 1) << "round " << round;
        lastGeneration = generation;
    }
    EXPECT_GE(lastGeneration, 1);
    RecordProperty("RoundsKilledMidSave", killedMidSave);
}

} // namespace
