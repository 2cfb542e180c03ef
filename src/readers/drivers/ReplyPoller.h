#pragma once

#include <QString>
#include <QtGlobal>

#include <functional>

class SerialPort;
class Sleeper;

// The one poll loop of the serial drivers that wait for their replies piece by piece
// (MS2, BioWhittaker, the Molecular Devices echo drain). Each poll sleeps, then looks at
// the port: silence, or the input that has come. The driver's rule answers the poll: its
// verdict, and whether and after how long to poll again. Only the first poll's verdict
// is the reply's verdict; the later ones were the answers of nested calls in the older
// drivers and are dropped, as they always were.
//
// Bounds, whatever the instrument sends: a poller gives at most maxPieces polls that find
// input over its whole life (one read or one communication test), and the text a driver
// keeps may grow to maxChars. Past either the poller is "endless": the loop stops, and
// the driver tells the user that the reader would not stop sending. Silent polls are
// bounded by the drivers themselves (a count, or the user's answer to a question).
class ReplyPoller {
public:
    struct Answer {
        bool verdict = true;
        int nextWaitMs = -1; // below 0: the reply is over
        qint16 nextStep = 0;
    };
    // input is null for a silent poll.
    using Rule = std::function<Answer(qint16 step, int waitMs, const QString *input)>;

    static constexpr int kDefaultMaxPieces = 64;
    static constexpr qsizetype kDefaultMaxChars = 16384;

    ReplyPoller(SerialPort &comm, Sleeper &sleeper, int maxPieces = kDefaultMaxPieces,
                qsizetype maxChars = kDefaultMaxChars);

    // Polls from (step, waitMs) until the rule ends the reply or the bounds are reached.
    bool poll(qint16 step, int waitMs, const Rule &rule);

    // Adds text to a reply the driver keeps, within maxChars; false (and endless) when it
    // would grow past it.
    bool keep(QString &buffer, const QString &text);

    bool endless() const { return mEndless; }

private:
    SerialPort &mComm;
    Sleeper &mSleeper;
    int mPiecesLeft;
    qsizetype mMaxChars;
    bool mEndless = false;
};
