// What every serial driver does alike, on a fake port and the virtual clock: its parse of a
// captured plate, its communication test on a reader that answers, and a port that
// cannot be opened.

#include "ReaderTestData.h"

#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/clsReading.h"

#include <gtest/gtest.h>

namespace {

using M = SerialInstrument::Model;

struct Well {
    int row;
    int col;
    const char *value;
};

struct Driver {
    const char *name;
    M model;
    int modelID;
    QList<Well> wells;        // some values of its capture
    QStringList testCommands; // what its communication test sends
    bool testTellsThePort;    // whether the test tells why a port won't open
};

const Driver kDrivers[] = {
    {"Multiscan",
     M::Multiscan,
     1,
     {{1, 1, " 0.357"}, {2, 1, " 1.839"}, {1, 12, " 1.061"}, {8, 12, " 1.788"}},
     {"R", "Q"},
     true},
    {"MC340",
     M::MC340,
     8,
     {{1, 1, "  0.898"}, {2, 1, "  0.236"}, {4, 6, " -0.004"}, {1, 12, "  1.434"}, {8, 12, "  1.128"}},
     {"R", "Q"},
     true},
    {"MS2", M::MS2, 2, {{1, 1, " 0.041"}, {2, 1, " 0.054"}, {1, 2, " 0.198"}, {8, 12, " 1.859"}}, {"7"}, true},
    {"BioWhittaker",
     M::BioWhittaker,
     3,
     {{1, 1, "0.041"}, {2, 1, "0.054"}, {1, 2, "0.198"}, {8, 12, "1.859"}},
     {"G"},
     true},
    {"THERMOmax",
     M::THERMOmax,
     4,
     {{1, 1, " 0.041"}, {2, 1, " 0.054"}, {1, 2, " 0.198"}, {4, 6, "  OVER"}, {8, 12, " 1.859"}},
     {"\r", "BEP"},
     false},
};

// The catalogue's driver of the model behind a fake port on COM3.
struct Bench {
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakePrompt prompt{MsgAnswer::Yes};
    FakeSerialPort port{clock};
    SerialInstrument instrument;
    clsReading reading{ReaderEnvironment{prompt, sleeper, QString()}};

    explicit Bench(const Driver &d) : instrument(d.model, plateCapture(d.model))
    {
        port.setCommPort(3);
        instrument.attach(port);
        EXPECT_TRUE(reading.SetReader(qint16(d.modelID)));
    }
    ReaderDriver &driver() { return *reading.currentReader; }
};

} // namespace

TEST(SerialDrivers, EachPutsTheValuesOfItsCaptureInWellOrder)
{
    for (const Driver &d : kDrivers) {
        SCOPED_TRACE(d.name);
        Bench b(d);
        RecordSet values = WellValues::create();
        b.driver().fillReaderValues(values, wholeRead(d.model));
        const QStringList vals = wellVals(values);
        ASSERT_EQ(vals.size(), 96);
        for (const Well &w : d.wells)
            EXPECT_EQ(vals[wells::index(w.row, w.col)], QString::fromLatin1(w.value)) << w.row << "," << w.col;
        if (d.model == M::MC340) { // its line ends may or may not have been removed before
            RecordSet withEnds = WellValues::create();
            b.driver().fillReaderValues(withEnds, plateCapture(d.model));
            EXPECT_EQ(wellVals(withEnds), vals);
        }
        // A framed plate that ends early is a read error (the others are measured by their dialogue).
        if (d.model == M::MS2 || d.model == M::BioWhittaker) {
            RecordSet cut = WellValues::create();
            EXPECT_THROW(b.driver().fillReaderValues(cut, wholeRead(d.model).left(d.model == M::MS2 ? 600 : 300)),
                         ReadError);
        }
    }
}

TEST(SerialDrivers, TheCommunicationTestOfAnAnsweringReaderSucceedsAndClosesThePort)
{
    for (const Driver &d : kDrivers) {
        SCOPED_TRACE(d.name);
        Bench b(d);
        EXPECT_TRUE(b.driver().testCommunication(b.port)) << b.prompt.texts().join(u'|').toStdString();
        EXPECT_EQ(b.instrument.commands(), d.testCommands);
        EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Successful"));
        EXPECT_EQ(b.prompt.last().text, QStringLiteral("Test Successful.  Communication settings are valid."));
        EXPECT_FALSE(b.port.portOpen());
    }
}

TEST(SerialDrivers, APortThatCannotBeOpenedIsToldAndNothingIsSent)
{
    for (const Driver &d : kDrivers) {
        SCOPED_TRACE(d.name);
        Bench b(d);
        b.port.failOpen(QStringLiteral("/dev/ttyS2: Permission denied"));
        QString data;
        EXPECT_FALSE(b.driver().readData(b.port, QStringLiteral("1"), QStringLiteral("450"), data));
        EXPECT_EQ(b.prompt.texts(), QStringList({"COM3: /dev/ttyS2: Permission denied"}));
        EXPECT_TRUE(data.isEmpty());
        EXPECT_FALSE(b.driver().testCommunication(b.port));
        EXPECT_EQ(b.prompt.count(), d.testTellsThePort ? 3 : 2);
        EXPECT_TRUE(b.port.sent().isEmpty());
    }
}
