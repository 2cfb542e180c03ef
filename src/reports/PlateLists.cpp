#include "reports/PlateLists.h"

#include "core/WellList.h"

PlateLists PlateLists::of(const RecordSet &plates, int plate)
{
    const auto list = [&](QStringView field) { return splitWellList(plates.valueAt(plate, field).toString()); };
    return {list(u"Groups"), list(u"Samples"), list(u"Results"), list(u"ODs"), list(u"IncludeExcludeFlags")};
}
