#include "readers/drivers/clsBioWhittakerReader.h"

#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "platform/SerialPort.h"
#include "readers/drivers/BioWhittakerReplies.h"
#include "readers/drivers/DriverMessages.h"

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

bool clsBioWhittakerReader::readReply(SerialPort &comm, QString &buffer, qint16 step, qint32 waitMs)
{
    mEnvironment.sleeper.sleep(waitMs);
    bool verdict = true;
    if (comm.inBufferCount() < 1) {
        if (retryCount > kSilentPollsBeforeAsking) {
            const MsgAnswer answer =
                mEnvironment.prompt.ask(kRetryQuestion, kProblemTitle, MsgButtons::RetryCancel, MsgIcon::Exclamation);
            if (answer == MsgAnswer::Retry) {
                readReply(comm, buffer, step, waitMs);
                retryCount = 0;
            } else {
                comm.discardInput();
                closeIfOpen(comm);
                verdict = false;
            }
        } else {
            ++retryCount;
            readReply(comm, buffer, 0, kSilentPollMs);
        }
        return verdict;
    }

    const QString s = comm.input();
    const QChar state = status(s);
    if (step == 0) {
        if (state == u'-') {
            mEnvironment.prompt.message(kNotUnderstood, kProblemTitle, MsgIcon::Critical);
            retryCount = 0;
            return false;
        }
        if (state == u'+') {
            if (s.size() < 7) {
                readReply(comm, buffer, 0, kSilentPollMs);
            } else {
                buffer += s.mid(6);
                if (!buffer.endsWith(kETX))
                    readReply(comm, buffer, 0, kNextPieceMs);
            }
            return verdict;
        }
        if (state != u'W' && firstCode(s) == 0) {
            mEnvironment.prompt.message(kTurnedOff, kProblemTitle, MsgIcon::Critical);
            return false;
        }
        buffer += s;
        if (buffer.size() <= kCompletePlateOver)
            readReply(comm, buffer, 0, kNextPieceMs);
        return verdict;
    }

    // A step of its own is not asked for by the dialogue as it stands.
    if (state == u'-') {
        mEnvironment.prompt.message(kNotUnderstood, kProblemTitle, MsgIcon::Critical);
        return false;
    }
    if (state == u'+') {
        if (waitMs > kSilentPollMs)
            readReply(comm, buffer, 0, kSilentPollMs);
        return verdict;
    }
    if (firstCode(s) == 0) {
        mEnvironment.prompt.message(kTurnedOff, kProblemTitle, MsgIcon::Critical);
        return false;
    }
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
        verdict = readReply(comm, reply, 0, kTestWaitMs);
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
    const bool result = readReply(comm, data, 0, kReadWaitMs);
    comm.setRTSEnable(false);
    closeIfOpen(comm);
    return result;
}

void clsBioWhittakerReader::fillReaderValues(RecordSet &values, const QString &data)
{
    parse(values, data);
}
