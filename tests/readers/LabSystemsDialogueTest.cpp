// The LabSystems dialogue on a fake port and the virtual clock: the steps, their attempts
// and polls, the boxes shown, and what a read hands back.

#include "ReaderTestData.h"

#include "readers/drivers/LabSystemsReplies.h"
#include "readers/drivers/clsLabSystemsMC340.h"
#include "readers/drivers/clsLabSystemsReader.h"

#include <gtest/gtest.h>

namespace {

using M = SerialInstrument::Model;
SerialInstrument::Answer answer(const QString &text, int afterMs = 40)
{
    return SerialInstrument::answer(text, afterMs);
}
const SerialInstrument::Answer kSilence;

struct Bench : DriverBench<clsLabSystemsReader> {
    Bench() : DriverBench(M::Multiscan, 3) {}
    bool read(QString &data, const QString &filterNo = QStringLiteral("2"))
    {
        return DriverBench::read(data, filterNo, QStringLiteral("630"));
    }
};

struct MC340Bench : DriverBench<clsLabSystemsMC340> {
    MC340Bench() : DriverBench(M::MC340, 3) {}
    bool read(QString &data) { return DriverBench::read(data, QStringLiteral("2"), QStringLiteral("630")); }
};

QString plateText(M model)
{
    return LabSystemsReplies::removeLineEnds(plateCapture(model));
}

} // namespace

TEST(LabSystemsDialogue, AMultiscanReadTakesControlSetsTheFilterBlanksReadsAndReleases)
{
    Bench b;
    QString data;
    EXPECT_TRUE(b.read(data, QStringLiteral(" 2 "))) << b.told();
    EXPECT_EQ(b.port.sentText(), QStringLiteral("R\r\nF2\r\nA\r\nP\r\nQ\r\n"));
    EXPECT_EQ(data, plateText(M::Multiscan));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_FALSE(b.port.portOpen());
    EXPECT_FALSE(b.instrument.remote());
}

TEST(LabSystemsDialogue, AnMC340ReadsWithM12AndWaitsASecondAfterTakingControl)
{
    MC340Bench b;
    QString data;
    EXPECT_TRUE(b.read(data)) << b.told();
    EXPECT_EQ(b.instrument.commands(), QStringList({"R", "F2", "A", "M12", "Q"}));
    EXPECT_EQ(data, plateText(M::MC340));

    // The pause follows a failed start as well.
    MC340Bench silent;
    silent.instrument.setSilent(true);
    EXPECT_FALSE(silent.read(data));
    EXPECT_EQ(silent.sleeper.totalSlept(), 3 * 101 * 100 + 1000);
}

TEST(LabSystemsDialogue, AnOKInTwoPiecesIsUnderstood)
{
    Bench b;
    b.instrument.script(QStringLiteral("R"), {{{QStringLiteral("O"), 50}, {QStringLiteral("K\r\n"), 250}}});
    QString data;
    EXPECT_TRUE(b.read(data)) << b.told();
    EXPECT_EQ(b.instrument.count(QStringLiteral("R")), 1);
}

TEST(LabSystemsDialogue, ASilentReaderIsToldAfterThreeAttemptsOfAHundredAndOnePolls)
{
    Bench b;
    b.instrument.setSilent(true);
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(b.instrument.commands(), QStringList({"R", "R", "R"}));
    EXPECT_EQ(b.sleeper.calls(), 303);
    EXPECT_EQ(b.sleeper.totalSlept(), 30300);
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::kStartRemoteFailure);
    EXPECT_FALSE(b.port.portOpen());
    EXPECT_EQ(b.port.discards(), 3); // each attempt starts on an empty input
}

// Each step tries three times; a step that fails is told by the last attempt's reply
// and the reader is released.
TEST(LabSystemsDialogue, AFailedStepIsToldByItsLastReplyAndTheReaderReleased)
{
    Bench b;
    QString data;
    EXPECT_FALSE(b.read(data, QStringLiteral("9")));
    EXPECT_EQ(b.instrument.commands(), QStringList({"R", "F9", "F9", "F9", "Q"})); // the reader has no filter 9
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::setFilterFailure(QStringLiteral("ER1")));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Critical);
    EXPECT_FALSE(b.instrument.remote());
    EXPECT_TRUE(data.isEmpty());

    Bench blank;
    blank.instrument.script(QStringLiteral("A"), {answer(QStringLiteral("ER1\r\n")), answer(QStringLiteral("ER1\r\n")),
                                                  answer(QStringLiteral("ER2\r\n"))});
    EXPECT_FALSE(blank.read(data));
    ASSERT_EQ(blank.prompt.count(), 1);
    EXPECT_EQ(blank.prompt.last().text, LabSystemsReplies::blankOnAirFailure(QStringLiteral("ER2")));
    EXPECT_EQ(blank.instrument.count(QStringLiteral("Q")), 1);

    Bench second;
    second.instrument.script(QStringLiteral("A"), {answer(QStringLiteral("ER1\r\n"))});
    EXPECT_TRUE(second.read(data)) << second.told();
    EXPECT_EQ(second.instrument.count(QStringLiteral("A")), 2);
}

