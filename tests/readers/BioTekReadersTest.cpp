// The Bio-Tek driver on a simulated control: the settings it passes on, the sequence of
// dispatch numbers and their statuses, the wait for ReadReady, and the plate text with its
// short last value. Without the vendor's control a read ends in a plain error.

#include "EventPumpingSleeper.h"
#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeSerialPort.h"
#include "ReaderTestData.h"

#include "core/Wells.h"
#include "platform/AbsentAutoreader.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/clsReading.h"
#include "readers/drivers/BioTekReplies.h"
#include "SimulatedBioTekReader.h"
#include "readers/drivers/clsBioTekReaders.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace BioTekReplies;
using LS = LineSettings;

const QString kInitFailure = QStringLiteral("An error has occurred in initializing the plate reader.\r\n"
                                            "Please check communication settings and ensure the plate reader is "
                                            "turned on.");

QStringList parsed(const QString &data)
{
    RecordSet set = WellValues::create();
    parse(set, data);
    return wellVals(set);
}

struct Bench {
    FakeClock clock;
    EventPumpingSleeper sleeper{clock};
    FakePrompt prompt;
    FakeSerialPort port{clock};
    SimulatedBioTekReader reader;
    clsBioTekReaders driver{ReaderEnvironment{prompt, sleeper, QString(), &reader}};

    Bench()
    {
        port.setCommPort(5);
        port.setSettings(QStringLiteral("9600,N,8,2"));
        driver.setReaderType(4);
    }
    bool read(QString &data, const QString &filterValue = QStringLiteral("450"))
    {
        return driver.readData(port, QStringLiteral("2"), filterValue, data);
    }
};

} // namespace

TEST(BioTekSettings, TheUsualSettingsParseToDataBitsBaudStopBitsAndParity)
{
    EXPECT_EQ(parseSettings(QStringLiteral("9600,N,8,2")), (LS{8, 9600, 2, 0}));
    EXPECT_EQ(parseSettings(QStringLiteral(" 19200,e,7,1 ")), (LS{7, 19200, 1, 1}));
    EXPECT_EQ(parseSettings(QStringLiteral("2400,O,8,1")), (LS{8, 2400, 1, 2}));
    EXPECT_TRUE(settingsAreValid(parseSettings(QStringLiteral("9600,N,8,2"))));
}

TEST(BioTekSettings, ParityMPassesTheParserButFailsTheCheck)
{
    const LS mark = parseSettings(QStringLiteral("9600,M,8,2"));
    EXPECT_EQ(mark, (LS{8, 9600, 2, 100}));
    EXPECT_FALSE(settingsAreValid(mark));
}

TEST(BioTekSettings, EachValueOutsideItsRangeFailsTheCheck)
{
    EXPECT_FALSE(settingsAreValid(parseSettings(QStringLiteral("4800,N,8,2"))));
    EXPECT_FALSE(settingsAreValid(parseSettings(QStringLiteral("9600,N,6,2"))));
    EXPECT_FALSE(settingsAreValid(parseSettings(QStringLiteral("9600,N,8,3"))));
    EXPECT_FALSE(settingsAreValid(parseSettings(QStringLiteral("9600,N,8"))));
    EXPECT_TRUE(settingsAreValid(parseSettings(QStringLiteral("1200,E,7,1"))));
}

TEST(BioTekSettings, SettingsWithoutACommaCannotBeParsed)
{
    EXPECT_THROW(parseSettings(QStringLiteral("9600")), ReadError);
}

TEST(BioTekPlateText, NinetySixValuesRowAfterRowWithTheLastDigitOfH12Lost)
{
    QList<double> values;
    for (int i = 0; i < 96; ++i)
        values << 0.1 + i / 1000.0;
    values[95] = 0.123;
    const QString text = plateText(values);
    EXPECT_TRUE(text.startsWith(QStringLiteral("0.100 0.101 ")));
    EXPECT_TRUE(text.endsWith(QStringLiteral(" 0.194 0.123")));
    const QStringList wellValues = parsed(text);
    ASSERT_EQ(wellValues.size(), 96);
    // The text is row after row, the wells column by column.
    EXPECT_EQ(wellValues[wells::index(1, 1)], QStringLiteral("0.100"));
    EXPECT_EQ(wellValues[wells::index(1, 2)], QStringLiteral("0.101"));
    EXPECT_EQ(wellValues[wells::index(2, 1)], QStringLiteral("0.112"));
    EXPECT_EQ(wellValues[wells::index(8, 11)], QStringLiteral("0.194"));
    EXPECT_EQ(wellValues[wells::index(8, 12)], QStringLiteral("0.120"));
}

