// Numeric text: sheet cells, reader values, well lists of raw ODs, command-line numbers.
// A text is a number or it is not; a number is finite and reads back from its shortest
// text; nothing beyond the range of a double passes as 0.
#include "FuzzInput.h"

#include "core/LegacyFormat.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = fuzz::latin1(data, size);
    const bool numeric = legacy::isNumeric(text);
    if (!numeric) {
        bool thrown = false;
        try {
            legacy::toDouble(text);
        } catch (const ConversionError &) {
            thrown = true;
        }
        fuzz::check(thrown, "a text that is not numeric does not convert");
        return 0;
    }
    fuzz::check(!legacy::isBeyondRange(text), "a numeric text is within range");
    const double value = legacy::toDouble(text);
    fuzz::check(std::isfinite(value), "a number is finite");
    fuzz::check(legacy::toDouble(legacy::doubleToText(value)) == value, "the shortest text reads back");
    for (const char16_t *pattern : {u"#0.000", u"0.000", u"00.00", u"##,##0.000", u"###.000"})
        legacy::format(value, QStringView(pattern));
    try {
        const float single = legacy::toSingle(text);
        fuzz::check(std::isfinite(single), "a single is finite");
    } catch (const ConversionError &) {
        fuzz::check(std::fabs(value) > 3.0e38 || std::fabs(value) < 1.0e-38, "only a value beyond a float fails");
    }
    try {
        legacy::toInt16(text);
    } catch (const ConversionError &) {
        fuzz::check(std::fabs(value) >= 32767.5, "only a value beyond 16 bits fails");
    }
    return 0;
}
