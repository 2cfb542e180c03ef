// PLATES.json, the plates of the command-line reports: any bytes give plates or a message.
#include "FuzzInput.h"

#include "reports/PlatesJson.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QString error;
    const std::optional<RecordSet> plates =
        PlatesJson::parse(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)), &error);
    fuzz::check(plates.has_value() == error.isEmpty(), "plates or a message, never both");
    return 0;
}
