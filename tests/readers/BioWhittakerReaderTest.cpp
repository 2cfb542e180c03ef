// The BioWhittaker driver: framed replies collected piece by piece on a fake port with the
// virtual clock (silences of minutes cost nothing; the fault matrix reads it on a pseudo-terminal).

#include "ReaderTestData.h"

#include "readers/WellValues.h"
#include "readers/drivers/BioWhittakerReplies.h"
#include "readers/drivers/clsBioWhittakerReader.h"

#include <gtest/gtest.h>

namespace {

const QString kNotUnderstood = QStringLiteral("\x02-\x03");
const QString kRead = QStringLiteral("N 1 405");

struct Bench : DriverBench<clsBioWhittakerReader> {
    Bench() : DriverBench(SerialInstrument::Model::BioWhittaker, 2) {}
    bool read(QString &data) { return DriverBench::read(data, QStringLiteral("1"), QStringLiteral(" 405 ")); }
};

} // namespace

TEST(BioWhittakerReplies, ZeroAndRoundNumbersHaveTheirShortestText)
{
    QString data = QStringLiteral("\x02W") + QString(16, u' ');
    for (int col = 0; col < 12; ++col)
        data += QStringList({"00000", "01500", "00250", "01000", "-0050", "00001", "00000", "99999"}).join(QString()) +
                QStringLiteral("\r");
    RecordSet set = WellValues::create();
    BioWhittakerReplies::parse(set, data);
    EXPECT_EQ(wellVals(set).mid(0, 8), QStringList({"0", "1.5", "0.25", "1", "-0.05", "0.001", "0", "99.999"}));
}

TEST(BioWhittakerReader, AReadSendsTheWavelengthAndCollectsThePlate)
{
    Bench b;
    QString data;
    ASSERT_TRUE(b.read(data)) << b.told();
    EXPECT_EQ(b.port.sentText(), QStringLiteral("\x02N 1 405\x03"));
    EXPECT_EQ(data, plateCapture(SerialInstrument::Model::BioWhittaker));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_FALSE(b.port.rtsEnable());
    EXPECT_FALSE(b.port.portOpen());
}

TEST(BioWhittakerReader, APlateInPiecesIsJoinedUntilItIsComplete)
{
    Bench b;
    const QString plate = plateCapture(SerialInstrument::Model::BioWhittaker);
    b.instrument.script(kRead, {{{plate.left(200), 3000}, {plate.mid(200, 200), 7300}, {plate.mid(400), 9000}}});
    QString data;
    ASSERT_TRUE(b.read(data)) << b.told();
    EXPECT_EQ(data, plate);
}

TEST(BioWhittakerReader, ANotUnderstoodReplyEndsTheRead)
{
    Bench b;
    b.instrument.script(kRead, {SerialInstrument::answer(kNotUnderstood, 300)});
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text,
              QStringLiteral("Reader didn't understand the command! This procedure must be terminated!"));
    EXPECT_FALSE(b.port.portOpen());

    // In a later piece it is told too, and the part of the plate is refused.
    Bench later;
    const QString plate = plateCapture(SerialInstrument::Model::BioWhittaker);
    later.instrument.script(kRead, {{{plate.left(100), 3000}, {kNotUnderstood, 7500}}});
    EXPECT_FALSE(later.read(data));
    EXPECT_EQ(data, plate.left(100));
    ASSERT_EQ(later.prompt.count(), 2);
    EXPECT_EQ(later.prompt.last().text, DriverMessages::plateFaultText(DriverMessages::PlateFault::Partial));
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
}

TEST(BioWhittakerReader, TwentyOneSilentPollsPassBeforeTheRetryQuestion)
{
    Bench b;
    b.instrument.setSilent(true);
    b.prompt.queueAnswers({MsgAnswer::Cancel, MsgAnswer::Cancel});
    // The question comes from a poll deep in the chain: its Cancel is not heard by the
    // first poll, and so the test passes on a reader that never answered.
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    // 200 ms after the frame, the first poll, 21 more silent polls of a second; the 22nd asks.
    ASSERT_EQ(b.askedAt.size(), 1);
    EXPECT_EQ(b.askedAt[0], 200 + 22 * 1000);
    EXPECT_EQ(b.prompt.boxes()[0].buttons, MsgButtons::RetryCancel);
    EXPECT_EQ(b.driver.retryCount, 21);
    EXPECT_FALSE(b.port.portOpen());

    // The silent polls carry over: the read asks at its first, and its Cancel is the verdict.
    const qint64 before = b.sleeper.totalSlept();
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.askedAt.size(), 2);
    EXPECT_EQ(b.askedAt[1] - before, 200 + 7000);
}

TEST(BioWhittakerReader, ARetryReadsOnAndSetsTheSilenceCountBack)
{
    Bench b;
    // The reader answers the test only after half a minute.
    b.instrument.script(QStringLiteral("G"),
                        {SerialInstrument::answer(SerialInstrument::framed(QStringLiteral("+0000READY")), 30000)});
    b.prompt.setDefaultAnswer(MsgAnswer::Retry);
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.askedAt.size(), 8); // at 22.2 s and each second after, until 30 s
    EXPECT_EQ(b.driver.retryCount, 0);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
    EXPECT_EQ(b.instrument.commands(), QStringList({"G"}));
}
