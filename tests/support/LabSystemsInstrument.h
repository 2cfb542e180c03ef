#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

// A LabSystems plate reader as the program meets it on the serial line: ASCII commands
// ending in CR LF, answered "OK", "ER1", "ER2", "ER3" or with the plate's data. The
// Multiscan reads on "P" and sends 8 rows of 72 characters; the MC 340 reads on "M12"
// and sends 12 column records of 58 characters (the plate stream is given, usually a
// capture from tests/data).
//
// The instrument only decides what to answer and when; a transport delivers it: the
// FakeSerialPort on the virtual clock, or a PtySimulator on a real pseudo-terminal.
//
// Normal behaviour: "R" takes the reader under remote control; "F<n>", "A" and the read
// answer "ER2" (invalid command sequence) unless it is; "Q" releases it; anything else
// is "ER2". Tests change it with script() and setSilent().
class LabSystemsInstrument {
public:
    enum class Model { Multiscan, MC340 };
    struct Reply {
        QString text;
        int afterMs = 0; // from the moment the command arrived
    };
    using Answer = QList<Reply>;

    static constexpr int kAnswerMs = 40;
    static constexpr int kFirstDataMs = 1500;
    static constexpr int kDataLineMs = 200;

    LabSystemsInstrument(Model model, const QString &plateStream);

    // Bytes that came down the line; returns what to answer to the commands they complete.
    QList<Reply> receive(const QString &bytes);

    // The next answers to a command, one per time it is sent, before the normal answer
    // comes back. The command is its letter for "F" (any filter), else the whole command.
    // A scripted "OK" has the command's effect (control taken, filter set ...).
    void script(const QString &command, const QList<Answer> &answers);
    // A silent reader answers nothing at all.
    void setSilent(bool silent) { mSilent = silent; }

    // The commands received, without their CR LF.
    QStringList commands() const { return mCommands; }
    int count(const QString &command) const;
    bool remote() const { return mRemote; }
    int filter() const { return mFilter; }
    QString readCommand() const;

    // Helpers for scripts.
    static Answer answer(const QString &text, int afterMs = kAnswerMs) { return {Reply{text, afterMs}}; }
    // The plate stream split at its line ends, one line every kDataLineMs.
    Answer plateData() const;

private:
    QString key(const QString &command) const;
    Answer normalAnswer(const QString &command);

    Model mModel;
    QString mPlateStream;
    QString mLine;
    QStringList mCommands;
    QMap<QString, QList<Answer>> mScript;
    bool mSilent = false;
    bool mRemote = false;
    int mFilter = 0;
};
