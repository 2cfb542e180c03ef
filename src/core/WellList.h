#pragma once

#include "core/Wells.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
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

// Calls item(k, text) for the items of a well list in order, cut as splitWellList cuts
// them (WellListOverflow included), as views into the text: reports, exports and tracking
// read thousands of plates, and a text made per well is an allocation.
template <typename Item> void forEachWellItem(QStringView text, Item &&item)
{
    int next = 0;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != kWellDelimiter)
            continue;
        if (next >= wells::kCount)
            throw WellListOverflow();
        item(next++, text.sliced(start, i - start));
        start = i + 1;
    }
}

// The 96 items of a well list as views into its text (which must outlive them); missing
// items are empty views.
using WellTexts = std::array<QStringView, wells::kCount>;
inline WellTexts splitWellListViews(QStringView text)
{
    WellTexts items{};
    forEachWellItem(text, [&items](int k, QStringView item) { items[k] = item; });
    return items;
}

// Joins 96 items, each followed by the delimiter. Missing items are written empty; a
// delimiter inside an item is left out (wellListItem), so the list always reads back as
// the same 96 items.
QString joinWellList(const QStringList &items);

// The text as an item of a well list can hold it: without the delimiter. Names from
// databases made before the delimiter was refused in names may still hold one.
QString wellListItem(const QString &text);

// A well list of 96 empty items.
QString emptyWellList();
