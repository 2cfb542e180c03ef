#include "readers/drivers/DriverMessages.h"

#include "platform/Prompt.h"
#include "platform/SerialPort.h"

namespace DriverMessages {

void showPortError(Prompt &prompt, const SerialPort &comm)
{
    prompt.message(QStringLiteral("COM") + QString::number(comm.commPort()) + QStringLiteral(": ")
                   + comm.errorDescription());
}

void showCommunicationVerdict(Prompt &prompt, bool success)
{
    if (success)
        prompt.message(kCommunicationSuccessful, kCommunicationSuccessfulTitle, MsgIcon::Information);
    else
        prompt.message(kCommunicationFailed, kCommunicationFailedTitle, MsgIcon::Exclamation);
}

} // namespace DriverMessages
