#pragma once

#include <QString>

class AutoreaderFactory;
class Prompt;
class RecordSet;
class SerialPort;
class Sleeper;

// What a reader driver needs of the program: the boxes it shows, its waits, the
// program's folder (the demo readers read their files there) and the maker of the Bio-Tek
// control (none: the control is not installed, as on every computer without the vendor's
// software). Handed to every driver by clsReading.
struct ReaderEnvironment {
    Prompt &prompt;
    Sleeper &sleeper;
    QString programFolder;
    AutoreaderFactory *autoreaders = nullptr;
};

// A plate reader driver. The read flow and the reader configuration call drivers only
// through this interface; clsReading makes the right one for a reader model.
//
// Each driver keeps its dialogue with the instrument apart from its parsing: the reply
// checks and fillReaderValues are pure functions over text.
class ReaderDriver {
public:
    virtual ~ReaderDriver() = default;

    // Checks that the reader answers on the port (already given its number, settings and
    // handshaking) and tells the user the verdict itself; true on success.
    virtual bool testCommunication(SerialPort &comm) = 0;

    // Reads a plate. filterNo is the one-based position of the chosen filter in the
    // reader's list, filterValue its wavelength, both as text; which one the instrument
    // is sent is the driver's business. On success the reader's raw answer is left in
    // data, in a form only this driver's fillReaderValues needs to understand. False means
    // the driver has told the user why and the read is over. Unexpected failures (a
    // missing file) are thrown as ReadError.
    virtual bool readData(SerialPort &comm, const QString &filterNo, const QString &filterValue, QString &data) = 0;

    // Parses data and appends exactly 96 rows (fields Pos and Val) to values, in well
    // order A1, B1 ... H1, A2 ... H12. Data it can't parse throws ReadError.
    virtual void fillReaderValues(RecordSet &values, const QString &data) = 0;
};
