#pragma once

#include "readers/ReaderDriver.h"

// A reader without an instrument: it answers from a capture of an MS2 reader's output
// kept as a text file in the program's folder, so a whole read can run with no hardware.
// The captures' layout, once the lines are joined without line ends:
//
//   a header, up to and including the sixth ETX (character 3), skipped;
//   12 column blocks, each 8 well records and one spare character;
//   a well record of 13 characters: 4 of position ("12-A"), 3 skipped, 6 of value.
//
// (The MS2 reader itself sends 14-character records, as the serial stream keeps the line
// end that the file reading drops.)
class DemoResultsReader : public ReaderDriver {
public:
    DemoResultsReader(const ReaderEnvironment &environment, const QString &fileName);

    // No instrument to test: says so and succeeds.
    bool testCommunication(SerialPort &comm) override;
    // Appends the file's lines, without their line ends, to data. A missing or
    // unreadable file throws ReadError. A file whose records don't name their wells in
    // order (not a capture of a plate) is told and the read fails. Port and filters are
    // not used.
    bool readData(SerialPort &comm, const QString &filterNo, const QString &filterValue, QString &data) override;
    void fillReaderValues(RecordSet &values, const QString &data) override { parse(values, data); }

    // The parse of the joined text: 96 rows, Pos the position without its dash ("12A"),
    // Val the 6 characters of the value as they stand. A header with fewer than six ETX
    // makes the search start over at the first character. A text that ends before a
    // well's position throws ReadError.
    static void parse(RecordSet &values, const QString &data);

    QString fileName() const { return mFileName; }
    QString filePath() const;

private:
    ReaderEnvironment mEnvironment;
    QString mFileName;
};
