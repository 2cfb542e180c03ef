#pragma once

#include <QByteArray>
#include <QStringView>

#include <cstring>
#include <functional>

// The bytes of an export made in one growing buffer, texts encoded to UTF-8 as they go in:
// no UTF-16 copy of the whole file is made and converted at the end, and nothing is built
// to be dropped. Bytes are written through a pointer into room made ahead (QByteArray's
// own appends check and grow on every call). Plain ASCII, nearly every character of an
// export, is copied byte by byte; any other run of characters is encoded by Qt, so the
// bytes are Qt's UTF-8.
//
// With a sink the buffer is a window: when it is full, what is written goes to the sink and
// the room is used again, so a file is written in pieces as it is made (an export of a
// thousand plates is tens of megabytes, each fresh page of which costs).
class ExportBuffer {
public:
    using Sink = std::function<void(const char *data, qsizetype size)>;

    explicit ExportBuffer(qsizetype reserve = 64) { grow(reserve); }
    ExportBuffer(Sink sink, qsizetype room) : mSink(std::move(sink)) { grow(room); }

    // ASCII only.
    void ascii(char c)
    {
        need(1);
        *mAt++ = c;
    }
    void ascii(const char *text) { raw(text, qsizetype(std::strlen(text))); }
    void repeat(char c, qsizetype n)
    {
        need(n);
        std::memset(mAt, c, size_t(n));
        mAt += n;
    }
    void bytes(const QByteArray &bytes) { raw(bytes.constData(), bytes.size()); }
    void bytes(const ExportBuffer &other) { raw(other.mBytes.constData(), other.size()); }
    void text(QStringView text);
    // The text with each character for which escape(c) gives a replacement (a const char *,
    // ASCII) written as that replacement; escape gives nullptr for the others.
    // One pass: plain ASCII copied, a run of other characters up to the next escaped one
    // encoded by Qt as a whole.
    template <typename Escape> void text(QStringView text, Escape escape)
    {
        const qsizetype n = text.size();
        need(n);
        for (qsizetype i = 0; i < n; ++i) {
            const char16_t c = text[i].unicode();
            if (const char *replacement = escape(c)) {
                ascii(replacement);
                need(n - i);
            } else if (c >= 0x80) {
                qsizetype end = i + 1;
                while (end < n && !escape(text[end].unicode()))
                    ++end;
                bytes(text.sliced(i, end - i).toUtf8());
                need(n - end);
                i = end - 1;
            } else {
                *mAt++ = char(c);
            }
        }
    }
    void number(int value);

    qsizetype size() const { return mAt - mBytes.constData(); }
    void clear() { mAt = mBytes.data(); } // keeps the room
    // The bytes written; the buffer is empty after.
    QByteArray take();
    // Gives what is written to the sink.
    void flush();

private:
    void need(qsizetype n)
    {
        if (mEnd - mAt < n)
            grow(n);
    }
    void raw(const char *data, qsizetype n)
    {
        need(n);
        std::memcpy(mAt, data, size_t(n));
        mAt += n;
    }
    void grow(qsizetype n);

    Sink mSink;
    QByteArray mBytes; // its size is the room; size() is what is written
    char *mAt = nullptr;
    char *mEnd = nullptr;
};
