#pragma once

#include <QString>

// A plate has 8 rows (A to H) and 12 columns. Wells are numbered column by column:
// A1, B1, ... H1, A2, ... H12, so the index is (col - 1) * 8 + (row - 1).
namespace wells {

constexpr int kRows = 8;
constexpr int kCols = 12;
constexpr int kCount = 96;

constexpr int index(int row, int col)
{
    return (col - 1) * kRows + (row - 1);
}
constexpr int row(int index)
{
    return index % kRows + 1;
}
constexpr int col(int index)
{
    return index / kRows + 1;
}
constexpr bool valid(int row, int col)
{
    return row >= 1 && row <= kRows && col >= 1 && col <= kCols;
}

inline QChar rowLetter(int row)
{
    return QChar(u'A' + (row - 1));
}
// "A1" ... "H12".
inline QString name(int index)
{
    return QString(rowLetter(row(index))) + QString::number(col(index));
}

} // namespace wells

// True when the text is one of the control names "PC", "NC", "AUX", "BLANK" (exact).
inline bool isControlName(const QString &text)
{
    return text == u"PC" || text == u"NC" || text == u"AUX" || text == u"BLANK";
}
