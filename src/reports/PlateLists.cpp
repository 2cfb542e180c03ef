#include "reports/PlateLists.h"

#include "core/WellList.h"
#include "core/Wells.h"

#include <array>

PlateLists::Items PlateLists::split(const QString &text, bool shareRepeats)
{
    Items items; // missing items stay null
    std::array<QString, 4> recent;
    int replaced = 0;
    forEachWellItem(text, [&](int k, QStringView item) {
        if (shareRepeats && !item.isEmpty()) {
            for (const QString &r : recent) {
                if (r.size() == item.size() && r == item) {
                    items[k] = r;
                    return;
                }
            }
            items[k] = recent[replaced++ % recent.size()] = item.toString();
        } else {
            items[k] = item.toString(); // no allocation for an empty item
        }
    });
    return items;
}

PlateLists PlateLists::of(const RecordSet &plates, int plate)
{
    const auto list = [&](QStringView field) { return split(plates.valueAt(plate, field).toString()); };
    // Samples and ODs seldom repeat: comparing each with the last few would cost more than it saves.
    const auto once = [&](QStringView field) { return split(plates.valueAt(plate, field).toString(), false); };
    return {list(u"Groups"), once(u"Samples"), list(u"Results"), once(u"ODs"), list(u"IncludeExcludeFlags")};
}
