// The BioWhittaker driver: framed replies collected piece by piece on a fake port with the
// virtual clock (silences of minutes cost nothing; the fault matrix reads it on a pseudo-terminal).

#include "BioWhittakerInstrument.h"
#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeSerialPort.h"
#include "ReaderTestData.h"

#include "core/Wells.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/drivers/BioWhittakerReplies.h"
#include "readers/drivers/clsBioWhittakerReader.h"

#include <gtest/gtest.h>


namespace {

using namespace BioWhittakerReplies;

QString plateCapture()
{
    return readerTestData(QStringLiteral("clsBioWhittakerReader/plate.cap"));
}

QStringList parsed(const QString &data)
{
    RecordSet set = WellValues::create();
    parse(set, data);
    return wellVals(set);
}

struct Bench {
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakePrompt prompt;
    FakeSerialPort port{clock};
    BioWhittakerInstrument instrument{plateCapture()};
    clsBioWhittakerReader driver{ReaderEnvironment{prompt, sleeper, QString()}};
    QList<qint64> askedAt; // virtual milliseconds slept when each question came

    Bench()
    {
        port.setCommPort(2);
        port.setDevice([this](FakeSerialPort &p, const QString &sent) {
            for (const BioWhittakerInstrument::Reply &r : instrument.receive(sent))
                p.reply(r.text, r.afterMs);
        });
        prompt.setOnBox([this](const PromptBox &box) {
            if (box.question)
                askedAt.append(sleeper.totalSlept());
        });
    }
    bool read(QString &data) { return driver.readData(port, QStringLiteral("1"), QStringLiteral(" 405 "), data); }
};

} // namespace

TEST(BioWhittakerReplies, TheFramesOfTheTestAndTheRead)
{
    EXPECT_EQ(testFrame(), QStringLiteral("\x02G\x03"));
    EXPECT_EQ(readFrame(QStringLiteral(" 405 ")), QStringLiteral("\x02N 1 405\x03"));
}

TEST(BioWhittakerReplies, ThePlateIsFiveDigitThousandthsAfterAHeaderColumnByColumn)
{
    const QStringList values = parsed(plateCapture());
    ASSERT_EQ(values.size(), 96);
    EXPECT_EQ(values[wells::index(1, 1)], QStringLiteral("0.041"));
    EXPECT_EQ(values[wells::index(2, 1)], QStringLiteral("0.054"));
    EXPECT_EQ(values[wells::index(1, 2)], QStringLiteral("0.198"));
    EXPECT_EQ(values[wells::index(8, 12)], QStringLiteral("1.859"));
}

TEST(BioWhittakerReplies, ZeroAndRoundNumbersHaveTheirShortestText)
{
    QString data = QStringLiteral("\x02W") + QString(16, u' ');
    for (int col = 0; col < 12; ++col)
        data += QStringList({"00000", "01500", "00250", "01000", "-0050", "00001", "00000", "99999"}).join(QString())
                + QStringLiteral("\r");
    const QStringList values = parsed(data);
    EXPECT_EQ(values.mid(0, 8), QStringList({"0", "1.5", "0.25", "1", "-0.05", "0.001", "0", "99.999"}));
}

TEST(BioWhittakerReplies, APlateThatEndsEarlyIsAReadError)
{
    EXPECT_THROW(parsed(plateCapture().left(300)), ReadError);
}

TEST(BioWhittakerReader, AReadSendsTheWavelengthAndCollectsThePlate)
{
    Bench b;
    QString data;
    ASSERT_TRUE(b.read(data));
    EXPECT_EQ(b.port.sentText(), QStringLiteral("\x02N 1 405\x03"));
    EXPECT_EQ(data, plateCapture());
    EXPECT_EQ(parsed(data)[wells::index(8, 12)], QStringLiteral("1.859"));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_FALSE(b.port.rtsEnable());
    EXPECT_FALSE(b.port.portOpen());
}

TEST(BioWhittakerReader, APlateInPiecesIsJoinedUntilItIsComplete)
{
    Bench b;
    const QString plate = plateCapture();
    b.instrument.script({{{plate.left(200), 3000}, {plate.mid(200, 200), 7300}, {plate.mid(400), 9000}}});
    QString data;
    ASSERT_TRUE(b.read(data));
    EXPECT_EQ(data, plate);
    EXPECT_EQ(b.prompt.count(), 0);
}

