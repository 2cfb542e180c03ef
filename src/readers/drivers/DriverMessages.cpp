#include "readers/drivers/DriverMessages.h"

#include "platform/Prompt.h"
#include "platform/SerialPort.h"

namespace DriverMessages {

void showPortError(Prompt &prompt, const SerialPort &comm)
{
    prompt.message(QStringLiteral("COM") + QString::number(comm.commPort()) + QStringLiteral(": ") +
                   comm.errorDescription());
}

QString plateFaultText(PlateFault fault)
{
    const QString kept = QStringLiteral("  The plate has not been read and stays as it was.\r\n");
    const QString again = QStringLiteral("Please check that the plate reader is turned on and connected, then read the "
                                         "plate again.");
    switch (fault) {
    case PlateFault::None: break;
    case PlateFault::Partial: return QStringLiteral("The plate reader sent only part of the plate.") + kept + again;
    case PlateFault::Mixed:
        return QStringLiteral("The plate reader's data came from more than one reading.") + kept + again;
    case PlateFault::Endless: return QStringLiteral("The plate reader did not stop sending data.") + kept + again;
    case PlateFault::NotAPlate:
        return QStringLiteral("What the plate reader sent is not a plate of 96 values.") + kept +
               QStringLiteral("Please make sure that you have selected the correct plate reader and settings, "
                              "then read the plate again.");
    }
    return QString();
}

void showPlateFault(Prompt &prompt, PlateFault fault)
{
    if (fault != PlateFault::None)
        prompt.message(plateFaultText(fault), kPlateFaultTitle, MsgIcon::Exclamation);
}

void showCommunicationVerdict(Prompt &prompt, bool success)
{
    if (success)
        prompt.message(kCommunicationSuccessful, kCommunicationSuccessfulTitle, MsgIcon::Information);
    else
        prompt.message(kCommunicationFailed, kCommunicationFailedTitle, MsgIcon::Exclamation);
}

} // namespace DriverMessages
