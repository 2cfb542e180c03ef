// Every serial reader against every way a line fails, through a real pseudo-terminal and
// the production serial layer, on a virtual clock that runs faster than the real one.
// Each read must end within its driver's written time bound, tell the user what
// happened, keep what it holds bounded, and never pass a plate that did not come whole
// from one reading. The row without a fault reads the whole plate.

#include "BioWhittakerInstrument.h"
#include "FakeClock.h"
#include "FakePrompt.h"
#include "FaultyLine.h"
#include "LabSystemsInstrument.h"
#include "MS2Instrument.h"
#include "PtySimulator.h"
#include "ReaderTestData.h"
#include "THERMOmaxInstrument.h"

#include "platform/QtSerialPort.h"
#include "readers/WellValues.h"
#include "readers/clsReading.h"

#include <gtest/gtest.h>

#include <memory>
#include <mutex>

namespace {

using Fault = FaultyLine::Fault;

struct Model {
    int id;
    const char *name;
    const char *capture;
    const char *settings;
    int timeScale;      // the instrument's and the driver's short waits
    int longTimeScale;  // the driver's waits of a second or more
    qint64 boundMs;     // the driver's written bound
};

const Model kModels[] = {
    {1, "Multiscan", "clsLabSystemsReader/plate.cap", "9600,N,8,1", 200, 1000, 614400},
    {8, "MC340", "clsLabSystemsMC340/plate.cap", "4800,N,8,1", 200, 1000, 975400},
    {2, "MS2", "clsMS2_Reader/plate.cap", "2400,N,8,1", 20, 20, 80000},
    {3, "BioWhittaker", "clsBioWhittakerReader/plate.cap", "2400,N,8,1", 40, 40, 93200},
    {4, "THERMOmax", "clsTHERMOmaxReader/plate.cap", "9600,N,8,1", 10, 100, 38100},
};

// The instrument simulator of a model, answering through the faulty line.
FaultyLine::Instrument instrumentOf(int id, const QString &plate)
{
    switch (id) {
    case 1:
    case 8: {
        auto in = std::make_shared<LabSystemsInstrument>(
            id == 1 ? LabSystemsInstrument::Model::Multiscan : LabSystemsInstrument::Model::MC340, plate);
        return [in](const QString &r) {
            QList<PtySimulator::Reply> replies;
            for (const LabSystemsInstrument::Reply &x : in->receive(r))
                replies.append({x.text, x.afterMs});
            return replies;
        };
    }
    case 2: return [in = std::make_shared<MS2Instrument>(plate)](const QString &r) { return in->receive(r); };
    case 3: return [in = std::make_shared<BioWhittakerInstrument>(plate)](const QString &r) { return in->receive(r); };
    default: return [in = std::make_shared<THERMOmaxInstrument>(plate)](const QString &r) { return in->receive(r); };
    }
}

// What the driver collects from a reader without a fault.
QString wholeRead(int id, const QString &plate)
{
    if (id == 1 || id == 8)
        return QString(plate).remove(QStringLiteral("\r\n"));
    if (id == 2)
        return QStringLiteral("\x02" "7 OK\x03\x02" "320 OK\x03\x02" "301 OK\x03") + plate + QStringLiteral("\x02" "16 OK\x03");
    return plate;
}

struct Case {
    Model model;
    Fault fault;
};

class FaultMatrix : public testing::TestWithParam<Case> {};

TEST_P(FaultMatrix, EndsInBoundsSaysWhatHappenedAndNeverPassesAPartialPlate)
{
    const Case c = GetParam();
    const QString plate = readerTestData(QString::fromLatin1(c.model.capture));
    FakeClock clock;
    ScaledSleeper sleeper(clock, c.model.timeScale, c.model.longTimeScale);
    FakePrompt prompt(MsgAnswer::Cancel);
    std::mutex mutex;
    FaultyLine line(c.fault, plate, instrumentOf(c.model.id, plate));
    PtySimulator simulator(
        [&](const QString &received) {
            std::lock_guard lock(mutex);
            return line.receive(received);
        },
        c.model.timeScale);
    if (!simulator.isValid())
        GTEST_SKIP() << "no pseudo-terminal available";
    {
        std::lock_guard lock(mutex);
        line.attach(simulator);
    }
    QtSerialPort port;
    port.setCommPort(1);
    port.setPortName(simulator.slavePath());
    port.setSettings(QString::fromLatin1(c.model.settings));
    clsReading reading(ReaderEnvironment{prompt, sleeper, QString()});
    ASSERT_TRUE(reading.SetReader(c.model.id));

    const QDateTime start = clock.now();
    QString data;
    const bool ok = reading.currentReader->readData(port, QStringLiteral("1"), QStringLiteral("450"), data);
    const QString told = prompt.texts().join(QStringLiteral(" | "));

    EXPECT_LE(start.msecsTo(clock.now()), c.model.boundMs);
    EXPECT_LE(data.size(), QtSerialPort::kMaxBuffered);
    EXPECT_FALSE(port.portOpen());
    if (c.fault == Fault::None) {
        EXPECT_TRUE(ok) << told.toStdString();
        EXPECT_EQ(data, wholeRead(c.model.id, plate));
        EXPECT_EQ(prompt.count(), 0) << told.toStdString();
        return;
    }
    EXPECT_FALSE(ok) << "a faulty line passed a plate";
    EXPECT_GE(prompt.count(), 1) << "nothing was told";
}

std::vector<Case> allCases()
{
    std::vector<Case> cases;
    for (const Model &m : kModels) {
        for (Fault f : {Fault::None, Fault::Silent, Fault::Garbage, Fault::HalfPlateThenSilence, Fault::Flood,
                        Fault::FloodFromStart, Fault::DisconnectMidRead, Fault::HangUpAtStart, Fault::NulBytes})
            cases.push_back({m, f});
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(SerialReaders, FaultMatrix, testing::ValuesIn(allCases()),
                         [](const testing::TestParamInfo<Case> &info) {
                             return std::string(info.param.model.name) + "_" + FaultyLine::name(info.param.fault);
                         });

} // namespace
