// The MS2 driver: its five-frame read with the ACK, NAK and ENQ handshakes on a fake port
// with the virtual clock (the fault matrix reads it on a pseudo-terminal).

#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeSerialPort.h"
#include "MS2Instrument.h"
#include "ReaderTestData.h"

#include "core/Wells.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/drivers/MS2Replies.h"
#include "readers/drivers/clsMS2_Reader.h"

#include <gtest/gtest.h>

namespace {

const QString kACK = QStringLiteral("\x06");
const QString kNAK = QStringLiteral("\x15");

QString plateCapture()
{
    return readerTestData(QStringLiteral("clsMS2_Reader/plate.cap"));
}

RecordSet parsed(const QString &data)
{
    RecordSet set = WellValues::create();
    MS2Replies::parse(set, data);
    return set;
}

// What a read collects from a well-behaved reader: the answer frames of the commands
// before the read, the plate, the answer frame of the last command.
QString collectedRead(const QString &filterNo)
{
    return QStringLiteral("\x02" "7 OK\x03\x02" "320 OK\x03\x02" "30%1 OK\x03").arg(filterNo) + plateCapture()
           + QStringLiteral("\x02" "16 OK\x03");
}

struct Bench {
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakePrompt prompt{MsgAnswer::Cancel};
    FakeSerialPort port{clock};
    MS2Instrument instrument{plateCapture()};
    clsMS2_Reader driver{ReaderEnvironment{prompt, sleeper, QString()}};
    QList<qint64> askedAt;

    Bench()
    {
        port.setCommPort(4);
        port.setDevice([this](FakeSerialPort &p, const QString &sent) {
            for (const MS2Instrument::Reply &r : instrument.receive(sent))
                p.reply(r.text, r.afterMs);
        });
        prompt.setOnBox([this](const PromptBox &box) {
            if (box.question && box.buttons == MsgButtons::RetryCancel)
                askedAt.append(sleeper.totalSlept());
        });
    }
    bool read(QString &data, const QString &filterNo = QStringLiteral("3"))
    {
        return driver.readData(port, filterNo, QStringLiteral("450"), data);
    }
};

} // namespace

TEST(MS2Replies, ThePlateIsFourteenCharacterRecordsAfterTheSixthETX)
{
    RecordSet set = parsed(collectedRead(QStringLiteral("3")));
    const QStringList values = wellVals(set);
    const QStringList positions = wellPositions(set);
    ASSERT_EQ(values.size(), 96);
    EXPECT_EQ(positions[wells::index(1, 1)], QStringLiteral("1A"));
    EXPECT_EQ(values[wells::index(1, 1)], QStringLiteral(" 0.041"));
    EXPECT_EQ(positions[wells::index(2, 1)], QStringLiteral("1B"));
    EXPECT_EQ(values[wells::index(2, 1)], QStringLiteral(" 0.054"));
    EXPECT_EQ(values[wells::index(1, 2)], QStringLiteral(" 0.198"));
    EXPECT_EQ(positions[wells::index(8, 12)], QStringLiteral("12H"));
    EXPECT_EQ(values[wells::index(8, 12)], QStringLiteral(" 1.859"));
}

TEST(MS2Replies, AReadThatEndsEarlyIsAReadError)
{
    EXPECT_THROW(parsed(collectedRead(QStringLiteral("3")).left(600)), ReadError);
}

TEST(MS2Reader, AReadSendsTheFiveFramesAndCollectsTheDataFrames)
{
    Bench b;
    QString data;
    ASSERT_TRUE(b.read(data)) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(b.instrument.commands(), QStringList({"7", "320", "303", "11", "16"}));
    // The entry-0 ACK is not sent by a read: it starts with the first frame.
    EXPECT_EQ(b.port.sent().first(), QStringLiteral("\x02" "7\x03"));
    EXPECT_EQ(data, collectedRead(QStringLiteral("3")));
    RecordSet values = WellValues::create();
    b.driver.fillReaderValues(values, data);
    EXPECT_EQ(wellVals(values)[wells::index(8, 12)], QStringLiteral(" 1.859"));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_FALSE(b.port.portOpen());
}

