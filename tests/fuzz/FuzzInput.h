#pragma once

// Shared by the fuzz targets: the input as the program would receive it, and a check that
// stops the run with a report when a parser breaks one of its promises.

#include "readers/ReadError.h"
#include "readers/WellValues.h"

#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

// Bytes as a serial line or a capture file gives them: one character per byte.
inline QString latin1(const uint8_t *data, size_t size)
{
    return QString::fromLatin1(reinterpret_cast<const char *>(data), qsizetype(size));
}

// Bytes as a text file or the clipboard gives them.
inline QString utf8(const uint8_t *data, size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
}

// A broken promise is a crash for libFuzzer, with the input saved beside it.
inline void check(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "fuzz check failed: %s\n", what);
        std::abort();
    }
}

// A plate parser of a reader: any text gives 96 wells or a ReadError.
template <typename Parse> inline void checkPlate(Parse parse, const QString &text)
{
    RecordSet values = WellValues::create();
    try {
        parse(values, text);
    } catch (const ReadError &) {
        return;
    }
    check(values.recordCount() == 96, "96 wells");
}

} // namespace fuzz
