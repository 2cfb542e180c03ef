// The Molecular Devices driver: echoed commands on a fake port with the virtual clock (the
// fault matrix reads it on a pseudo-terminal).

#include "ReaderTestData.h"

#include "readers/drivers/THERMOmaxReplies.h"
#include "readers/drivers/clsTHERMOmaxReader.h"

#include <gtest/gtest.h>

namespace {

struct Bench : DriverBench<clsTHERMOmaxReader> {
    Bench() : DriverBench(SerialInstrument::Model::THERMOmax, 3) {}
    bool read(QString &data) { return DriverBench::read(data, QStringLiteral(" 2 ")); }
};

} // namespace

TEST(THERMOmaxReplies, AnEchoIsComparedInCapitals)
{
    EXPECT_TRUE(THERMOmaxReplies::echoMatches(u'B', QStringLiteral("b")));
    EXPECT_TRUE(THERMOmaxReplies::echoMatches(u'B', QStringLiteral("Bxyz")));
    EXPECT_FALSE(THERMOmaxReplies::echoMatches(u'b', QStringLiteral("b")));
    EXPECT_FALSE(THERMOmaxReplies::echoMatches(u'B', QString()));
    EXPECT_FALSE(THERMOmaxReplies::echoMatches(u'B', QStringLiteral("E")));
}

TEST(THERMOmaxReader, AReadSetsModeAndFilterReadsAndGoesBackToLocal)
{
    Bench b;
    QString data;
    ASSERT_TRUE(b.read(data)) << b.told();
    EXPECT_EQ(b.instrument.commands(), QStringList({"MOD1", "SWV2", "ASCRDP", "LCL"}));
    // One character at a time.
    EXPECT_EQ(b.port.sent().first(), QStringLiteral("M"));
    // The data is what followed the last echo of the read command.
    EXPECT_EQ(data, plateCapture(SerialInstrument::Model::THERMOmax));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_FALSE(b.port.dtrEnable());
    EXPECT_TRUE(b.port.nullDiscard());
    EXPECT_FALSE(b.port.portOpen());
}

TEST(THERMOmaxReader, AWrongEchoOfTheFilterStopsTheReadButTheReaderGoesBackToLocal)
{
    Bench b;
    b.instrument.garbleEchoOf(u'V', u'X');
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(b.prompt.texts(), QStringList({"Error setting filter index"}));
    // The filter command was cut after its wrong echo; no read; back to local.
    EXPECT_EQ(b.port.sentText(), QStringLiteral("MOD1SWVLCL"));
    EXPECT_FALSE(b.port.portOpen());
}

TEST(THERMOmaxReader, AReaderThatIsSwitchedOffFailsTheCommunicationTest)
{
    Bench b;
    b.instrument.setSilent(true);
    EXPECT_FALSE(b.driver.testCommunication(b.port));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Failed"));
}
