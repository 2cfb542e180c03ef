// Well lists from saved plates and PLATES.json: any text splits into 96 items or is
// refused with WellListOverflow; what is joined reads back as the same items.
#include "FuzzInput.h"

#include "core/WellList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = fuzz::utf8(data, size);
    QStringList items;
    try {
        items = splitWellList(text);
    } catch (const WellListOverflow &) {
        fuzz::check(text.count(kWellDelimiter) > 96, "overflow only past 96 delimiters");
        return 0;
    }
    fuzz::check(items.size() == 96, "96 items");
    const QString joined = joinWellList(items);
    fuzz::check(joined.count(kWellDelimiter) == 96, "a joined list has 96 delimiters");
    fuzz::check(splitWellList(joined) == items, "a joined list reads back");
    // Items holding the delimiter (a name typed before it was refused) are joined without it.
    QStringList named = items;
    named[int(size % 96)] += kWellDelimiter + text.left(8);
    fuzz::check(splitWellList(joinWellList(named)).size() == 96, "a name with the delimiter moves no well");
    return 0;
}
