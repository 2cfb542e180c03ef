// The MS2 reader: reply codes and the plate in what the read collected.
#include "FuzzInput.h"

#include "readers/drivers/MS2Replies.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = fuzz::latin1(data, size);
    MS2Replies::firstCode(input);
    MS2Replies::secondCode(input);
    MS2Replies::lastCode(input);
    fuzz::checkPlate(&MS2Replies::parse, input);
    return 0;
}