TEST(BioTekPlateText, AValueBeyondEveryNumberIsNoNumberNeverZero)
{
    QList<double> values(96, 0.5);
    values[1] = HUGE_VAL;
    const QStringList wellValues = parsed(plateText(values));
    EXPECT_EQ(wellValues[wells::index(1, 2)], QStringLiteral("NaN"));
}

TEST(BioTekPlateText, NinetyFiveTokensRepeatTheFirstValueInH12)
{
    QStringList tokens;
    for (int i = 0; i < 95; ++i)
        tokens << QStringLiteral("0.%1").arg(200 + i);
    const QStringList wellValues = parsed(tokens.join(u' '));
    EXPECT_EQ(wellValues[wells::index(8, 11)], QStringLiteral("0.290")); // the 95th, cut short: 0.29
    EXPECT_EQ(wellValues[wells::index(8, 12)], QStringLiteral("0.200"));
}

TEST(BioTekPlateText, ATokenThatIsNoNumberIsKeptAsItIs)
{
    QStringList tokens(96, QStringLiteral("0.5"));
    tokens[1] = QStringLiteral("OVRFLW");
    const QStringList wellValues = parsed(tokens.join(u' '));
    EXPECT_EQ(wellValues[wells::index(1, 1)], QStringLiteral("0.500"));
    EXPECT_EQ(wellValues[wells::index(1, 2)], QStringLiteral("OVRFLW"));
}

TEST(BioTekReaders, AReadCallsTheControlInItsOrderAndWaitsForReadReady)
{
    Bench b;
    b.reader.plate[95] = 1.236;
    QString data;
    ASSERT_TRUE(b.read(data, QStringLiteral(" 450 "))) << b.prompt.texts().join(u'|').toStdString();
    EXPECT_EQ(b.reader.dispatchNumbers(), QList<int>({2, 54, 17, 53, 18, 91, 51, 52, 75, 83, 121, 80}));
    EXPECT_EQ(b.reader.calls[0].arguments, (QVariantList{4}));
    EXPECT_EQ(b.reader.calls[1].arguments, (QVariantList{5}));
    EXPECT_EQ(b.reader.calls[2].arguments, (QVariantList{8, 9600, 2, 0}));
    EXPECT_EQ(b.reader.calls[3].arguments, (QVariantList{26}));
    EXPECT_EQ(b.reader.calls[6].arguments, (QVariantList{1}));
    EXPECT_EQ(b.reader.calls[7].arguments, (QVariantList{4}));
    EXPECT_EQ(b.reader.calls[8].arguments, (QVariantList{450, -1}));
    EXPECT_EQ(b.reader.calls[9].arguments, (QVariantList{11}));
    EXPECT_EQ(b.reader.calls[10].arguments, (QVariantList{true}));
    EXPECT_TRUE(b.driver.readReady);
    EXPECT_GE(b.sleeper.calls(), 1);
    EXPECT_EQ(data, plateText(b.reader.plate));
    EXPECT_TRUE(data.startsWith(QStringLiteral("0.041 0.198 ")));
    RecordSet values = WellValues::create();
    b.driver.fillReaderValues(values, data);
    EXPECT_EQ(wellVals(values)[wells::index(2, 1)], QStringLiteral("0.054"));
    EXPECT_EQ(wellVals(values)[wells::index(8, 12)], QStringLiteral("1.230"));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_EQ(b.port.opens(), 0); // the control runs the line, not the driver
}

TEST(BioTekReaders, TheReadReadyStatusIsPassedToTheResults)
{
    Bench b;
    b.reader.readyStatus = 7;
    QString data;
    ASSERT_TRUE(b.read(data));
    EXPECT_EQ(b.driver.readStatus, 7);
    EXPECT_EQ(b.reader.calls.last().arguments.value(0).toInt(), 7);
    EXPECT_EQ(b.reader.calls.last().arguments.value(6).toDouble(), -1.0);
}

