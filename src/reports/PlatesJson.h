#pragma once

#include "core/RecordSet.h"

#include <QByteArray>
#include <QString>

#include <optional>

// Plates given as JSON, for the command line: {"plates": [record, ...]}, each record an
// object of plate-record fields in their stored forms (names as in the plate record, in
// any case): texts or null; PlateID and RunID whole numbers; ExpDate and DateRead
// "YYYY-MM-DD" or null; TimeRead "HH:MM:SS" or null; well lists as stored, each item ended
// by "¬". A field left out is Null.
class PlatesJson {
public:
    // The plates as a plate record set, the cursor on the first; nullopt with a message
    // naming the place of the fault when the input is not of that form.
    static std::optional<RecordSet> parse(const QByteArray &json, QString *error);
    static std::optional<RecordSet> readFile(const QString &path, QString *error);
};
