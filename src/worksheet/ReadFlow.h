#pragma once

#include <QString>

#include <functional>

class SerialPort;
class Sleeper;
class Workbench;

// The read of the plate on screen (the main window's "Read Plate"), in this order:
//
//  1. a reader and a filter must be chosen, and the controls confirmed (the user may
//     read a plate that lacks them);
//  2. the OD and result sheets and the validation texts are emptied;
//  3. the plate is stamped with the reader, the filter's wavelength, the time and the
//     date, before the reader is contacted: a failed read keeps the stamps;
//  4. the reader's model, port, line settings and handshaking come from its row in
//     UserReaders, and the port (the main window's) is set up with them;
//  5. clsReading makes the model's driver; a model without one is told and stops here;
//  6. the driver reads (the window shows that it is reading meanwhile) and turns the
//     reader's answer into 96 well values;
//  7. each value that is a number becomes the well's raw OD, any other the sentinel
//     9999.9999, so such a well is out of range;
//  8. ODs out of the range -1.0 to 3.0 are warned of, the plate is evaluated, and the
//     window turns to the OD sheet.
//
// From step 6 on, a failure (a missing demo file, data that can't be parsed, a fault of
// the evaluation) is shown in the critical box of a read, and the raw ODs written until
// then stay. Unlike in earlier versions the window is usable again afterwards.
class ReadFlow {
public:
    static constexpr double kSentinel = 9999.9999;
    static inline const QString kAbnormalTitle = QStringLiteral("Abnormal ODs detected");
    static const QString kAbnormalWarning;

    // Called with true when the reader is about to be contacted (the window disables
    // itself, shows the busy pointer and the status text), and with false when the
    // reader has answered or failed (the window is usable again). A read can't be
    // cancelled, so the window offers no way to.
    using ReadingIndicator = std::function<void(bool reading, const QString &statusText)>;

    ReadFlow(Workbench &workbench, SerialPort &comm, Sleeper &sleeper);

    void setReadingIndicator(ReadingIndicator indicator) { mIndicator = std::move(indicator); }

    // The click on "Read Plate". Failures before the reader is contacted (the reader
    // vanished from the database, the database can't be read) are thrown, for the
    // window's command boundary.
    void cmdReadPlate();

    // The status text while a reader reads: "Reading the plate with <reader>..."
    static QString readingStatus(const QString &readerName);

private:
    bool checkReadSelections();
    void reading(bool on, const QString &readerName = QString());

    Workbench &mWb;
    SerialPort &mComm;
    Sleeper &mSleeper;
    ReadingIndicator mIndicator;
};
