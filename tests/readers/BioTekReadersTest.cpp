// The Bio-Tek driver on a simulated control: the settings it passes on, the sequence of
// dispatch numbers and their statuses, the wait for ReadReady, and the plate text with its
// short last value. Without the vendor's control a read ends in a plain error.

#include "EventPumpingSleeper.h"
#include "ReaderTestData.h"

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

TEST(BioTekSettings, SettingsParseToDataBitsBaudStopBitsAndParityAndAreChecked)
{
    const struct {
        const char *text;
        LS parsed;
        bool valid;
    } cases[] = {
        {"9600,N,8,2", {8, 9600, 2, 0}, true},
        {" 19200,e,7,1 ", {7, 19200, 1, 1}, true},
        {"2400,O,8,1", {8, 2400, 1, 2}, true},
        {"9600,M,8,2", {8, 9600, 2, 100}, false}, // parity M passes the parser, not the check
    };
    for (const auto &c : cases) {
        EXPECT_EQ(parseSettings(QString::fromLatin1(c.text)), c.parsed) << c.text;
        EXPECT_EQ(settingsAreValid(c.parsed), c.valid) << c.text;
    }
    for (const char *bad : {"4800,N,8,2", "9600,N,6,2", "9600,N,8,3", "9600,N,8"})
        EXPECT_FALSE(settingsAreValid(parseSettings(QString::fromLatin1(bad)))) << bad;
    EXPECT_THROW(parseSettings(QStringLiteral("9600")), ReadError);
}

TEST(BioTekPlateText, NinetySixValuesRowAfterRowWithTheLastDigitOfH12Lost)
{
    QList<double> values;
    for (int i = 0; i < 96; ++i)
        values << 0.1 + i / 1000.0;
    values[95] = 0.123;
    values[2] = HUGE_VAL; // beyond every number: no number, never zero
    const QStringList wellValues = parsed(plateText(values));
    ASSERT_EQ(wellValues.size(), 96);
    // The text is row after row, the wells column by column.
    EXPECT_EQ(wellValues[wells::index(1, 1)], QStringLiteral("0.100"));
    EXPECT_EQ(wellValues[wells::index(1, 2)], QStringLiteral("0.101"));
    EXPECT_EQ(wellValues[wells::index(1, 3)], QStringLiteral("NaN"));
    EXPECT_EQ(wellValues[wells::index(2, 1)], QStringLiteral("0.112"));
    EXPECT_EQ(wellValues[wells::index(8, 11)], QStringLiteral("0.194"));
    EXPECT_EQ(wellValues[wells::index(8, 12)], QStringLiteral("0.120"));
}

TEST(BioTekPlateText, NinetyFiveTokensRepeatTheFirstValueAndOtherTokensStay)
{
    QStringList tokens;
    for (int i = 0; i < 95; ++i)
        tokens << QStringLiteral("0.%1").arg(200 + i);
    tokens[1] = QStringLiteral("OVRFLW");
    const QStringList wellValues = parsed(tokens.join(u' '));
    EXPECT_EQ(wellValues[wells::index(1, 2)], QStringLiteral("OVRFLW"));
    EXPECT_EQ(wellValues[wells::index(8, 11)], QStringLiteral("0.290")); // the 95th, cut short: 0.29
    EXPECT_EQ(wellValues[wells::index(8, 12)], QStringLiteral("0.200"));
}

