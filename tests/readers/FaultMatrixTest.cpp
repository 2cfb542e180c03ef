// Every serial reader against every way a line fails, through a real pseudo-terminal and
// the production serial layer, on a virtual clock that runs faster than the real one.
// Each read must end within its driver's written time bound, tell the user what
// happened, keep what it holds bounded, and never pass a plate that did not come whole
// from one reading. The row without a fault reads the whole plate.

#include "FaultyLine.h"
#include "PtySimulator.h"
#include "ReaderTestData.h"

#include "platform/QtSerialPort.h"
#include "readers/clsReading.h"

#include <gtest/gtest.h>

#include <memory>
#include <mutex>

namespace {

using Fault = FaultyLine::Fault;

struct Model {
    int id;
    const char *name;
    SerialInstrument::Model model;
    const char *settings;
    int timeScale;     // the instrument's and the driver's short waits
    int longTimeScale; // the driver's waits of a second or more
    qint64 boundMs;    // the driver's written bound
};

using M = SerialInstrument::Model;
const Model kModels[] = {
    {1, "Multiscan", M::Multiscan, "9600,N,8,1", 200, 1000, 614400},
    {8, "MC340", M::MC340, "4800,N,8,1", 200, 1000, 975400},
    {2, "MS2", M::MS2, "2400,N,8,1", 20, 20, 80000},
    {3, "BioWhittaker", M::BioWhittaker, "2400,N,8,1", 40, 40, 93200},
    {4, "THERMOmax", M::THERMOmax, "9600,N,8,1", 5, 50, 38100},
};

struct Case {
    Model model;
    Fault fault;
    const char *faultName;
};

class FaultMatrix : public testing::TestWithParam<Case> {};

TEST_P(FaultMatrix, EndsInBoundsSaysWhatHappenedAndNeverPassesAPartialPlate)
{
    const Case c = GetParam();
    const QString plate = plateCapture(c.model.model);
    auto instrument = std::make_shared<SerialInstrument>(c.model.model, plate);
    FakeClock clock;
    ScaledSleeper sleeper(clock, c.model.timeScale, c.model.longTimeScale);
    FakePrompt prompt(MsgAnswer::Cancel);
    std::mutex mutex;
    FaultyLine line(c.fault, plate, [instrument](const QString &r) { return instrument->receive(r); });
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
        EXPECT_EQ(data, wholeRead(c.model.model));
        EXPECT_EQ(prompt.count(), 0) << told.toStdString();
        return;
    }
    EXPECT_FALSE(ok) << "a faulty line passed a plate";
    EXPECT_GE(prompt.count(), 1) << "nothing was told";
}

const std::pair<Fault, const char *> kFaults[] = {
    {Fault::None, "None"},
    {Fault::Silent, "Silent"},
    {Fault::Garbage, "Garbage"},
    {Fault::HalfPlateThenSilence, "HalfPlateThenSilence"},
    {Fault::Flood, "Flood"},
    {Fault::FloodFromStart, "FloodFromStart"},
    {Fault::DisconnectMidRead, "DisconnectMidRead"},
    {Fault::HangUpAtStart, "HangUpAtStart"},
    {Fault::NulBytes, "NulBytes"},
};

std::vector<Case> allCases()
{
    std::vector<Case> cases;
    for (const Model &m : kModels) {
        for (const auto &[fault, name] : kFaults)
            cases.push_back({m, fault, name});
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(SerialReaders, FaultMatrix, testing::ValuesIn(allCases()),
                         [](const testing::TestParamInfo<Case> &info) {
                             return std::string(info.param.model.name) + "_" + info.param.faultName;
                         });

} // namespace
