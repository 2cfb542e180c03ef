#pragma once

#include "readers/ReaderDriver.h"
#include "readers/drivers/LabSystemsDialogue.h"

// LabSystems MC 340, the older LabSystems readers (model 8). Reads with "M12"; the plate
// comes as 12 records of 58 characters, one per plate column: 2 characters of header
// and 8 fields of 7 characters, top row first. It needs a second after being taken
// under control.
class clsLabSystemsMC340 : public ReaderDriver {
public:
    static const LabSystemsModel kModel;
    static constexpr int kRecordSize = 58;
    static constexpr int kHeaderSize = 2;
    static constexpr int kFieldSize = 7;
    // The wait of a read ends at the whole plate, not at 691 characters as in older
    // versions: the last record would be cut short.
    static constexpr int kPlateLength = 12 * kRecordSize;

    explicit clsLabSystemsMC340(const ReaderEnvironment &environment);

    bool testCommunication(SerialPort &comm) override { return mDialogue.testCommunication(comm); }
    bool readData(SerialPort &comm, const QString &filterNo, const QString &filterValue, QString &data) override
    {
        return mDialogue.readData(comm, filterNo, data);
    }
    void fillReaderValues(RecordSet &values, const QString &data) override { parse(values, data); }

    // Drops the line ends and each record's header, then well (row r, column c) is the
    // 7 characters at c x 56 + r x 7 of what is left. Pos stays empty.
    static void parse(RecordSet &values, const QString &data);

private:
    LabSystemsDialogue mDialogue;
};
