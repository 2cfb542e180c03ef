#include "readers/drivers/clsBioWhittakerReader.h"

#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "platform/SerialPort.h"
#include "readers/drivers/BioWhittakerReplies.h"
#include "readers/drivers/DriverMessages.h"
#include "readers/drivers/ReplyPoller.h"

using namespace BioWhittakerReplies;

namespace {

void closeIfOpen(SerialPort &comm)
{
    if (comm.portOpen())
        comm.close();
}

} // namespace

clsBioWhittakerReader::clsBioWhittakerReader(const ReaderEnvironment &environment) : mEnvironment(environment)
{
}

bool clsBioWhittakerReader::readReply(ReplyPoller &poller, SerialPort &comm, QString &buffer, qint16 step,
                                      qint32 waitMs)
{
    using Answer = ReplyPoller::Answer;
    // A retry the user asked for sets the silence count back once the reply is over.
    bool retried = false;
    const bool verdict = poller.poll(step, waitMs, [&](qint16 pollStep, int pollWait, const QString *input) -> Answer {
        if (!input) {
            if (retryCount <= kSilentPollsBeforeAsking) {
                ++retryCount;
                return {true, kSilentPollMs, 0};
            }
            const MsgAnswer answer =
                mEnvironment.prompt.ask(kRetryQuestion, kProblemTitle, MsgButtons::RetryCancel, MsgIcon::Exclamation);
            if (answer == MsgAnswer::Retry) {
                retried = true;
                return {true, pollWait, pollStep};
            }
            comm.discardInput();
            closeIfOpen(comm);
            return {false};
        }
        const QString &s = *input;
        const QChar state = status(s);
        if (state == u'-') {
            mEnvironment.prompt.message(kNotUnderstood, kProblemTitle, MsgIcon::Critical);
            if (pollStep == 0)
                retryCount = 0;
            return {false};
        }
        if (pollStep > 0) {
            // A step of its own is not asked for by the dialogue as it stands.
            if (state == u'+')
                return {true, pollWait > kSilentPollMs ? kSilentPollMs : -1, 0};
        } else if (state == u'+') {
            if (s.size() < 7)
                return {true, kSilentPollMs, 0};
            if (!poller.keep(buffer, s.mid(6)))
                return {false};
            return {true, buffer.endsWith(kETX) ? -1 : kNextPieceMs, 0};
        }
        if ((pollStep > 0 || state != u'W') && firstCode(s) == 0) {
            mEnvironment.prompt.message(kTurnedOff, kProblemTitle, MsgIcon::Critical);
            return {false};
        }
        if (pollStep > 0)
            return {true};
        if (!poller.keep(buffer, s))
            return {false};
        return {true, buffer.size() <= kCompletePlateOver ? kNextPieceMs : -1, 0};
    });
    if (retried)
        retryCount = 0;
    return verdict;
}

bool clsBioWhittakerReader::testCommunication(SerialPort &comm)
{
    bool verdict = false;
    if (!comm.portOpen() && !comm.open()) {
        DriverMessages::showPortError(mEnvironment.prompt, comm);
    } else {
        comm.discardInput();
        comm.output(testFrame());
        mEnvironment.sleeper.sleep(kAfterSendMs);
        comm.setRTSEnable(true);
        QString reply;
        ReplyPoller poller(comm, mEnvironment.sleeper);
        verdict = readReply(poller, comm, reply, 0, kTestWaitMs);
    }
    closeIfOpen(comm);
    DriverMessages::showCommunicationVerdict(mEnvironment.prompt, verdict);
    return verdict;
}

bool clsBioWhittakerReader::readData(SerialPort &comm, const QString &, const QString &filterValue, QString &data)
{
    if (!comm.portOpen() && !comm.open()) {
        DriverMessages::showPortError(mEnvironment.prompt, comm);
        closeIfOpen(comm);
        return false;
    }
    comm.setRTSEnable(true);
    comm.output(readFrame(filterValue));
    mEnvironment.sleeper.sleep(kAfterSendMs);
    ReplyPoller poller(comm, mEnvironment.sleeper);
    bool result = readReply(poller, comm, data, 0, kReadWaitMs);
    comm.setRTSEnable(false);
    closeIfOpen(comm);
    const DriverMessages::PlateFault fault = poller.endless() ? DriverMessages::PlateFault::Endless
                                             : result         ? plateFault(data)
                                                              : DriverMessages::PlateFault::None;
    DriverMessages::showPlateFault(mEnvironment.prompt, fault);
    return result && fault == DriverMessages::PlateFault::None;
}

void clsBioWhittakerReader::fillReaderValues(RecordSet &values, const QString &data)
{
    parse(values, data);
}
