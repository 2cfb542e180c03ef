#pragma once

#include "readers/ReaderDriver.h"
#include "readers/drivers/LabSystemsDialogue.h"

// LabSystems Multiscan RC (model 1). Reads with "P"; the plate comes as 8 rows of 12
// fields of 6 characters, row after row: 576 characters once the line ends are gone.
// The filter is chosen by its position in the reader's list.
class clsLabSystemsReader : public ReaderDriver {
public:
    static const LabSystemsModel kModel;
    static constexpr int kFieldSize = 6;
    static constexpr int kRowSize = 72;

    explicit clsLabSystemsReader(const ReaderEnvironment &environment);

    bool testCommunication(SerialPort &comm) override { return mDialogue.testCommunication(comm); }
    bool readData(SerialPort &comm, const QString &filterNo, const QString &filterValue, QString &data) override
    {
        return mDialogue.readData(comm, filterNo, data);
    }
    void fillReaderValues(RecordSet &values, const QString &data) override { parse(values, data); }

    // Well (row r, column c, from 0) is the 6 characters at r x 72 + c x 6, blanks and
    // all; a well past the end of the data is empty. Pos stays empty.
    static void parse(RecordSet &values, const QString &data);

private:
    LabSystemsDialogue mDialogue;
};
