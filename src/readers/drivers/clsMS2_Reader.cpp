#include "readers/drivers/clsMS2_Reader.h"

#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "platform/SerialPort.h"
#include "readers/drivers/BioWhittakerReplies.h"
#include "readers/drivers/DriverMessages.h"
#include "readers/drivers/MS2Replies.h"
#include "readers/drivers/ReplyPoller.h"

using namespace MS2Replies;
using BioWhittakerReplies::kNotUnderstood;
using BioWhittakerReplies::kProblemTitle;
using BioWhittakerReplies::kRetryQuestion;
using BioWhittakerReplies::kTurnedOff;

namespace {

constexpr int kSTXCode = 2;
constexpr int kETXCode = 3;
constexpr int kENQCode = 5;
constexpr int kACKCode = 6;
constexpr int kNAKCode = 21;

void closeIfOpen(SerialPort &comm)
{
    if (comm.portOpen())
        comm.close();
}

} // namespace

clsMS2_Reader::clsMS2_Reader(const ReaderEnvironment &environment) : mEnvironment(environment)
{
}

bool clsMS2_Reader::readReply(ReplyPoller &poller, SerialPort &comm, QString &buffer, qint16 step, qint32 waitMs)
{
    using Answer = ReplyPoller::Answer;
    const Answer next{true, kNextReplyMs, 0};
    return poller.poll(step, waitMs, [&](qint16 pollStep, int pollWait, const QString *input) -> Answer {
        if (!input) {
            const MsgAnswer answer =
                mEnvironment.prompt.ask(kRetryQuestion, kProblemTitle, MsgButtons::RetryCancel, MsgIcon::Exclamation);
            if (answer != MsgAnswer::Retry)
                return {false};
            return {true, pollWait, pollStep};
        }
        const QString &s = *input;
        const int first = firstCode(s);
        const int last = lastCode(s);
        if (first == kNAKCode) {
            mEnvironment.prompt.message(kNotUnderstood, kProblemTitle, MsgIcon::Critical);
            return {false};
        }
        if (pollStep > 0) {
            if (first == kACKCode && last == kENQCode) {
                comm.output(QString(kACK));
                return next;
            }
            if (first == kACKCode)
                return next;
        }
        if (first == kENQCode) {
            comm.output(QString(kACK));
            return next;
        }
        if (pollStep == 0) {
            // An empty acknowledge frame ends the exchange.
            if (first == kSTXCode && secondCode(s) == kACKCode && last == kETXCode) {
                comm.output(QString(kACK));
                return {true};
            }
            if (last == kETXCode) {
                if (!poller.keep(buffer, s))
                    return {false};
                comm.output(QString(kACK));
                return next;
            }
        }
        if (first != 0)
            return {true};
        mEnvironment.prompt.message(kTurnedOff, kProblemTitle, MsgIcon::Critical);
        return {false};
    });
}

bool clsMS2_Reader::testCommunication(SerialPort &comm)
{
    bool result = false;
    if (!comm.portOpen() && !comm.open()) {
        DriverMessages::showPortError(mEnvironment.prompt, comm);
    } else {
        comm.discardInput();
        comm.setHandshaking(SerialPort::RequestToSend);
        const QStringList frames = commands(QString());
        QString buffer;
        ReplyPoller poller(comm, mEnvironment.sleeper);
        comm.output(frames[0]);
        mEnvironment.sleeper.sleep(kAfterSendMs);
        result = readReply(poller, comm, buffer, 0, kNextReplyMs);
        if (result) {
            comm.output(frames[1]);
            mEnvironment.sleeper.sleep(kAfterSendMs);
            result = readReply(poller, comm, buffer, 0, kNextReplyMs);
        }
    }
    closeIfOpen(comm);
    if (!result) {
        mEnvironment.prompt.message(kSettingsProblem, QString(), MsgIcon::Exclamation);
        return false;
    }
    const MsgAnswer seen =
        mEnvironment.prompt.ask(kComputerControlQuestion, QString(), MsgButtons::YesNo, MsgIcon::Question);
    DriverMessages::showCommunicationVerdict(mEnvironment.prompt, seen == MsgAnswer::Yes);
    return true;
}

bool clsMS2_Reader::readData(SerialPort &comm, const QString &filterNo, const QString &, QString &data)
{
    bool result = false;
    if (!comm.portOpen() && !comm.open()) {
        DriverMessages::showPortError(mEnvironment.prompt, comm);
    } else {
        // Entry 0, the lone ACK, is the communication test's.
        const QStringList frames = commands(filterNo);
        ReplyPoller poller(comm, mEnvironment.sleeper);
        for (int step = 1; step <= kReadSteps && !poller.endless(); ++step) {
            comm.output(frames[step]);
            mEnvironment.sleeper.sleep(kAfterSendMs);
            result = readReply(poller, comm, data, qint16(step), replyWaitMs(step));
        }
        const DriverMessages::PlateFault fault = poller.endless()
                                                     ? DriverMessages::PlateFault::Endless
                                                     : (result ? plateFault(data) : DriverMessages::PlateFault::None);
        DriverMessages::showPlateFault(mEnvironment.prompt, fault);
        result = result && fault == DriverMessages::PlateFault::None;
    }
    closeIfOpen(comm);
    return result;
}

void clsMS2_Reader::fillReaderValues(RecordSet &values, const QString &data)
{
    parse(values, data);
}
