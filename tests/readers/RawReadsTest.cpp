// The raw data of reads: kept with the plate as the reader sent them, every read its own
// record, and the ODs derived from them again.
#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeSerialPort.h"
#include "LogicRunDialogs.h"
#include "QtPrinters.h"
#include "TempProgramFolder.h"

#include "core/WellList.h"
#include "readers/RawReadCheck.h"
#include "store/DatabaseError.h"
#include "readers/ReaderDriver.h"
#include "store/RawReads.h"
#include "worksheet/ReadFlow.h"
#include "worksheet/Workbench.h"

#include <QCoreApplication>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

struct ReadAndSave {
    TempProgramFolder temp;
    FakePrompt prompt;
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakeSerialPort port{clock};
    LogicRunDialogs dialogs{temp.folder(), prompt};
    Workbench wb{temp.folder(), prompt, clock, dialogs};
    ReadFlow flow{wb, port, sleeper};

    ReadAndSave()
    {
        wb.load();
        wb.selectComboIndex(Workbench::Tests, wb.combo(Workbench::Tests).findText(QStringLiteral("Orvexa 412")));
        const char *controls[] = {"PC", "PC", "NC", "NC", "NC", "BLANK"};
        for (int k = 0; k < 6; ++k)
            wb.sheet().setTextAt(PlateSheet::Samples, k, QString::fromLatin1(controls[k]));
        wb.refreshTestPanel(wb.combo(Workbench::Tests).text());
    }
    RawReadCheck::Result check(const DbConnection &db)
    {
        return RawReadCheck::check(db, std::nullopt, 1, ReaderEnvironment{prompt, sleeper, temp.path()});
    }
};

TEST(RawReads, EachReadIsKeptAsReceivedAndAReReadAddsARecord)
{
    ReadAndSave f;
    f.flow.cmdReadPlate();
    f.wb.fileSaveAs();
    ASSERT_TRUE(f.dialogs.saveAsUserOk()) << f.prompt.texts().join('\n').toStdString();
    f.clock.advance(60000);
    f.flow.cmdReadPlate();
    f.wb.fileSave();
    f.wb.fileSave(); // a save with no new read stores nothing again

    const DbConnection db = f.temp.open();
    const QVector<RawRead> reads = RawReads::stored(db, 1, 1);
    ASSERT_EQ(reads.size(), 2);
    EXPECT_NE(reads[0].readAt, reads[1].readAt);
    EXPECT_EQ(reads[0].readerName, "Demo");
    EXPECT_EQ(reads[0].text, reads[1].text); // the demo reader sends the same capture
    EXPECT_TRUE(reads[0].text.contains("0.182")) << reads[0].text.toStdString();
    EXPECT_THROW(db.execute(QStringLiteral("UPDATE RawReads SET RawText = ''")), DatabaseError);
    EXPECT_THROW(db.execute(QStringLiteral("DELETE FROM RawReads")), DatabaseError);
}

TEST(RawReads, TheCheckFindsAnODChangedByHandAndTheCommandNamesTheWell)
{
    ReadAndSave f;
    f.flow.cmdReadPlate();
    f.wb.fileSaveAs();
    ASSERT_TRUE(f.dialogs.saveAsUserOk()) << f.prompt.texts().join('\n').toStdString();
    const DbConnection db = f.temp.open();
    EXPECT_EQ(f.check(db).problem, "");
    EXPECT_EQ(f.check(db).differingWells, QStringList());

    QStringList ods = splitWellList(db.scalar("SELECT RawODs FROM Plates WHERE RunID = 1 AND PlateID = 1").toString());
    ods[8] = "0.5"; // A2
    db.execute("UPDATE Plates SET RawODs = ? WHERE RunID = 1 AND PlateID = 1", {joinWellList(ods)});
    const RawReadCheck::Result altered = f.check(db);
    ASSERT_EQ(altered.differingWells.size(), 1);
    EXPECT_TRUE(altered.differingWells[0].startsWith("A2: stored 0.5, read "))
        << altered.differingWells[0].toStdString();

    QProcess cli;
    cli.start(QCoreApplication::applicationDirPath() + "/../tavimetra-cli",
              {"verify", "--db", f.temp.databaseLocation(), "--plate-id", "1"});
    ASSERT_TRUE(cli.waitForFinished(60000));
    EXPECT_EQ(cli.exitCode(), 1);
    EXPECT_TRUE(QString::fromUtf8(cli.readAllStandardError()).contains("A2: stored 0.5"));
    EXPECT_EQ(f.check(db).problem, "");
}

TEST(RawReads, APlateWithoutAKeptReadIsTold)
{
    ReadAndSave f;
    f.wb.fileSaveAs();
    const DbConnection db = f.temp.open();
    EXPECT_EQ(f.check(db).problem, "plate 1 of run 1 has no raw data of a read kept");
    EXPECT_EQ(RawReadCheck::check(db, 9, 1, ReaderEnvironment{f.prompt, f.sleeper, QString()}).problem,
              "run 9 has no plate 1");
}

} // namespace
