#include "readers/drivers/clsTHERMOmaxReader.h"

#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "platform/SerialPort.h"
#include "readers/drivers/DriverMessages.h"
#include "readers/drivers/ReplyPoller.h"
#include "readers/drivers/THERMOmaxReplies.h"

using namespace THERMOmaxReplies;

clsTHERMOmaxReader::clsTHERMOmaxReader(const ReaderEnvironment &environment) : mEnvironment(environment)
{
}

bool clsTHERMOmaxReader::sendEchoed(SerialPort &comm, const QString &command, QString &reply, int waitMs)
{
    bool result = true;
    for (const QChar c : command) {
        comm.output(QString(c));
        mEnvironment.sleeper.sleep(kEchoWaitMs);
        reply = comm.input();
        if (!echoMatches(c, reply)) {
            result = false;
            break;
        }
    }
    mEnvironment.sleeper.sleep(waitMs);
    // Input is taken until the line is quiet for one echo wait, within the poller's bounds.
    ReplyPoller poller(comm, mEnvironment.sleeper);
    if (poller.keep(reply, comm.input())) {
        poller.poll(0, kEchoWaitMs, [&](qint16, int, const QString *input) -> ReplyPoller::Answer {
            if (!input || !poller.keep(reply, *input))
                return {true};
            return {true, kEchoWaitMs, 0};
        });
    }
    mFlooded = mFlooded || poller.endless();
    // The last echo is not part of the answer.
    reply = reply.mid(1);
    return result && !poller.endless();
}

bool clsTHERMOmaxReader::testCommunication(SerialPort &comm)
{
    bool verdict = false;
    if (comm.portOpen() || comm.open()) {
        QString reply;
        sendEchoed(comm, kWakeUp, reply, kCommandWaitMs);
        mEnvironment.sleeper.sleep(kCommandWaitMs);
        comm.discardInput();
        verdict = sendEchoed(comm, kBeep, reply, kCommandWaitMs);
    }
    if (comm.portOpen())
        comm.close();
    DriverMessages::showCommunicationVerdict(mEnvironment.prompt, verdict);
    return verdict;
}

bool clsTHERMOmaxReader::readData(SerialPort &comm, const QString &filterNo, const QString &, QString &data)
{
    if (!comm.portOpen() && !comm.open()) {
        DriverMessages::showPortError(mEnvironment.prompt, comm);
        if (comm.portOpen())
            comm.close();
        return false;
    }
    mFlooded = false;
    comm.setDTREnable(false);
    comm.setNullDiscard(true);
    comm.setRTSEnable(true);

    QString reply;
    sendEchoed(comm, kMode, reply, kCommandWaitMs);
    mEnvironment.sleeper.sleep(kCommandWaitMs);
    bool result = false;
    DriverMessages::PlateFault fault = DriverMessages::PlateFault::None;
    if (!sendEchoed(comm, selectFilter(filterNo), reply, kCommandWaitMs)) {
        if (!mFlooded)
            mEnvironment.prompt.message(QStringLiteral("Error setting filter index"));
    } else if (sendEchoed(comm, kReadPlate, data, kReadWaitMs)) {
        fault = plateFault(data);
        result = fault == DriverMessages::PlateFault::None;
    } else {
        fault = DriverMessages::PlateFault::NotAPlate;
    }
    if (mFlooded)
        fault = DriverMessages::PlateFault::Endless;

    sendEchoed(comm, kLocal, reply, kCommandWaitMs);
    comm.setRTSEnable(false);
    if (comm.portOpen())
        comm.close();
    DriverMessages::showPlateFault(mEnvironment.prompt, fault);
    return result && !mFlooded;
}

void clsTHERMOmaxReader::fillReaderValues(RecordSet &values, const QString &data)
{
    parse(values, data);
}
