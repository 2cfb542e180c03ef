#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class DbConnection;
struct ReaderEnvironment;

// Derives a saved plate's raw ODs again from the text its last read brought (RawReads),
// with the driver of the reader model that read it, and compares them with the stored
// RawODs, value for value.
class RawReadCheck {
public:
    struct Result {
        QString problem; // why nothing could be compared; empty otherwise
        qint64 runID = 0;
        QString readAt;
        QStringList differingWells; // "A1: stored 0.1, read 0.12", in well order
    };

    // The plate plateID of the run runID, or, without a run, of the one run that has
    // such a plate.
    static Result check(const DbConnection &db, std::optional<qint64> runID, qint64 plateID,
                        const ReaderEnvironment &environment);
};
