#pragma once

#include "core/RecordSet.h"

#include <QJsonObject>

// Plates as the JSON that PlatesJson reads: {"plates": [record, ...]}, every field of the
// plate record in its stored form (dates "YYYY-MM-DD", times "HH:MM:SS", ids as numbers,
// null for Null).
class PlatesJsonWriter {
public:
    static QJsonObject toJson(const RecordSet &plates);
};
