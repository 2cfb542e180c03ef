#pragma once

#include <QByteArray>
#include <QStringView>

// The bytes of an export made in one growing buffer, texts encoded to UTF-8 as they go in:
// no UTF-16 copy of the whole file is made and converted at the end, and nothing is built
// to be dropped. Plain ASCII (nearly every character of an export) is copied byte by byte;
// any other run of characters is encoded by Qt, so the bytes are Qt's UTF-8.
class ExportBuffer {
public:
    explicit ExportBuffer(qsizetype reserve = 0) { mBytes.reserve(reserve); }

    // ASCII only.
    void ascii(char c) { mBytes.append(c); }
    void ascii(const char *text) { mBytes.append(text); }
    void bytes(const QByteArray &bytes) { mBytes.append(bytes); }
    void text(QStringView text);
    // The text with each character for which escape(c) gives a replacement (a const char *,
    // ASCII) written as that replacement; escape gives nullptr for the others.
    template <typename Escape> void text(QStringView text, Escape escape)
    {
        qsizetype start = 0;
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (const char *replacement = escape(text[i].unicode())) {
                this->text(text.sliced(start, i - start));
                mBytes.append(replacement);
                start = i + 1;
            }
        }
        this->text(text.sliced(start));
    }
    void number(int value);

    void clear() { mBytes.resize(0); } // keeps the room
    bool isEmpty() const { return mBytes.isEmpty(); }
    const QByteArray &bytes() const { return mBytes; }
    QByteArray take() { return std::move(mBytes); }

private:
    QByteArray mBytes;
};