TEST(BioTekReaders, AReadCallsTheControlInItsOrderAndWaitsForReadReady)
{
    Bench b;
    b.reader.plate[95] = 1.236;
    b.reader.readyStatus = 7;
    QString data;
    ASSERT_TRUE(b.read(data, QStringLiteral(" 450 "))) << b.prompt.texts().join(u'|').toStdString();
    EXPECT_EQ(b.reader.dispatchNumbers(), QList<int>({2, 54, 17, 53, 18, 91, 51, 52, 75, 83, 121, 80}));
    EXPECT_EQ(b.reader.calls[0].arguments, (QVariantList{4}));
    EXPECT_EQ(b.reader.calls[2].arguments, (QVariantList{8, 9600, 2, 0}));
    EXPECT_EQ(b.reader.calls[8].arguments, (QVariantList{450, -1}));
    EXPECT_TRUE(b.driver.readReady);
    EXPECT_GE(b.sleeper.calls(), 1);
    // The ReadReady status goes to the results.
    EXPECT_EQ(b.driver.readStatus, 7);
    EXPECT_EQ(b.reader.calls.last().arguments.value(0).toInt(), 7);
    EXPECT_EQ(data, plateText(b.reader.plate));
    RecordSet values = WellValues::create();
    b.driver.fillReaderValues(values, data);
    EXPECT_EQ(wellVals(values)[wells::index(2, 1)], QStringLiteral("0.054"));
    EXPECT_EQ(wellVals(values)[wells::index(8, 12)], QStringLiteral("1.230"));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_EQ(b.port.opens(), 0); // the control runs the line, not the driver
}

TEST(BioTekReaders, AFailingStepOfTheReadIsToldInItsWords)
{
    const QString failedRead = QStringLiteral("An error has has occurred while reading this plate.  Please\r\n"
                                              "verify that the selected plate reader is correct, and that the\r\n"
                                              "plate reader is working properly.");
    const struct {
        const char *what;
        const char *settings;
        const char *filter;
        int dispatch; // whose status fails (0: none)
        int lastDispatch;
        QString text;
    } cases[] = {
        // Parity M is passed on unchecked by a read; the instrument is not on that line.
        {"parity M", "9600,M,8,2", "450", 0, 18, kInitFailure},
        {"a filter the reader lacks", "9600,N,8,2", "540", 0, 75, kInitFailure},
        {"a read that does not start", "9600,N,8,2", "450", 121, 121,
         QStringLiteral(
             "An error has occurred in initializing the plate reader.\r\nPlease check communication "
             "settings, ensure the plate reader is turned on,\r\nand verify the correct filter is selected.")},
        {"results other than 1017", "9600,N,8,2", "450", 80, 80, failedRead},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        Bench b;
        b.port.setSettings(QString::fromLatin1(c.settings));
        if (c.dispatch)
            b.reader.statusOf.insert(c.dispatch, c.dispatch == 80 ? 11 : 3);
        QString data;
        EXPECT_FALSE(b.read(data, QString::fromLatin1(c.filter)));
        EXPECT_EQ(b.reader.dispatchNumbers().last(), c.lastDispatch);
        ASSERT_EQ(b.prompt.count(), 1);
        EXPECT_EQ(b.prompt.last().text, c.text);
        EXPECT_EQ(data, QString());
    }
}

TEST(BioTekReaders, TheCommunicationTestSelectsSetsAndConnects)
{
    Bench b;
    EXPECT_TRUE(b.driver.testCommunication(b.port));
    EXPECT_EQ(b.reader.dispatchNumbers(), QList<int>({2, 54, 17, 18}));
    EXPECT_EQ(b.prompt.texts(), QStringList({"Test Successful.  Communication settings are valid."}));

    // A 4800 baud line fails before the control is set; a model number it refuses at once.
    Bench slow;
    slow.port.setSettings(QStringLiteral("4800,N,8,2"));
    EXPECT_FALSE(slow.driver.testCommunication(slow.port));
    EXPECT_EQ(slow.reader.dispatchNumbers(), QList<int>({2, 54}));
    EXPECT_EQ(slow.prompt.last().title, QStringLiteral("Communication Failed"));
    Bench unknown;
    unknown.driver.setReaderType(20);
    EXPECT_FALSE(unknown.driver.testCommunication(unknown.port));
    EXPECT_EQ(unknown.reader.dispatchNumbers(), QList<int>({2}));
    EXPECT_EQ(unknown.prompt.last().title, QStringLiteral("Communication Failed"));
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
