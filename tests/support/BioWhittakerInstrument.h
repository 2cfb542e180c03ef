#pragma once

#include "PtySimulator.h"

#include <QList>
#include <QString>
#include <QStringList>

// A BioWhittaker Kinetic-QCL as the program meets it on the serial line: framed commands
// (STX, text, ETX). "G" is answered STX "+0000READY" ETX; "N 1 <nm>" with the plate (one
// "W" data block, usually a capture from tests/data) once it has been measured; anything
// else with STX "-" ETX, not understood.
//
// Tests change it: the next answers can be scripted, the reader can keep silent, or be
// switched off (a line that gives only NUL characters).
class BioWhittakerInstrument {
public:
    using Reply = PtySimulator::Reply;
    using Answer = QList<Reply>;
    static constexpr int kAnswerMs = 300;
    static constexpr int kMeasureMs = 3000;

    explicit BioWhittakerInstrument(const QString &plate) : mPlate(plate) {}

    QList<Reply> receive(const QString &bytes);

    // The answers to the next commands, one per command, before the normal ones.
    void script(const QList<Answer> &answers) { mScript += answers; }
    void setSilent(bool silent) { mSilent = silent; }
    void setSwitchedOff(bool off) { mOff = off; }

    // The texts of the frames received.
    QStringList commands() const { return mCommands; }

    static QString readyReply();

private:
    Answer normalAnswer(const QString &command) const;

    QString mPlate;
    QString mLine;
    QStringList mCommands;
    QList<Answer> mScript;
    bool mSilent = false;
    bool mOff = false;
};
