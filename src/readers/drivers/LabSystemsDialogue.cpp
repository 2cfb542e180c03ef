#include "readers/drivers/LabSystemsDialogue.h"

#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "platform/SerialPort.h"
#include "readers/drivers/DriverMessages.h"
#include "readers/drivers/LabSystemsReplies.h"

using namespace LabSystemsReplies;

namespace {

constexpr int kStartRemoteAttempts = 3;
constexpr int kStartRemotePolls = 101;
constexpr int kSetFilterAttempts = 3;
constexpr int kSetFilterPolls = 201;
constexpr int kBlankOnAirAttempts = 3;
constexpr int kBlankOnAirPolls = 201;
constexpr int kStopRemoteAttempts = 5;
constexpr int kStopRemotePolls = 201;

} // namespace

LabSystemsDialogue::LabSystemsDialogue(const ReaderEnvironment &environment, const LabSystemsModel &model)
    : mEnvironment(environment), mModel(model)
{
}

void LabSystemsDialogue::closeIfOpen(SerialPort &comm)
{
    if (comm.portOpen())
        comm.close();
}

bool LabSystemsDialogue::runCommand(SerialPort &comm, const QString &command, int attempts, int polls, QString &reply)
{
    for (int attempt = 0; attempt < attempts; ++attempt) {
        comm.discardInput();
        reply.clear();
        comm.output(command + kLineEnd);
        for (int poll = 0; poll < polls; ++poll) {
            mEnvironment.sleeper.sleep(kCommandPollMs);
            const QString input = comm.input();
            if (reply.size() < kMaxCommandReply)
                reply = addCommandInput(reply, input);
            if (commandReplyComplete(reply))
                break;
        }
        if (reply == kOK)
            return true;
    }
    return false;
}

bool LabSystemsDialogue::startRemote(SerialPort &comm)
{
    QString reply;
    const bool ok = runCommand(comm, QStringLiteral("R"), kStartRemoteAttempts, kStartRemotePolls, reply);
    if (!ok)
        mEnvironment.prompt.message(kStartRemoteFailure, kStartRemoteTitle, MsgIcon::Exclamation);
    if (mModel.pauseAfterStartRemoteMs > 0)
        mEnvironment.sleeper.sleep(mModel.pauseAfterStartRemoteMs);
    return ok;
}

bool LabSystemsDialogue::setFilter(SerialPort &comm, const QString &filterNo)
{
    QString reply;
    if (runCommand(comm, QStringLiteral("F") + filterNo.trimmed(), kSetFilterAttempts, kSetFilterPolls, reply))
        return true;
    mEnvironment.prompt.message(setFilterFailure(reply), kErrorTitle, MsgIcon::Critical);
    return false;
}

bool LabSystemsDialogue::blankOnAir(SerialPort &comm)
{
    QString reply;
    if (runCommand(comm, QStringLiteral("A"), kBlankOnAirAttempts, kBlankOnAirPolls, reply))
        return true;
    mEnvironment.prompt.message(blankOnAirFailure(reply), kErrorTitle, MsgIcon::Critical);
    return false;
}

bool LabSystemsDialogue::stopRemote(SerialPort &comm)
{
    QString reply;
    if (runCommand(comm, QStringLiteral("Q"), kStopRemoteAttempts, kStopRemotePolls, reply))
        return true;
    mEnvironment.prompt.message(kStopRemoteFailure, kErrorTitle, MsgIcon::Critical);
    return false;
}

bool LabSystemsDialogue::readPlate(SerialPort &comm, QString &data)
{
    QString failure;
    for (int attempt = 0; attempt < kReadAttempts; ++attempt) {
        const qsizetype attemptStart = data.size();
        comm.output(mModel.readCommand + kLineEnd);
        for (int poll = 0; poll < mModel.readPolls; ++poll) {
            mEnvironment.sleeper.sleep(kReadPollMs);
            data = addReadInput(data, comm.input());
            if (readReplyComplete(data, mModel.readCompleteLength))
                break;
        }
        if (data != kER1 && data != kER2 && data != kER3 && data.size() > mModel.acceptedOver) {
            const DriverMessages::PlateFault fault =
                plateFault(data, attemptStart, mModel.plateLength, comm.inBufferCount() > 0);
            DriverMessages::showPlateFault(mEnvironment.prompt, fault);
            return fault == DriverMessages::PlateFault::None;
        }
        failure = readPlateFailure(data);
    }
    mEnvironment.prompt.message(failure, kErrorTitle, MsgIcon::Critical);
    return false;
}

bool LabSystemsDialogue::readData(SerialPort &comm, const QString &filterNo, QString &data)
{
    if (!comm.portOpen() && !comm.open()) {
        DriverMessages::showPortError(mEnvironment.prompt, comm);
        closeIfOpen(comm);
        return false;
    }
    if (!startRemote(comm)) {
        closeIfOpen(comm);
        return false;
    }
    if (!setFilter(comm, filterNo) || !blankOnAir(comm) || !readPlate(comm, data)) {
        stopRemote(comm);
        closeIfOpen(comm);
        return false;
    }
    stopRemote(comm);
    closeIfOpen(comm);
    return true;
}

bool LabSystemsDialogue::testCommunication(SerialPort &comm)
{
    bool verdict = false;
    if (!comm.portOpen() && !comm.open()) {
        DriverMessages::showPortError(mEnvironment.prompt, comm);
    } else {
        comm.discardInput();
        comm.setHandshaking(SerialPort::NoHandshaking);
        if (startRemote(comm)) {
            verdict = true;
            stopRemote(comm);
        }
    }
    closeIfOpen(comm);
    DriverMessages::showCommunicationVerdict(mEnvironment.prompt, verdict);
    return verdict;
}