TEST(MS2Reader, ASilentReaderIsAskedAboutAtTheFirstEmptyPoll)
{
    Bench b;
    b.instrument.setSilent(true);
    QString data;
    EXPECT_FALSE(b.read(data));
    // Each of the five steps asks once, at its first poll: 200 ms after the frame and the
    // step's wait.
    ASSERT_EQ(b.askedAt.size(), 5);
    EXPECT_EQ(b.askedAt[0], 200 + 1000);
    EXPECT_EQ(b.prompt.boxes()[0].text, QStringLiteral("There could be a communication problem!\r\n"
                                                       "Do you want to retry reading operation!"));
    EXPECT_EQ(b.prompt.boxes()[0].title, QStringLiteral("Communication Problem"));
    EXPECT_EQ(b.prompt.boxes()[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(b.askedAt[3] - b.askedAt[2], 200 + 10000);
    EXPECT_EQ(b.instrument.commands(), QStringList({"7", "320", "303", "11", "16"}));
    EXPECT_FALSE(b.port.portOpen());
}

TEST(MS2Reader, ARetryAfterASilenceWaitsAgain)
{
    Bench b;
    // The first frame's acknowledgement comes only after two seconds.
    b.instrument.script(QStringLiteral("7"), {{kACK, 2000}, {QStringLiteral("\x02" "7 OK\x03"), 3000}});
    b.prompt.queueAnswer(MsgAnswer::Retry);
    QString data;
    EXPECT_TRUE(b.read(data)) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(b.askedAt.size(), 1);
}

// The read goes on; without the filter's answer frame the plate stands one frame off,
// so it is not taken.
TEST(MS2Reader, ANAKIsToldButTheReadGoesOn)
{
    Bench b;
    b.instrument.script(QStringLiteral("303"), {{kNAK, 50}});
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Could not Read Plate"));
    EXPECT_EQ(b.prompt.boxes()[0].text,
              QStringLiteral("Reader didn't understand the command! This procedure must be terminated!"));
    EXPECT_EQ(b.prompt.boxes()[0].icon, MsgIcon::Critical);
    EXPECT_EQ(b.instrument.commands(), QStringList({"7", "320", "303", "11", "16"}));
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
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Problem"));
}

TEST(MS2Reader, TheCommunicationTestSendsTheACKAndTheFirstFrameAndAsksTheUser)
{
    Bench b;
    b.prompt.queueAnswer(MsgAnswer::Yes);
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.port.sent(), QStringList({"\x06", "\x02" "7\x03"}));
    EXPECT_EQ(b.port.handshaking(), 2);
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.boxes()[0].text, QStringLiteral("Can you read COMPUTER CONTROL on reader's display"));
    EXPECT_EQ(b.prompt.boxes()[0].buttons, MsgButtons::YesNo);
    EXPECT_EQ(b.prompt.boxes()[0].icon, MsgIcon::Question);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
    EXPECT_FALSE(b.port.portOpen());
}

TEST(MS2Reader, ANoFromTheUserShowsTheFailureButTheTestStillSucceeds)
{
    Bench b;
    b.prompt.queueAnswer(MsgAnswer::No);
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Failed"));
}

TEST(MS2Reader, ASilentReaderFailsTheCommunicationTest)
{
    Bench b;
    b.instrument.setSilent(true);
    EXPECT_FALSE(b.driver.testCommunication(b.port));
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("There is a communication problem with this communication "
                                                   "settings! You have to try some other settings!"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Exclamation);
    EXPECT_EQ(b.port.sent(), QStringList({"\x06"}));
}

TEST(MS2Reader, APortThatCannotBeOpenedIsTold)
{
    Bench b;
    b.port.failOpen(QStringLiteral("No such file or directory"));
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(b.prompt.texts(), QStringList({"COM4: No such file or directory"}));
}

