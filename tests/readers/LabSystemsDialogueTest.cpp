// The LabSystems dialogue on a fake port and the virtual clock: the steps, their attempts
// and polls, the words shown, and what a read hands back.

#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeSerialPort.h"
#include "LabSystemsInstrument.h"
#include "ReaderTestData.h"

#include "readers/drivers/LabSystemsReplies.h"
#include "readers/drivers/clsLabSystemsMC340.h"
#include "readers/drivers/clsLabSystemsReader.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Model = LabSystemsInstrument::Model;
LabSystemsInstrument::Answer answer(const QString &text, int afterMs = LabSystemsInstrument::kAnswerMs)
{
    return LabSystemsInstrument::answer(text, afterMs);
}

const QString kUnableTitle = QStringLiteral("Unable to Read Plate");
const QString kCouldNotConnect = QStringLiteral("Could not connect to the plate reader.  Please verify that you have "
                                                "chosen the correct reader type and the reader is connected to your "
                                                "computer.");

struct Bench {
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakePrompt prompt;
    FakeSerialPort port{clock};
    LabSystemsInstrument instrument;
    std::unique_ptr<ReaderDriver> driver;

    explicit Bench(Model model)
        : instrument(model, readerTestData(model == Model::Multiscan ? QStringLiteral("clsLabSystemsReader/plate.cap")
                                                                     : QStringLiteral("clsLabSystemsMC340/plate.cap")))
    {
        port.setCommPort(3);
        port.setDevice([this](FakeSerialPort &p, const QString &sent) {
            for (const LabSystemsInstrument::Reply &r : instrument.receive(sent))
                p.reply(r.text, r.afterMs);
        });
        const ReaderEnvironment env{prompt, sleeper, QString()};
        if (model == Model::Multiscan)
            driver = std::make_unique<clsLabSystemsReader>(env);
        else
            driver = std::make_unique<clsLabSystemsMC340>(env);
    }

    bool read(QString &data, const QString &filterNo = QStringLiteral("2"))
    {
        return driver->readData(port, filterNo, QStringLiteral("630"), data);
    }
    qint64 secondsSlept() const { return sleeper.totalSlept() / 1000; }
};

QString plateText(Model model)
{
    return LabSystemsReplies::removeLineEnds(readerTestData(
        model == Model::Multiscan ? QStringLiteral("clsLabSystemsReader/plate.cap") : QStringLiteral("clsLabSystemsMC340/plate.cap")));
}

} // namespace

TEST(LabSystemsDialogue, AMultiscanReadTakesControlSetsTheFilterBlanksReadsAndReleases)
{
    Bench b(Model::Multiscan);
    QString data;
    EXPECT_TRUE(b.read(data, QStringLiteral(" 2 ")));
    EXPECT_EQ(b.instrument.commands(), QStringList({"R", "F2", "A", "P", "Q"}));
    EXPECT_EQ(b.port.sentText(), QStringLiteral("R\r\nF2\r\nA\r\nP\r\nQ\r\n"));
    EXPECT_EQ(data, plateText(Model::Multiscan));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_EQ(b.port.opens(), 1);
    EXPECT_FALSE(b.port.portOpen());
    EXPECT_FALSE(b.instrument.remote());
}

TEST(LabSystemsDialogue, AnMC340ReadsWithM12AndWaitsASecondAfterTakingControl)
{
    Bench b(Model::MC340);
    QString data;
    EXPECT_TRUE(b.read(data));
    EXPECT_EQ(b.instrument.commands(), QStringList({"R", "F2", "A", "M12", "Q"}));
    EXPECT_EQ(data, plateText(Model::MC340));
    EXPECT_EQ(b.prompt.count(), 0);

    // The pause follows a failed start as well.
    Bench silent(Model::MC340);
    silent.instrument.setSilent(true);
    QString none;
    EXPECT_FALSE(silent.read(none));
    EXPECT_EQ(silent.sleeper.totalSlept(), 3 * 101 * 100 + 1000);
}

TEST(LabSystemsDialogue, AnOKInTwoPiecesIsUnderstood)
{
    Bench b(Model::Multiscan);
    b.instrument.script(QStringLiteral("R"), {{{QStringLiteral("O"), 50}, {QStringLiteral("K\r\n"), 250}}});
    QString data;
    EXPECT_TRUE(b.read(data)) << b.prompt.texts().join(QStringLiteral("|")).toStdString() << " "
                              << b.instrument.commands().join(QStringLiteral(",")).toStdString();
    EXPECT_EQ(b.instrument.count(QStringLiteral("R")), 1);
    EXPECT_EQ(data, plateText(Model::Multiscan));
}

