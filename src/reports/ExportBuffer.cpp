#include "reports/ExportBuffer.h"

#include <algorithm>
#include <charconv>

void ExportBuffer::grow(qsizetype n)
{
    if (mSink && mAt) {
        flush();
        if (mEnd - mAt >= n)
            return;
    }
    const qsizetype used = mAt ? size() : 0;
    mBytes.resize(std::max({qsizetype(64), used + n, 2 * mBytes.size()}));
    mAt = mBytes.data() + used;
    mEnd = mBytes.data() + mBytes.size();
}

void ExportBuffer::text(QStringView text)
{
    need(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= 0x80) {
            // Cut after a plain character, so no surrogate pair is split.
            bytes(text.sliced(i).toUtf8());
            return;
        }
        *mAt++ = char(c);
    }
}

void ExportBuffer::number(int value)
{
    need(16);
    mAt = std::to_chars(mAt, mEnd, value).ptr;
}

QByteArray ExportBuffer::take()
{
    mBytes.truncate(size());
    mAt = mEnd = nullptr;
    QByteArray bytes = std::move(mBytes);
    mBytes = QByteArray();
    grow(64);
    return bytes;
}

void ExportBuffer::flush()
{
    if (mSink && size() > 0) {
        mSink(mBytes.constData(), size());
        mAt = mBytes.data();
    }
}
