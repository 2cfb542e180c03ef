#include "reports/ExportBuffer.h"

#include <charconv>

void ExportBuffer::text(QStringView text)
{
    const qsizetype start = mBytes.size();
    mBytes.resize(start + text.size());
    char *out = mBytes.data() + start;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= 0x80) {
            // Cut after a plain character, so no surrogate pair is split.
            mBytes.truncate(start + i);
            mBytes.append(text.sliced(i).toUtf8());
            return;
        }
        out[i] = char(c);
    }
}

void ExportBuffer::number(int value)
{
    char buffer[16];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value);
    mBytes.append(buffer, written.ptr - buffer);
}
