// Whole plates read from simulated LabSystems readers on a real pseudo-terminal, through
// the production serial layer. The simulators answer 100 times faster than the
// instruments and the driver's polls run 100 (command polls) or 400 times (read polls)
// faster, so a two-minute wait of a read takes about a third of a second.

#include "FakeClock.h"
#include "FakePrompt.h"
#include "LabSystemsInstrument.h"
#include "PtySimulator.h"
#include "ReaderTestData.h"

#include "core/Wells.h"
#include "platform/QtSerialPort.h"
#include "readers/WellValues.h"
#include "readers/drivers/LabSystemsReplies.h"
#include "readers/drivers/clsLabSystemsMC340.h"
#include "readers/drivers/clsLabSystemsReader.h"

#include <gtest/gtest.h>

#include <memory>
#include <mutex>

namespace {

using Model = LabSystemsInstrument::Model;
constexpr int kTimeScale = 100;
constexpr int kReadPollTimeScale = 400;

QString captureOf(Model model)
{
    return readerTestData(model == Model::Multiscan ? QStringLiteral("clsLabSystemsReader/plate.cap")
                                                    : QStringLiteral("clsLabSystemsMC340/plate.cap"));
}

// A LabSystems reader at the end of a pseudo-terminal, and the production port on it.
struct PtyBench {
    FakeClock clock;
    ScaledSleeper sleeper{clock, kTimeScale, kReadPollTimeScale};
    FakePrompt prompt;
    std::mutex mutex;
    LabSystemsInstrument instrument;
    std::unique_ptr<PtySimulator> simulator;
    QtSerialPort port;
    std::unique_ptr<ReaderDriver> driver;

    explicit PtyBench(Model model) : instrument(model, captureOf(model))
    {
        simulator = std::make_unique<PtySimulator>(
            [this](const QString &received) {
                std::lock_guard lock(mutex);
                QList<PtySimulator::Reply> replies;
                for (const LabSystemsInstrument::Reply &r : instrument.receive(received))
                    replies.append({r.text, r.afterMs});
                return replies;
            },
            kTimeScale);
        port.setCommPort(1);
        port.setPortName(simulator->slavePath());
        port.setSettings(model == Model::Multiscan ? QStringLiteral("9600,N,8,1") : QStringLiteral("4800,N,8,1"));
        const ReaderEnvironment env{prompt, sleeper, QString()};
        if (model == Model::Multiscan)
            driver = std::make_unique<clsLabSystemsReader>(env);
        else
            driver = std::make_unique<clsLabSystemsMC340>(env);
    }

    // Scripts go in while the simulator's thread is idle, under its lock.
    void script(const QString &command, const QList<LabSystemsInstrument::Answer> &answers)
    {
        std::lock_guard lock(mutex);
        instrument.script(command, answers);
    }
    QStringList commands()
    {
        std::lock_guard lock(mutex);
        return instrument.commands();
    }
    // Reads the plate; the values when it succeeded.
    bool read(QStringList &values)
    {
        QString data;
        if (!driver->readData(port, QStringLiteral("1"), QStringLiteral("630"), data))
            return false;
        RecordSet set = WellValues::create();
        driver->fillReaderValues(set, data);
        values = wellVals(set);
        return true;
    }
};

QStringList expectedValues(Model model)
{
    RecordSet set = WellValues::create();
    if (model == Model::Multiscan)
        clsLabSystemsReader::parse(set, LabSystemsReplies::removeLineEnds(captureOf(model)));
    else
        clsLabSystemsMC340::parse(set, captureOf(model));
    return wellVals(set);
}

#define REQUIRE_PTY(bench)                                                                                            \
    if (!(bench).simulator->isValid())                                                                                 \
    GTEST_SKIP() << "no pseudo-terminal available"

} // namespace

