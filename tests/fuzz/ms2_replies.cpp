// The MS2 reader: reply codes and the plate in what the read collected.
#include "FuzzInput.h"

#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/drivers/MS2Replies.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = fuzz::latin1(data, size);
    MS2Replies::firstCode(input);
    MS2Replies::secondCode(input);
    MS2Replies::lastCode(input);
    RecordSet values = WellValues::create();
    try {
        MS2Replies::parse(values, input);
    } catch (const ReadError &) {
        return 0;
    }
    fuzz::check(values.recordCount() == 96, "96 wells");
    return 0;
}
