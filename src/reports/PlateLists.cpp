#include "reports/PlateLists.h"

#include "core/WellList.h"
#include "core/Wells.h"

#include <array>
#include <span>

QStringList PlateLists::split(const QString &text, bool shareRepeats)
{
    // Items appended (not assigned over 96 made empty), and a recent text compared by size
    // first: most items of a sample or OD list are new.
    QStringList items;
    items.reserve(wells::kCount);
    std::array<QString, 4> recent;
    int replaced = 0;
    int next = 0;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != kWellDelimiter)
            continue;
        if (next >= wells::kCount)
            throw WellListOverflow();
        const QStringView item = QStringView(text).sliced(start, i - start);
        const QString *same = nullptr;
        for (const QString &r : shareRepeats ? recent : std::span<const QString>()) {
            if (r.size() == item.size() && !item.isEmpty() && r == item) {
                same = &r;
                break;
            }
        }
        if (same)
            items.append(*same);
        else if (item.isEmpty())
            items.append(text.mid(start, 0));
        else
            items.append(recent[replaced++ % recent.size()] = item.toString());
        ++next;
        start = i + 1;
    }
    items.resize(wells::kCount);
    return items;
}

PlateLists PlateLists::of(const RecordSet &plates, int plate)
{
    const auto list = [&](QStringView field) { return split(plates.valueAt(plate, field).toString()); };
    // Samples and ODs seldom repeat: comparing each with the last few would cost more than it saves.
    const auto once = [&](QStringView field) { return split(plates.valueAt(plate, field).toString(), false); };
    return {list(u"Groups"), once(u"Samples"), list(u"Results"), once(u"ODs"), list(u"IncludeExcludeFlags")};
}
