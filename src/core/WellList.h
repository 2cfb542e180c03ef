#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>

// The text form of per-well data in a plate record: 96 items, each followed by the
// delimiter "¬". The delimiter terminates rather than separates, so a list of empty items
// is 96 delimiters.
inline constexpr QChar kWellDelimiter = QChar(0x00AC);

// A list that has more than 96 items cannot be read into a plate.
class WellListOverflow : public std::runtime_error {
public:
    WellListOverflow() : std::runtime_error("Subscript out of range: a well list has more than 96 items") {}
};

// Splits a well list into exactly 96 items. Characters behind the last delimiter are
// dropped; missing items stay empty; a 97th delimiter throws WellListOverflow.
QStringList splitWellList(const QString &text);

// Joins 96 items, each followed by the delimiter. Missing items are written empty; a
// delimiter inside an item is left out (wellListItem), so the list always reads back as
// the same 96 items.
QString joinWellList(const QStringList &items);

// The text as an item of a well list can hold it: without the delimiter. Names from
// databases made before the delimiter was refused in names may still hold one.
QString wellListItem(const QString &text);

// A well list of 96 empty items.
QString emptyWellList();