TEST(LabSystemsOnAPty, AMultiscanReadsAWholePlate)
{
    PtyBench b(Model::Multiscan);
    REQUIRE_PTY(b);
    QStringList values;
    ASSERT_TRUE(b.read(values)) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(values, expectedValues(Model::Multiscan));
    EXPECT_EQ(b.commands(), QStringList({"R", "F1", "A", "P", "Q"}));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_FALSE(b.port.portOpen());
}

TEST(LabSystemsOnAPty, AnMC340ReadsAWholePlate)
{
    PtyBench b(Model::MC340);
    REQUIRE_PTY(b);
    QStringList values;
    ASSERT_TRUE(b.read(values)) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(values, expectedValues(Model::MC340));
    EXPECT_EQ(b.commands(), QStringList({"R", "F1", "A", "M12", "Q"}));
}

TEST(LabSystemsOnAPty, AnOKSentInTwoPiecesIsUnderstood)
{
    PtyBench b(Model::Multiscan);
    REQUIRE_PTY(b);
    b.script(QStringLiteral("R"), {{{QStringLiteral("O"), 0}, {QStringLiteral("K\r\n"), 800}}});
    QStringList values;
    ASSERT_TRUE(b.read(values)) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(values, expectedValues(Model::Multiscan));
    EXPECT_EQ(b.commands().count(QStringLiteral("R")), 1);
}

TEST(LabSystemsOnAPty, ER1ToTheFilterIsAnInstrumentMalfunction)
{
    PtyBench b(Model::Multiscan);
    REQUIRE_PTY(b);
    const auto er1 = LabSystemsInstrument::answer(QStringLiteral("ER1\r\n"));
    b.script(QStringLiteral("F"), {er1, er1, er1});
    QStringList values;
    EXPECT_FALSE(b.read(values));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::setFilterFailure(QStringLiteral("ER1")));
    EXPECT_EQ(b.commands(), QStringList({"R", "F1", "F1", "F1", "Q"}));
}

TEST(LabSystemsOnAPty, ER2ToTheBlankIsAnInvalidSequence)
{
    PtyBench b(Model::MC340);
    REQUIRE_PTY(b);
    const auto er2 = LabSystemsInstrument::answer(QStringLiteral("ER2\r\n"));
    b.script(QStringLiteral("A"), {er2, er2, er2});
    QStringList values;
    EXPECT_FALSE(b.read(values));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::blankOnAirFailure(QStringLiteral("ER2")));
}

TEST(LabSystemsOnAPty, ER3ToTheReadEndsInAnEmptyBox)
{
    PtyBench b(Model::Multiscan);
    REQUIRE_PTY(b);
    // The reader answers the first read with ER3 and then keeps quiet (an ER3 on each
    // attempt would add up to "ER3ER3ER3", an unknown error).
    b.script(QStringLiteral("P"), {LabSystemsInstrument::answer(QStringLiteral("ER3\r\n"), 1000), {}, {}});
    QStringList values;
    EXPECT_FALSE(b.read(values));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QString());
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Error!"));
    EXPECT_EQ(b.commands().count(QStringLiteral("P")), 3);
}

TEST(LabSystemsOnAPty, ASilentReaderCannotBeConnected)
{
    PtyBench b(Model::Multiscan);
    REQUIRE_PTY(b);
    {
        std::lock_guard lock(b.mutex);
        b.instrument.setSilent(true);
    }
    QStringList values;
    EXPECT_FALSE(b.read(values));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Unable to Read Plate"));
    EXPECT_EQ(b.commands(), QStringList({"R", "R", "R"}));
    EXPECT_FALSE(b.port.portOpen());
}

TEST(LabSystemsOnAPty, ACommunicationTestPassesOnAnAnsweringReader)
{
    PtyBench b(Model::MC340);
    REQUIRE_PTY(b);
    b.port.setHandshaking(1);
    EXPECT_TRUE(b.driver->testCommunication(b.port));
    EXPECT_EQ(b.commands(), QStringList({"R", "Q"}));
    EXPECT_EQ(b.port.handshaking(), 0);
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
}
