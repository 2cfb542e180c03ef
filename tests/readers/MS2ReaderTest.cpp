// The MS2 driver: its five-frame read with the ACK, NAK and ENQ handshakes on a fake port
// with the virtual clock (the fault matrix reads it on a pseudo-terminal).

#include "ReaderTestData.h"

#include "readers/drivers/clsMS2_Reader.h"

#include <gtest/gtest.h>

namespace {

struct Bench : DriverBench<clsMS2_Reader> {
    Bench() : DriverBench(SerialInstrument::Model::MS2, 4) { prompt.setDefaultAnswer(MsgAnswer::Cancel); }
    bool read(QString &data) { return DriverBench::read(data, QStringLiteral("3")); }
};

const QStringList kFrames = {"7", "320", "303", "11", "16"};

} // namespace

TEST(MS2Reader, AReadSendsTheFiveFramesAndCollectsTheDataFrames)
{
    Bench b;
    QString data;
    ASSERT_TRUE(b.read(data)) << b.told();
    EXPECT_EQ(b.instrument.commands(), kFrames);
    // The entry-0 ACK is not sent by a read: it starts with the first frame.
    EXPECT_EQ(b.port.sent().first(), QStringLiteral("\x02"
                                                    "7\x03"));
    EXPECT_TRUE(data.contains(plateCapture(SerialInstrument::Model::MS2)));
    EXPECT_TRUE(data.endsWith(QStringLiteral("\x02"
                                             "16 OK\x03")));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_FALSE(b.port.portOpen());
}

TEST(MS2Reader, ASilentReaderIsAskedAboutAtTheFirstEmptyPollOfEachStep)
{
    Bench b;
    b.instrument.setSilent(true);
    QString data;
    EXPECT_FALSE(b.read(data));
    // Each step asks at its first poll: 200 ms after the frame and the step's wait.
    ASSERT_EQ(b.askedAt.size(), 5);
    EXPECT_EQ(b.askedAt[0], 200 + 1000);
    EXPECT_EQ(b.prompt.boxes()[0].buttons, MsgButtons::RetryCancel);
    EXPECT_EQ(b.askedAt[3] - b.askedAt[2], 200 + 10000);
    EXPECT_EQ(b.instrument.commands(), kFrames);
    EXPECT_FALSE(b.port.portOpen());

    // A retry waits again: here the first frame's acknowledgement comes only after two seconds.
    Bench late;
    late.instrument.script(QStringLiteral("7"), {{{QStringLiteral("\x06"), 2000},
                                                  {QStringLiteral("\x02"
                                                                  "7 OK\x03"),
                                                   3000}}});
    late.prompt.queueAnswer(MsgAnswer::Retry);
    EXPECT_TRUE(late.read(data)) << late.told();
    EXPECT_EQ(late.askedAt.size(), 1);
}

// The read goes on; without the filter's answer frame the plate stands one frame off,
// so it is not taken.
TEST(MS2Reader, ANAKIsToldButTheReadGoesOn)
{
    Bench b;
    b.instrument.script(QStringLiteral("303"), {{{QStringLiteral("\x15"), 50}}});
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.boxes()[0].text,
              QStringLiteral("Reader didn't understand the command! This procedure must be terminated!"));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Could not Read Plate"));
    EXPECT_EQ(b.instrument.commands(), kFrames);
}

TEST(MS2Reader, AReaderThatIsSwitchedOffIsToldAtEachStep)
{
    Bench b;
    b.instrument.setSwitchedOff(true);
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 5);
    EXPECT_EQ(b.prompt.last().text,
              QStringLiteral("Reader is turned off or not connected with computer! Check it and try again!"));
}

TEST(MS2Reader, TheCommunicationTestSendsTheACKAndTheFirstFrameAndAsksTheUser)
{
    Bench b;
    b.prompt.queueAnswer(MsgAnswer::Yes);
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.port.sent(), QStringList({"\x06", "\x02"
                                                  "7\x03"}));
    EXPECT_EQ(b.port.handshaking(), 2);
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.boxes()[0].buttons, MsgButtons::YesNo);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
    EXPECT_FALSE(b.port.portOpen());

    // A No shows the failure, but the test still succeeds.
    Bench no;
    no.prompt.queueAnswer(MsgAnswer::No);
    EXPECT_TRUE(no.driver.testCommunication(no.port));
    EXPECT_EQ(no.prompt.last().title, QStringLiteral("Communication Failed"));

    Bench silent;
    silent.instrument.setSilent(true);
    EXPECT_FALSE(silent.driver.testCommunication(silent.port));
    ASSERT_EQ(silent.prompt.count(), 2);
    EXPECT_EQ(silent.prompt.last().text, QStringLiteral("There is a communication problem with this communication "
                                                        "settings! You have to try some other settings!"));
    EXPECT_EQ(silent.port.sent(), QStringList({"\x06"}));
}
