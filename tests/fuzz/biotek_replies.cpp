// The Bio-Tek readers: the line settings text and the plate text of the control.
#include "FuzzInput.h"

#include "readers/drivers/BioTekReplies.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = fuzz::latin1(data, size);
    try {
        BioTekReplies::settingsAreValid(BioTekReplies::parseSettings(input));
    } catch (const ReadError &) {
    }
    fuzz::checkPlate(&BioTekReplies::parse, input);
    return 0;
}
