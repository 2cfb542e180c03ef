// The Molecular Devices readers (EMAX, VMAX, ThermoMax): echoes and the plate.
#include "FuzzInput.h"

#include "readers/drivers/THERMOmaxReplies.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = fuzz::latin1(data, size);
    for (QChar sent : {u'B', u'E', u'P', u'\r'})
        THERMOmaxReplies::echoMatches(sent, input);
    fuzz::checkPlate(&THERMOmaxReplies::parse, input);
    return 0;
}
