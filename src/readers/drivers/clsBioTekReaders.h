#pragma once

#include "readers/ReaderDriver.h"
#include "readers/drivers/BioTekReplies.h"

#include <QtGlobal>

#include <memory>

class Autoreader;

// The Bio-Tek readers (models 5 and 9 to 26). The driver doesn't talk to the serial port:
// Bio-Tek's own control runs the instrument, called by dispatch number; the port only
// lends its number and line settings. The filter is sent as its wavelength.
class clsBioTekReaders : public ReaderDriver {
public:
    // The control's operations, by dispatch number, and the statuses of success.
    enum Dispatch {
        SelectReader = 2,
        SelectPort = 54,
        SetLine = 17,
        FixedSetting53 = 53,
        Connect = 18,
        PrepareRead = 91,
        FixedSetting51 = 51,
        FixedSetting52 = 52,
        SelectFilter = 75,
        FixedSetting83 = 83,
        StartRead = 121,
        FetchResults = 80,
    };
    static constexpr int kDone = 11;
    static constexpr int kResultsDone = 1017;
    static constexpr int kEventPollMs = 10;

    explicit clsBioTekReaders(const ReaderEnvironment &environment);
    ~clsBioTekReaders() override;

    // The Bio-Tek number of the model, for the next control calls.
    void setReaderType(qint16 type) { readerType = type; }

    // Selects the model and port, checks the line settings, sets them and connects.
    bool testCommunication(SerialPort &comm) override;
    // Prepares the reader, starts the read, waits for ReadReady (letting events through,
    // without a time limit) and fetches the 96 values.
    bool readData(SerialPort &comm, const QString &filterNo, const QString &filterValue, QString &data) override;
    void fillReaderValues(RecordSet &values, const QString &data) override;

    // The control's ReadReady event.
    void mPlateReader_ReadReady(qint16 status);

    qint16 readerType = 0;
    bool readReady = false;
    qint16 readStatus = 0;

private:
    void makePlateReader();
    int call(int dispatch, QVariantList arguments);

    ReaderEnvironment mEnvironment;
    std::unique_ptr<Autoreader> mPlateReader;
};
