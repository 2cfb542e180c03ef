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

inline const QString kCommunicationSuccessfulTitle = QStringLiteral("Communication Successful");
inline const QString kCommunicationSuccessful = QStringLiteral("Test Successful.  Communication settings are valid.");
inline const QString kCommunicationFailedTitle = QStringLiteral("Communication Failed");
inline const QString kCommunicationFailed =
    QStringLiteral("Test Failed.  Communication settings are invalid.  Check settings, and ensure the plate reader is "
                   "turned on and connected.");

} // namespace DriverMessages
