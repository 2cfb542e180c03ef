// The BioWhittaker Kinetic-QCL: reply status and the plate block.
#include "FuzzInput.h"

#include "readers/drivers/BioWhittakerReplies.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = fuzz::latin1(data, size);
    BioWhittakerReplies::status(input);
    BioWhittakerReplies::firstCode(input);
    fuzz::checkPlate(&BioWhittakerReplies::parse, input);
    return 0;
}
