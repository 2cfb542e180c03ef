#pragma once

#include "platform/Autoreader.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QVariant>

// A Bio-Tek reader behind a simulated control, for the tests and for the command-line
// companion's --simulated-autoreader: no vendor software, no instrument. It keeps the
// instrument's state across the control objects it makes, as a reader on its cable does.
//
// The instrument is on the line given here and has the filters given here. The control
// answers 11 to the calls that succeed: model numbers 1 to 19, a port number above 0,
// connect (18) only when the line set by 17 is the instrument's, a filter (75) the
// instrument has. The read (121) raises ReadReady through the event loop after
// readyAfterMs; fetching the results (80) then answers 1017 and gives the plate, row after
// row. A status other than 11 is 0 here. Tests can make any call answer another status.
class SimulatedBioTekReader : public AutoreaderFactory {
public:
    struct Call {
        int dispatch;
        QVariantList arguments;
    };

    SimulatedBioTekReader();

    std::unique_ptr<Autoreader> create() override;

    // The instrument.
    QList<double> plate; // 96 values, A1, A2 ... A12, B1 ... H12
    QVariantList line{8, 9600, 2, 0};
    QList<int> filters{405, 450, 490, 630};
    int readyAfterMs = 0;
    qint16 readyStatus = 0;
    // A call that answers this status instead.
    QMap<int, int> statusOf;

    // What the controls were asked, in order, over all of them.
    QList<Call> calls;
    QList<int> dispatchNumbers() const;
    int controlsMade = 0;

    // What the calls did.
    int answer(int dispatch, QVariantList &arguments);
    QVariantList lineSet;
    bool measured = false;
};

// One control object of the simulated reader.
class SimulatedAutoreader : public Autoreader {
public:
    explicit SimulatedAutoreader(SimulatedBioTekReader &reader) : mReader(reader) {}

    int call(int dispatchNumber, QVariantList &arguments) override;
    void setReadReadyHandler(ReadReadyHandler handler) override { mHandler = std::move(handler); }

private:
    SimulatedBioTekReader &mReader;
    ReadReadyHandler mHandler;
    QObject mEvents; // the read's pending event goes with the control
};