TEST(LabSystemsDialogue, ASilentReaderIsToldAfterThreeAttemptsOfAHundredAndOnePolls)
{
    Bench b(Model::Multiscan);
    b.instrument.setSilent(true);
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(b.instrument.commands(), QStringList({"R", "R", "R"}));
    EXPECT_EQ(b.sleeper.calls(), 303);
    EXPECT_EQ(b.sleeper.totalSlept(), 30300);
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, kUnableTitle);
    EXPECT_EQ(b.prompt.last().text, kCouldNotConnect);
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Exclamation);
    EXPECT_FALSE(b.port.portOpen());
    EXPECT_EQ(b.port.discards(), 3); // each attempt starts on an empty input
}

TEST(LabSystemsDialogue, AFilterTheReaderRefusesIsToldAndTheReaderReleased)
{
    Bench b(Model::Multiscan);
    const auto er1 = answer(QStringLiteral("ER1\r\n"));
    b.instrument.script(QStringLiteral("F"), {er1, er1, er1});
    QString data;
    EXPECT_FALSE(b.read(data, QStringLiteral("9")));
    EXPECT_EQ(b.instrument.commands(), QStringList({"R", "F9", "F9", "F9", "Q"}));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Error!"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Critical);
    EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::setFilterFailure(QStringLiteral("ER1")));
    EXPECT_FALSE(b.instrument.remote());
    EXPECT_FALSE(b.port.portOpen());
    EXPECT_TRUE(data.isEmpty());
}

TEST(LabSystemsDialogue, OnlyTheLastAttemptsReplyChoosesTheWords)
{
    Bench b(Model::Multiscan);
    b.instrument.script(QStringLiteral("A"), {answer(QStringLiteral("ER1\r\n")), answer(QStringLiteral("ER1\r\n")),
                                              answer(QStringLiteral("ER2\r\n"))});
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::blankOnAirFailure(QStringLiteral("ER2")));
    EXPECT_EQ(b.instrument.count(QStringLiteral("Q")), 1);
}

TEST(LabSystemsDialogue, AStepThatSucceedsOnItsSecondAttemptGoesOn)
{
    Bench b(Model::Multiscan);
    b.instrument.script(QStringLiteral("A"), {answer(QStringLiteral("ER1\r\n"))});
    QString data;
    EXPECT_TRUE(b.read(data));
    EXPECT_EQ(b.instrument.count(QStringLiteral("A")), 2);
    EXPECT_EQ(b.prompt.count(), 0);
}

TEST(LabSystemsDialogue, AShortMultiscanPlateIsRefusedAfterTheWholeWait)
{
    Bench b(Model::Multiscan);
    const QString shortPlate = readerTestData(QStringLiteral("clsLabSystemsReader/short-plate.cap"));
    b.instrument.script(QStringLiteral("P"), {answer(shortPlate, 1500)});
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(b.instrument.count(QStringLiteral("P")), 1);
    EXPECT_GE(b.secondsSlept(), 121);
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, DriverMessages::plateFaultText(DriverMessages::PlateFault::Partial));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Could not Read Plate"));
    EXPECT_EQ(b.instrument.commands().last(), QStringLiteral("Q"));
}

// Half a plate, then a retry that brings a whole one: the older driver took the first
// half twice. Both models refuse it at once.
TEST(LabSystemsDialogue, ARetryAfterHalfAPlateMixesReadingsAndIsRefused)
{
    for (const Model model : {Model::Multiscan, Model::MC340}) {
        Bench b(model);
        const QString read = b.instrument.readCommand();
        const QString plate = readerTestData(model == Model::Multiscan ? QStringLiteral("clsLabSystemsReader/plate.cap")
                                                                       : QStringLiteral("clsLabSystemsMC340/plate.cap"));
        b.instrument.script(read, {answer(plate.left(plate.size() / 2), 1500)});
        QString data;
        EXPECT_FALSE(b.read(data));
        EXPECT_EQ(b.instrument.count(read), 2);
        ASSERT_EQ(b.prompt.count(), 1);
        EXPECT_EQ(b.prompt.last().text, DriverMessages::plateFaultText(DriverMessages::PlateFault::Mixed));
    }
}

TEST(LabSystemsDialogue, FiveHundredCharactersAreNotAPlate)
{
    Bench b(Model::Multiscan);
    const QString tooShort = QString(500, u'1');
    const LabSystemsInstrument::Answer silence;
    b.instrument.script(QStringLiteral("P"), {answer(tooShort, 1500), silence, silence});
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::readPlateFailure(tooShort));
}

TEST(LabSystemsDialogue, TheMC340WantsMoreThanSixHundredAndNinetyCharacters)
{
    Bench b(Model::MC340);
    const LabSystemsInstrument::Answer silence;
    b.instrument.script(QStringLiteral("M12"), {answer(QString(690, u'1'), 1500), silence, silence});
    QString data;
    EXPECT_FALSE(b.read(data));
    // Three attempts of 241 polls: the data never grew past 690 characters.
    EXPECT_GE(b.secondsSlept(), 3 * 241);
    EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::readPlateFailure(QString()));
}

