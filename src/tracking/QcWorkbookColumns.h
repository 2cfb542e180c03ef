#pragma once

#include <QString>

class Workbook;
struct QcHistory;

// The quality-control columns of the tracking workbook, written to the right of the
// tracking table when the user asks for the Westgard rules: for each tracked quantity its
// value on the plate and the guide-set lines in force when the plate was read (mean and
// +-1, 2, 3 SD; empty without a guide set), then a Violations column naming the rules the
// plate broke ("2-2s NC, R-4s; warning 1-2s PC"). The history's runs are the table's rows,
// in order.
namespace QcWorkbookColumns {

inline const QString kViolations = QStringLiteral("Violations");

// Writes the heads in headRow and one row per run from firstRow, from firstColumn on.
// Returns the number of columns written.
int write(Workbook &book, const QcHistory &history, int headRow, int firstRow, int firstColumn);

// "2-2s NC, R-4s; warning 1-2s PC" for the run (counted from 0); empty when in control.
QString violations(const QcHistory &history, int run);

} // namespace QcWorkbookColumns
