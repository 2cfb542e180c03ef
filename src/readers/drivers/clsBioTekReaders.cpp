#include "readers/drivers/clsBioTekReaders.h"

#include "core/LegacyFormat.h"
#include "platform/AbsentAutoreader.h"
#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "platform/SerialPort.h"
#include "readers/drivers/DriverMessages.h"

#include <cmath>
#include <limits>

using namespace BioTekReplies;

namespace {

const QString kCouldNotReadTitle = QStringLiteral("Could not Read Plate");
const QString kInitFailure = QStringLiteral("An error has occurred in initializing the plate reader.") + kCrLf +
                             QStringLiteral("Please check communication settings and ensure the plate reader is "
                                            "turned on.");
const QString kStartFailure = QStringLiteral("An error has occurred in initializing the plate reader.") + kCrLf +
                              QStringLiteral("Please check communication settings, ensure the plate reader is "
                                             "turned on,") +
                              kCrLf + QStringLiteral("and verify the correct filter is selected.");
const QString kResultsFailureTitle = QStringLiteral("Could Not Read Plate");
const QString kResultsFailure = QStringLiteral("An error has has occurred while reading this plate.  Please") + kCrLf +
                                QStringLiteral("verify that the selected plate reader is correct, and that the") +
                                kCrLf + QStringLiteral("plate reader is working properly.");

QVariantList lineArguments(const LineSettings &s)
{
    return {s.dataBits, s.baudRate, s.stopBits, s.parity};
}

QList<double> doublesOf(const QVariant &array)
{
    QList<double> values;
    // A value the control gives that is no number, or none a double holds, is NaN (shown
    // "NaN", read as no number), never 0.
    for (const QVariant &v : array.toList()) {
        bool ok = false;
        const double value = v.toDouble(&ok);
        values << (ok && std::isfinite(value) ? value : std::numeric_limits<double>::quiet_NaN());
    }
    return values;
}

} // namespace

clsBioTekReaders::clsBioTekReaders(const ReaderEnvironment &environment) : mEnvironment(environment)
{
}

clsBioTekReaders::~clsBioTekReaders() = default;

void clsBioTekReaders::makePlateReader()
{
    static AbsentAutoreaderFactory absent;
    AutoreaderFactory &factory = mEnvironment.autoreaders ? *mEnvironment.autoreaders : absent;
    mPlateReader = factory.create();
    mPlateReader->setReadReadyHandler([this](qint16 status) { mPlateReader_ReadReady(status); });
}

int clsBioTekReaders::call(int dispatch, QVariantList arguments)
{
    return mPlateReader->call(dispatch, arguments);
}

void clsBioTekReaders::mPlateReader_ReadReady(qint16 status)
{
    readReady = true;
    readStatus = status;
}

bool clsBioTekReaders::testCommunication(SerialPort &comm)
{
    makePlateReader();
    QVariantList type{readerType};
    bool ok = mPlateReader->call(SelectReader, type) == kDone;
    ok = ok && call(SelectPort, {comm.commPort()}) == kDone;
    const LineSettings settings = ok ? parseSettings(comm.settings()) : LineSettings();
    ok = ok && settingsAreValid(settings);
    ok = ok && call(SetLine, lineArguments(settings)) == kDone;
    ok = ok && call(Connect, {}) == kDone;
    DriverMessages::showCommunicationVerdict(mEnvironment.prompt, ok);
    return ok;
}

bool clsBioTekReaders::readData(SerialPort &comm, const QString &, const QString &filterValue, QString &data)
{
    makePlateReader();
    readReady = false;

    QVariantList type{readerType};
    bool ok = mPlateReader->call(SelectReader, type) == kDone;
    ok = ok && call(SelectPort, {comm.commPort()}) == kDone;
    // The settings go to the control unchecked here.
    ok = ok && call(SetLine, lineArguments(parseSettings(comm.settings()))) == kDone;
    ok = ok && call(FixedSetting53, {26}) == kDone;
    ok = ok && call(Connect, {}) == kDone;
    ok = ok && call(PrepareRead, {}) == kDone;
    ok = ok && call(FixedSetting51, {1}) == kDone;
    ok = ok && call(FixedSetting52, {4}) == kDone;
    ok = ok && call(SelectFilter, {legacy::toInt16(filterValue), -1}) == kDone;
    ok = ok && call(FixedSetting83, {11}) == kDone;
    if (!ok) {
        mEnvironment.prompt.message(kInitFailure, kCouldNotReadTitle, MsgIcon::Exclamation);
        return false;
    }
    if (call(StartRead, {true}) != kDone) {
        mEnvironment.prompt.message(kStartFailure, kCouldNotReadTitle, MsgIcon::Exclamation);
        return false;
    }

    // The event comes through the event loop; the sleeper lets it through.
    while (!readReady)
        mEnvironment.sleeper.sleep(kEventPollMs);

    QVariantList results{readStatus, 0, 0, QVariantList(), 0, false, -1.0, qint32(0)};
    if (mPlateReader->call(FetchResults, results) != kResultsDone) {
        mEnvironment.prompt.message(kResultsFailure, kResultsFailureTitle, MsgIcon::Exclamation);
        return false;
    }
    data = plateText(doublesOf(results.value(3)));
    return true;
}

void clsBioTekReaders::fillReaderValues(RecordSet &values, const QString &data)
{
    parse(values, data);
}
