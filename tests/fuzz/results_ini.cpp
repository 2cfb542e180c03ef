// Results.INI, the demo readers' capture: the file's bytes, joined without line ends as
// the read does, give 96 values or a ReadError.
#include "FuzzInput.h"

#include "readers/drivers/DemoResultsReader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QString text = fuzz::latin1(data, size);
    text.remove(u'\r');
    text.remove(u'\n');
    fuzz::checkPlate(&DemoResultsReader::parse, text);
    return 0;
}
