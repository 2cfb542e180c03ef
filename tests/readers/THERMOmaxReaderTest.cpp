// The Molecular Devices driver: echoed commands on a fake port with the virtual clock (the fault
// matrix reads it on a pseudo-terminal).

#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeSerialPort.h"
#include "ReaderTestData.h"
#include "THERMOmaxInstrument.h"

#include "core/Wells.h"
#include "readers/WellValues.h"
#include "readers/drivers/THERMOmaxReplies.h"
#include "readers/drivers/clsTHERMOmaxReader.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

QString plateCapture()
{
    return readerTestData(QStringLiteral("clsTHERMOmaxReader/plate.cap"));
}

QStringList valuesOf(ReaderDriver &driver, const QString &data)
{
    RecordSet set = WellValues::create();
    driver.fillReaderValues(set, data);
    return wellVals(set);
}

struct Bench {
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakePrompt prompt;
    FakeSerialPort port{clock};
    THERMOmaxInstrument instrument{plateCapture()};
    clsTHERMOmaxReader driver{ReaderEnvironment{prompt, sleeper, QString()}};

    Bench()
    {
        port.setCommPort(3);
        port.setDevice([this](FakeSerialPort &p, const QString &sent) {
            for (const THERMOmaxInstrument::Reply &r : instrument.receive(sent))
                p.reply(r.text, r.afterMs);
        });
    }
    bool read(QString &data, const QString &filterNo = QStringLiteral("2"))
    {
        return driver.readData(port, filterNo, QStringLiteral("450"), data);
    }
};

} // namespace

TEST(THERMOmaxReplies, ThePlateIsEightLinesOfTwelveSevenCharacterFields)
{
    RecordSet set = WellValues::create();
    THERMOmaxReplies::parse(set, plateCapture());
    const QStringList values = wellVals(set);
    ASSERT_EQ(values.size(), 96);
    EXPECT_EQ(values[wells::index(1, 1)], QStringLiteral(" 0.041"));
    EXPECT_EQ(values[wells::index(2, 1)], QStringLiteral(" 0.054"));
    EXPECT_EQ(values[wells::index(1, 2)], QStringLiteral(" 0.198"));
    EXPECT_EQ(values[wells::index(4, 6)], QStringLiteral("  OVER"));
    EXPECT_EQ(values[wells::index(8, 12)], QStringLiteral(" 1.859"));
}

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
    ASSERT_TRUE(b.read(data, QStringLiteral(" 2 ")));
    EXPECT_EQ(b.instrument.commands(), QStringList({"MOD1", "SWV2", "ASCRDP", "LCL"}));
    // One character at a time.
    EXPECT_EQ(b.port.sent().first(), QStringLiteral("M"));
    EXPECT_EQ(b.port.sentText(), QStringLiteral("MOD1SWV2ASCRDPLCL"));
    // The data is what followed the last echo of the read command.
    EXPECT_EQ(data, plateCapture());
    EXPECT_EQ(valuesOf(b.driver, data)[wells::index(4, 6)], QStringLiteral("  OVER"));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_FALSE(b.port.dtrEnable());
    EXPECT_TRUE(b.port.nullDiscard());
    EXPECT_FALSE(b.port.rtsEnable());
    EXPECT_FALSE(b.port.portOpen());
}

TEST(THERMOmaxReader, AWrongEchoOfTheFilterStopsTheReadButTheReaderGoesBackToLocal)
{
    Bench b;
    b.instrument.garbleEchoOf(u'V', u'X');
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("Error setting filter index"));
    EXPECT_EQ(b.prompt.last().title, QString());
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::None);
    // The filter command was cut after its wrong echo; no read; back to local.
    EXPECT_EQ(b.port.sentText(), QStringLiteral("MOD1SWVLCL"));
    EXPECT_FALSE(b.port.portOpen());
}

TEST(THERMOmaxReader, APortThatCannotBeOpenedIsToldAndTheReadFails)
{
    Bench b;
    b.port.failOpen(QStringLiteral("No such file or directory"));
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("COM3: No such file or directory"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::None);
    EXPECT_TRUE(b.port.sent().isEmpty());
}

TEST(THERMOmaxReader, TheCommunicationTestWakesTheReaderAndHasItBeep)
{
    Bench b;
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.instrument.commands(), QStringList({"\r", "BEP"}));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("Test Successful.  Communication settings are valid."));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Information);
    EXPECT_FALSE(b.port.portOpen());
}

TEST(THERMOmaxReader, AReaderThatIsSwitchedOffFailsTheCommunicationTest)
{
    Bench b;
    b.instrument.setSilent(true);
    EXPECT_FALSE(b.driver.testCommunication(b.port));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Failed"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Exclamation);
    EXPECT_FALSE(b.port.portOpen());
}

TEST(THERMOmaxReader, APortThatCannotBeOpenedFailsTheTestWithoutAPortMessage)
{
    Bench b;
    b.port.failOpen(QStringLiteral("Permission denied"));
    EXPECT_FALSE(b.driver.testCommunication(b.port));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Failed"));
}

