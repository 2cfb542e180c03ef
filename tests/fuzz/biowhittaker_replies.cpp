// The BioWhittaker Kinetic-QCL: reply status and the plate block.
#include "FuzzInput.h"

#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/drivers/BioWhittakerReplies.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = fuzz::latin1(data, size);
    BioWhittakerReplies::status(input);
    BioWhittakerReplies::firstCode(input);
    RecordSet values = WellValues::create();
    try {
        BioWhittakerReplies::parse(values, input);
    } catch (const ReadError &) {
        return 0;
    }
    fuzz::check(values.recordCount() == 96, "96 wells");
    return 0;
}
