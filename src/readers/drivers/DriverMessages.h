#pragma once

#include <QString>

class Prompt;
class SerialPort;

// Boxes that every serial driver shows in the same words.
namespace DriverMessages {

// "COM" and the port number, ": " and why the port could not be opened; shown without
// icon or title.
void showPortError(Prompt &prompt, const SerialPort &comm);

// The verdict of a communication test.
void showCommunicationVerdict(Prompt &prompt, bool success);

// Why a read is refused although the reader answered: a plate is only read when all its
// 96 values came from the instrument in one reading. The plate stays as it was.
enum class PlateFault {
    None,
    Partial,   // the data ended before the last well
    Mixed,     // a retry added to what an earlier attempt had left
    Endless,   // the reader would not stop sending
    NotAPlate, // what came has not the layout of a plate
};
QString plateFaultText(PlateFault fault);
// Shown with kPlateFaultTitle and the exclamation icon; nothing for PlateFault::None.
void showPlateFault(Prompt &prompt, PlateFault fault);
inline const QString kPlateFaultTitle = QStringLiteral("Could not Read Plate");

inline const QString kCommunicationSuccessfulTitle = QStringLiteral("Communication Successful");
inline const QString kCommunicationSuccessful = QStringLiteral("Test Successful.  Communication settings are valid.");
inline const QString kCommunicationFailedTitle = QStringLiteral("Communication Failed");
inline const QString kCommunicationFailed =
    QStringLiteral("Test Failed.  Communication settings are invalid.  Check settings, and ensure the plate reader is "
                   "turned on and connected.");

} // namespace DriverMessages
