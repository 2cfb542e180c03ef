// The LabSystems readers (Multiscan RC, MC 340): replies to commands and the plate data.
#include "FuzzInput.h"

#include "readers/drivers/LabSystemsReplies.h"
#include "readers/drivers/clsLabSystemsMC340.h"
#include "readers/drivers/clsLabSystemsReader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace LabSystemsReplies;
    const QString input = fuzz::latin1(data, size);
    // Two polls' worth of input, split where the first byte says.
    const qsizetype cut = size ? qsizetype(data[0]) % (input.size() + 1) : 0;
    const QString reply = addCommandInput(addCommandInput(QString(), input.left(cut)), input.mid(cut));
    commandReplyComplete(reply);
    setFilterFailure(reply);
    blankOnAirFailure(reply);
    const QString read = addReadInput(addReadInput(QString(), input.left(cut)), input.mid(cut));
    readReplyComplete(read, 576);
    readPlateFailure(read);
    fuzz::checkPlate(&clsLabSystemsReader::parse, read);
    fuzz::checkPlate(&clsLabSystemsMC340::parse, read);
    return 0;
}