// A read refuses a plate that is not whole and from one reading, after the whole wait.
TEST(LabSystemsDialogue, APlateThatIsNotWholeIsRefused)
{
    Bench b;
    b.instrument.script(QStringLiteral("P"),
                        {answer(readerTestData(QStringLiteral("clsLabSystemsReader/short-plate.cap")), 1500)});
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(b.instrument.count(QStringLiteral("P")), 1);
    EXPECT_GE(b.sleeper.totalSlept(), 121000);
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, DriverMessages::plateFaultText(DriverMessages::PlateFault::Partial));
    EXPECT_EQ(b.instrument.commands().last(), QStringLiteral("Q"));

    // Too few characters for the MC340 over all three attempts of 241 polls.
    MC340Bench mc;
    mc.instrument.script(QStringLiteral("M12"), {answer(QString(690, u'1'), 1500), kSilence, kSilence});
    QString none;
    EXPECT_FALSE(mc.read(none));
    EXPECT_GE(mc.sleeper.totalSlept(), 3 * 241 * 1000);
    EXPECT_EQ(mc.prompt.last().text, LabSystemsReplies::readPlateFailure(QString()));
}

// Half a plate, then a retry that brings a whole one: the older driver took the first
// half twice. Both models refuse it at once.
TEST(LabSystemsDialogue, ARetryAfterHalfAPlateMixesReadingsAndIsRefused)
{
    const auto check = [](auto &b, M model) {
        const QString plate = plateCapture(model);
        b.instrument.script(b.instrument.readCommand(), {answer(plate.left(plate.size() / 2), 1500)});
        QString data;
        EXPECT_FALSE(b.read(data));
        EXPECT_EQ(b.instrument.count(b.instrument.readCommand()), 2);
        ASSERT_EQ(b.prompt.count(), 1);
        EXPECT_EQ(b.prompt.last().text, DriverMessages::plateFaultText(DriverMessages::PlateFault::Mixed));
    };
    Bench multiscan;
    check(multiscan, M::Multiscan);
    MC340Bench mc340;
    check(mc340, M::MC340);
}

// The read keeps what came before between its attempts, and any "ER" ends an attempt's
// wait at its next poll: the words depend on what the three attempts added up to.
TEST(LabSystemsDialogue, ReadErrorsAddUpOverTheAttempts)
{
    const auto er1 = answer(QStringLiteral("ER1\r\n"), 500);
    const auto lateEr1 = answer(QStringLiteral("ER1\r\n"), 1500); // read by the next attempt
    const auto er3 = answer(QStringLiteral("ER3\r\n"), 500);
    const struct {
        QList<SerialInstrument::Answer> answers;
        const char *data;
        const char *wordsOf; // the data whose failure text is shown
    } cases[] = {
        {{er1, er1, er1}, "ER1ER1ER1", ""},
        {{er1, kSilence, kSilence}, "ER1", "ER1"},
        {{lateEr1, lateEr1, lateEr1}, "ER1ER1", ""},
        {{er3, kSilence, kSilence}, "ER3", "ER3"},                        // an empty box
        {{answer(QString(500, u'1'), 1500), kSilence, kSilence}, "", ""}, // 500 characters are no plate
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.data);
        Bench b;
        b.instrument.script(QStringLiteral("P"), c.answers);
        QString data;
        EXPECT_FALSE(b.read(data));
        if (*c.data) {
            EXPECT_EQ(data, QString::fromLatin1(c.data));
        }
        EXPECT_EQ(b.instrument.count(QStringLiteral("P")), 3);
        ASSERT_EQ(b.prompt.count(), 1);
        EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::readPlateFailure(QString::fromLatin1(c.wordsOf)));
        EXPECT_EQ(b.instrument.count(QStringLiteral("Q")), 1);
    }
}

TEST(LabSystemsDialogue, AReaderThatWontBeReleasedIsToldButTheReadStands)
{
    Bench b;
    b.instrument.script(QStringLiteral("Q"), {kSilence, kSilence, kSilence, kSilence, kSilence});
    QString data;
    EXPECT_TRUE(b.read(data));
    EXPECT_EQ(b.instrument.count(QStringLiteral("Q")), 5);
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::kStopRemoteFailure);
    EXPECT_EQ(data, plateText(M::Multiscan));
}

TEST(LabSystemsDialogue, ACommunicationTestRunsWithoutHandshakingAndASilentReaderFailsIt)
{
    Bench b;
    b.port.setHandshaking(2);
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.port.handshakingHistory().last(), 0);

    Bench silent;
    silent.instrument.setSilent(true);
    EXPECT_FALSE(silent.driver.testCommunication(silent.port));
    ASSERT_EQ(silent.prompt.count(), 2);
    EXPECT_EQ(silent.prompt.boxes()[0].text, LabSystemsReplies::kStartRemoteFailure);
    EXPECT_EQ(silent.prompt.boxes()[1].title, QStringLiteral("Communication Failed"));
    EXPECT_FALSE(silent.port.portOpen());
}
