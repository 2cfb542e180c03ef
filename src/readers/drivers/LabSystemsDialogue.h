#pragma once

#include "readers/ReaderDriver.h"

#include <QString>

// What sets the two LabSystems readers apart in their dialogue.
struct LabSystemsModel {
    QString readCommand;         // "P" (Multiscan), "M12" (MC 340)
    int readPolls;               // polls of one second per read attempt
    int readCompleteLength;      // the read's wait ends at this many characters
    int acceptedOver;            // a read is good when its data is longer than this
    int pauseAfterStartRemoteMs; // extra wait after taking control, whatever its outcome
    int plateLength;             // and holds exactly the plate, from one attempt
};

// The command dialogue of the LabSystems readers over a serial port: take control of
// the reader ("R"), set the filter ("F" and its number), blank on air ("A"), read the
// plate, release the reader ("Q"). Each step sends its command, then polls the port,
// adding each poll's input (without CR LF) to the reply, until the reply is complete or
// the polls are used up, and tries again up to its number of attempts.
//
// Everything is told to the user here; the read flow only sees true or false.
class LabSystemsDialogue {
public:
    static constexpr int kCommandPollMs = 100;
    static constexpr int kReadPollMs = 1000;
    static constexpr int kReadAttempts = 3;
    // A command's reply can't be "OK" once it is longer; what comes after is not kept.
    static constexpr int kMaxCommandReply = 256;

    LabSystemsDialogue(const ReaderEnvironment &environment, const LabSystemsModel &model);

    // Opens the port if needed, takes control of the reader without handshaking and
    // releases it, closes the port, and tells the verdict.
    bool testCommunication(SerialPort &comm);

    // The whole read. A port that can't be opened is told and the read fails (older
    // versions went on with no data). Any failed step after taking control releases the
    // reader. The port is closed at the end.
    //
    // Time bound, whatever the reader sends: the attempts and polls of the steps,
    // R 3 x 101 x 0.1 s, F and A 3 x 201 x 0.1 s each, the read 3 x readPolls x 1 s, Q
    // 5 x 201 x 0.1 s, and the pause after R: 614.4 s for the Multiscan, 975.4 s for the
    // MC 340. Each poll takes at most what the port holds (QtSerialPort caps it).
    bool readData(SerialPort &comm, const QString &filterNo, QString &data);

    // The steps.
    bool startRemote(SerialPort &comm);
    bool setFilter(SerialPort &comm, const QString &filterNo);
    bool blankOnAir(SerialPort &comm);
    // The read neither empties the port's input nor the data between attempts: a retry
    // adds to what has come so far. A read is only good when the data of the attempt that
    // ends it is the whole plate and nothing else (a retry after part of a plate would
    // mix two readings): otherwise the user is told at once and the read fails.
    bool readPlate(SerialPort &comm, QString &data);
    bool stopRemote(SerialPort &comm);

private:
    // Sends the command up to attempts times; true on "OK". Otherwise reply holds the
    // last attempt's reply.
    bool runCommand(SerialPort &comm, const QString &command, int attempts, int polls, QString &reply);
    void closeIfOpen(SerialPort &comm);

    ReaderEnvironment mEnvironment;
    LabSystemsModel mModel;
};