TEST(BioWhittakerReader, ANotUnderstoodReplyEndsTheRead)
{
    Bench b;
    b.instrument.script({{{QStringLiteral("\x02-\x03"), 300}}});
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text,
              QStringLiteral("Reader didn't understand the command! This procedure must be terminated!"));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Problem"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Critical);
    EXPECT_FALSE(b.port.portOpen());
}

TEST(BioWhittakerReader, AFailureInALaterPieceIsToldAndThePartPlateRefused)
{
    Bench b;
    const QString plate = plateCapture();
    b.instrument.script({{{plate.left(100), 3000}, {QStringLiteral("\x02-\x03"), 7500}}});
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(data, plate.left(100));
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.boxes()[0].title, QStringLiteral("Communication Problem"));
    EXPECT_EQ(b.prompt.last().text, DriverMessages::plateFaultText(DriverMessages::PlateFault::Partial));
}

TEST(BioWhittakerReader, AReaderThatIsSwitchedOffIsToldSo)
{
    Bench b;
    b.instrument.setSwitchedOff(true);
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text,
              QStringLiteral("Reader is turned off or not connected with computer! Check it and try again!"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Critical);
}

TEST(BioWhittakerReader, TwentyOneSilentPollsPassBeforeTheRetryQuestion)
{
    Bench b;
    b.instrument.setSilent(true);
    b.prompt.queueAnswer(MsgAnswer::Cancel);
    // The question comes from a poll deep in the chain: its Cancel is not heard by the
    // first poll, and so the test passes on a reader that never answered.
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    // 200 ms after the frame, the first poll, 21 more silent polls of a second; the 22nd
    // poll asks.
    ASSERT_EQ(b.askedAt.size(), 1);
    EXPECT_EQ(b.askedAt[0], 200 + 22 * 1000);
    EXPECT_EQ(b.prompt.boxes()[0].text, QStringLiteral("There could be a communication problem!\r\n"
                                                       "Do you want to retry reading operation!"));
    EXPECT_EQ(b.prompt.boxes()[0].title, QStringLiteral("Communication Problem"));
    EXPECT_EQ(b.prompt.boxes()[0].buttons, MsgButtons::RetryCancel);
    EXPECT_EQ(b.prompt.boxes()[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
    EXPECT_EQ(b.driver.retryCount, 21);
    EXPECT_FALSE(b.port.portOpen());
}

TEST(BioWhittakerReader, TheSilentPollsCarryOverToTheNextSilence)
{
    Bench b;
    b.instrument.setSilent(true);
    b.prompt.queueAnswers({MsgAnswer::Cancel, MsgAnswer::Cancel});
    b.driver.testCommunication(b.port);
    const qint64 before = b.sleeper.totalSlept();
    QString data;
    // The read asks at its first silent poll, and so its Cancel is the read's verdict.
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.askedAt.size(), 2);
    EXPECT_EQ(b.askedAt[1] - before, 200 + 7000);
}

TEST(BioWhittakerReader, ARetryReadsOnAndSetsTheSilenceCountBack)
{
    Bench b;
    // The reader answers the test only after half a minute.
    b.instrument.script({{{BioWhittakerInstrument::readyReply(), 30000}}});
    b.prompt.setDefaultAnswer(MsgAnswer::Retry);
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.askedAt.size(), 8); // at 22.2 s and each second after, until 30 s
    EXPECT_EQ(b.driver.retryCount, 0);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
}

TEST(BioWhittakerReader, TheCommunicationTestSendsGAndSucceedsOnAnAcceptedReply)
{
    Bench b;
    b.port.setHandshaking(2);
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.instrument.commands(), QStringList({"G"}));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("Test Successful.  Communication settings are valid."));
    EXPECT_EQ(b.driver.retryCount, 0);
}

TEST(BioWhittakerReader, APortThatCannotBeOpenedIsToldAndFailsTheTest)
{
    Bench b;
    b.port.failOpen(QStringLiteral("Device or resource busy"));
    EXPECT_FALSE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.prompt.texts(), QStringList({"COM2: Device or resource busy",
                                             "Test Failed.  Communication settings are invalid.  Check settings, "
                                             "and ensure the plate reader is turned on and connected."}));
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("COM2: Device or resource busy"));
}

