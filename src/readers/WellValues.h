#pragma once

#include "core/RecordSet.h"

#include <QString>

// The well value record set of a read: one row per well in well order, with the text
// fields Pos (at most 4 characters; only some drivers fill it) and Val (at most 7
// characters, the reader's text of the OD). Made anew for every read.
namespace WellValues {

constexpr int kPosSize = 4;
constexpr int kValSize = 7;

// An empty set with the fields Pos and Val.
RecordSet create();

// Appends a row. A text longer than its field throws ReadError, as the field can't hold it.
void append(RecordSet &values, const QString &pos, const QString &val);

// A whole plate: 96 rows, and no value empty or only blanks (a well past the end of
// what the reader sent). A value that is no number (a reader's "OVER") still counts.
bool isWholePlate(const RecordSet &values);

// The position of every row names its well, as the MS2 reader writes them ("1A" for A1,
// "12H" for H12): the sign that the values stand where the reader put them.
bool positionsNameTheirWells(const RecordSet &values);

} // namespace WellValues