TEST(BioTekReaders, ParityMIsPassedOnUncheckedByARead)
{
    Bench b;
    b.port.setSettings(QStringLiteral("9600,M,8,2"));
    QString data;
    EXPECT_FALSE(b.read(data));
    EXPECT_EQ(b.reader.calls[2].arguments, (QVariantList{8, 9600, 2, 100}));
    // The simulated instrument is not on that line: the connect fails.
    EXPECT_EQ(b.reader.dispatchNumbers(), QList<int>({2, 54, 17, 53, 18}));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, kInitFailure);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Could not Read Plate"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Exclamation);
}

TEST(BioTekReaders, AFilterTheReaderLacksFailsThePreparation)
{
    Bench b;
    QString data;
    EXPECT_FALSE(b.read(data, QStringLiteral("540")));
    EXPECT_EQ(b.reader.dispatchNumbers().last(), 75);
    EXPECT_EQ(b.prompt.last().text, kInitFailure);
}

TEST(BioTekReaders, AReadThatDoesNotStartAsksToCheckTheFilter)
{
    Bench b;
    b.reader.statusOf.insert(121, 3);
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("An error has occurred in initializing the plate reader.\r\n"
                                                   "Please check communication settings, ensure the plate reader is "
                                                   "turned on,\r\nand verify the correct filter is selected."));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Could not Read Plate"));
}

TEST(BioTekReaders, ResultsOtherThan1017AreAFailedRead)
{
    Bench b;
    b.reader.statusOf.insert(80, 11);
    QString data;
    EXPECT_FALSE(b.read(data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("An error has has occurred while reading this plate.  Please\r\n"
                                                   "verify that the selected plate reader is correct, and that the\r\n"
                                                   "plate reader is working properly."));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Could Not Read Plate"));
    EXPECT_EQ(data, QString());
}

TEST(BioTekReaders, TheCommunicationTestSelectsSetsAndConnects)
{
    Bench b;
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.reader.dispatchNumbers(), QList<int>({2, 54, 17, 18}));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Information);
}

TEST(BioTekReaders, A4800BaudLineFailsTheCommunicationTestBeforeTheControlIsSet)
{
    Bench b;
    b.port.setSettings(QStringLiteral("4800,N,8,2"));
    EXPECT_FALSE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.reader.dispatchNumbers(), QList<int>({2, 54}));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Failed"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Exclamation);
}

TEST(BioTekReaders, AModelNumberTheControlRefusesFailsTheCommunicationTest)
{
    Bench b;
    b.driver.setReaderType(20);
    EXPECT_FALSE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.reader.dispatchNumbers(), QList<int>({2}));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Failed"));
}

TEST(BioTekReaders, WithoutTheVendorControlAReadSaysSoAtOnce)
{
    FakeClock clock;
    FakeSleeper sleeper(clock);
    FakePrompt prompt;
    FakeSerialPort port(clock);
    clsReading catalogue(ReaderEnvironment{prompt, sleeper, QString()});
    ASSERT_TRUE(catalogue.SetReader(11));
    QString data;
    try {
        catalogue.currentReader->readData(port, QStringLiteral("1"), QStringLiteral("450"), data);
        FAIL() << "the read went on without the control";
    } catch (const std::exception &e) {
        EXPECT_EQ(QString::fromUtf8(e.what()),
                  QStringLiteral("The Bio-Tek reader control (BTIAutoreader) is not installed on this computer, so "
                                 "Bio-Tek readers can't be used here."));
    }
    EXPECT_EQ(sleeper.calls(), 0);
    EXPECT_EQ(prompt.count(), 0);
    EXPECT_THROW(catalogue.currentReader->testCommunication(port), AutoreaderUnavailable);
}

TEST(BioTekReaders, TheCatalogueTellsEachModelItsBioTekNumber)
{
    FakeClock clock;
    FakeSleeper sleeper(clock);
    FakePrompt prompt;
    clsReading catalogue(ReaderEnvironment{prompt, sleeper, QString()});
    const QList<QPair<int, int>> numbers = {{5, 1}, {9, 2}, {10, 3}, {18, 11}, {25, 18}, {26, 19}};
    for (const auto &[model, number] : numbers) {
        ASSERT_TRUE(catalogue.SetReader(model));
        auto *bioTek = dynamic_cast<clsBioTekReaders *>(catalogue.currentReader.get());
        ASSERT_NE(bioTek, nullptr) << model;
        EXPECT_EQ(bioTek->readerType, number) << model;
    }
}