TEST(LabSystemsDialogue, APortThatCannotBeOpenedIsToldAndFailsTheRead)
{
    Bench b(Model::Multiscan);
    b.port.failOpen(QStringLiteral("/dev/ttyS2: Permission denied"));
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_TRUE(data.isEmpty());
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("COM3: /dev/ttyS2: Permission denied"));
    EXPECT_EQ(b.prompt.last().title, QString());
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::None);
    EXPECT_TRUE(b.instrument.commands().isEmpty());
}

TEST(LabSystemsDialogue, AReaderThatWontBeReleasedIsToldButTheReadStands)
{
    Bench b(Model::Multiscan);
    const LabSystemsInstrument::Answer silence;
    b.instrument.script(QStringLiteral("Q"), {silence, silence, silence, silence, silence});
    QString data;
    EXPECT_TRUE(b.read(data));
    EXPECT_EQ(b.instrument.count(QStringLiteral("Q")), 5);
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("There were problems stopping computer control of the reader.  You "
                                                   "may have to restart the plate reader."));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Error!"));
    EXPECT_EQ(data, plateText(Model::Multiscan));
}

TEST(LabSystemsDialogue, ACommunicationTestTakesAndReleasesControlWithoutHandshaking)
{
    Bench b(Model::Multiscan);
    b.port.setHandshaking(2);
    EXPECT_TRUE(b.driver->testCommunication(b.port));
    EXPECT_EQ(b.instrument.commands(), QStringList({"R", "Q"}));
    EXPECT_EQ(b.port.handshakingHistory().last(), 0);
    EXPECT_FALSE(b.port.portOpen());
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("Test Successful.  Communication settings are valid."));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Information);
}

TEST(LabSystemsDialogue, ACommunicationTestOfASilentReaderFailsWithBothBoxes)
{
    Bench b(Model::Multiscan);
    b.instrument.setSilent(true);
    EXPECT_FALSE(b.driver->testCommunication(b.port));
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.boxes()[0].text, kCouldNotConnect);
    EXPECT_EQ(b.prompt.boxes()[1].title, QStringLiteral("Communication Failed"));
    EXPECT_EQ(b.prompt.boxes()[1].text, QStringLiteral("Test Failed.  Communication settings are invalid.  Check "
                                                       "settings, and ensure the plate reader is turned on and connected."));
    EXPECT_EQ(b.prompt.boxes()[1].icon, MsgIcon::Exclamation);
    EXPECT_FALSE(b.port.portOpen());
}

TEST(LabSystemsDialogue, ACommunicationTestOnAPortThatWontOpenTellsWhy)
{
    Bench b(Model::MC340);
    b.port.failOpen(QStringLiteral("/dev/ttyS2: No such file or directory"));
    EXPECT_FALSE(b.driver->testCommunication(b.port));
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.boxes()[0].text, QStringLiteral("COM3: /dev/ttyS2: No such file or directory"));
    EXPECT_EQ(b.prompt.boxes()[1].title, QStringLiteral("Communication Failed"));
}

// The read keeps what came before between its attempts, and any "ER" ends an attempt's
// wait at its next poll: the words depend on what the three attempts added up to.
TEST(LabSystemsDialogue, ReadErrorsAddUpOverTheAttempts)
{
    const LabSystemsInstrument::Answer silence;
    const auto er1 = answer(QStringLiteral("ER1\r\n"), 500);
    const auto lateEr1 = answer(QStringLiteral("ER1\r\n"), 1500); // read by the next attempt
    const auto er3 = answer(QStringLiteral("ER3\r\n"), 500);
    const struct {
        QList<LabSystemsInstrument::Answer> answers;
        const char *data;
        const char *wordsOf; // the data whose failure text is shown
    } cases[] = {
        {{er1, er1, er1}, "ER1ER1ER1", ""},
        {{er1, silence, silence}, "ER1", "ER1"},
        {{lateEr1, lateEr1, lateEr1}, "ER1ER1", ""},
        {{er3, silence, silence}, "ER3", "ER3"}, // an empty box
        {{er3, er3, er3}, "ER3ER3ER3", ""},
    };
    for (const auto &c : cases) {
        Bench b(Model::Multiscan);
        b.instrument.script(QStringLiteral("P"), c.answers);
        QString data;
        EXPECT_FALSE(b.read(data));
        EXPECT_EQ(data, QString::fromLatin1(c.data));
        EXPECT_EQ(b.instrument.count(QStringLiteral("P")), 3);
        ASSERT_EQ(b.prompt.count(), 1) << c.data;
        EXPECT_EQ(b.prompt.last().text, LabSystemsReplies::readPlateFailure(QString::fromLatin1(c.wordsOf)));
        EXPECT_EQ(b.prompt.last().title, QStringLiteral("Error!"));
        EXPECT_EQ(b.instrument.count(QStringLiteral("Q")), 1);
    }
}
