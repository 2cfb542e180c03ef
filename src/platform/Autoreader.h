#pragma once

#include <QList>
#include <QVariant>
#include <QtGlobal>

#include <functional>
#include <memory>
#include <stdexcept>

// The vendor control that runs the Bio-Tek readers' own protocol. Its operations are
// called by dispatch number; each answers a status (the caller knows which status means
// success), and arguments passed by reference come back changed in the list. The end of
// a read is signalled by the ReadReady event, delivered to the handler on the thread that
// runs the event loop, so whoever waits for it must let events through.
class Autoreader {
public:
    using ReadReadyHandler = std::function<void(qint16 status)>;

    virtual ~Autoreader() = default;

    // Runs operation dispatchNumber; arguments by reference are updated in place.
    // Throws AutoreaderUnavailable when there is no control to run it.
    virtual int call(int dispatchNumber, QVariantList &arguments) = 0;
    int call(int dispatchNumber)
    {
        QVariantList none;
        return call(dispatchNumber, none);
    }

    virtual void setReadReadyHandler(ReadReadyHandler handler) = 0;
};

// Makes a new control object; the driver takes a fresh one for every operation.
class AutoreaderFactory {
public:
    virtual ~AutoreaderFactory() = default;
    virtual std::unique_ptr<Autoreader> create() = 0;
};

// The control is not installed on this computer.
class AutoreaderUnavailable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
