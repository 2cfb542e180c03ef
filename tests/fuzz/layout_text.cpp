// Layouts from CSV files and 8 x 12 grids: any bytes give a layout or a refusal with a
// message; a layout never holds a text the plate can't store, and its controls are twinned.
#include "FuzzInput.h"

#include "core/WellList.h"
#include "worksheet/LayoutReader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const LayoutReading r =
        LayoutReader::readText(QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size)));
    if (!r.layout) {
        fuzz::check(!r.error.isEmpty(), "a refusal says why");
        return 0;
    }
    const PlateLayout &l = *r.layout;
    fuzz::check(l.groups.size() == 96 && l.samples.size() == 96, "96 wells");
    fuzz::check(l.count() > 0, "a layout gives a well");
    for (int k = 0; k < 96; ++k) {
        for (const QString &text : {l.groups[k], l.samples[k]}) {
            fuzz::check(!text.contains(kWellDelimiter), "no delimiter");
            fuzz::check(text.size() <= 100, "at most 100 characters");
        }
        if (isControlName(l.samples[k].toUpper()))
            fuzz::check(l.groups[k] == l.samples[k] && isControlName(l.samples[k]), "controls twinned, upper case");
        fuzz::check(!isControlName(l.groups[k].toUpper()) || l.groups[k] == l.samples[k], "no control as a group");
    }
    return 0;
}
