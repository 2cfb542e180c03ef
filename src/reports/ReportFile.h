#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstring>
#include <initializer_list>
#include <memory>
#include <stdexcept>

class SafeFile;

// The report file can't be written.
class ReportFileError : public std::runtime_error {
public:
    explicit ReportFileError(const QString &what) : std::runtime_error(what.toStdString()) {}
};

// The text stream of a report: lines in code page windows-1252, each ended by CR LF. The
// file is replaced as a whole when the stream is closed, so a browser never sees half a
// report; close() is the one place where the file on disk changes. A stream that is
// dropped without close() (after a failure), or a close that fails (a full disk), leaves
// the file as it was. A path naming something else than a regular file is refused.
class ReportFile {
public:
    // Opens the stream; throws ReportFileError when the file can't be made.
    explicit ReportFile(const QString &path);
    ~ReportFile();

    ReportFile(const ReportFile &) = delete;
    ReportFile &operator=(const ReportFile &) = delete;

    void writeLine(QStringView text = {});
    // One line made of several pieces, written one after the other.
    void writeLine(std::initializer_list<QStringView> pieces);
    // A line can also be made piece by piece: bytes already in the code page (ASCII
    // literals, texts encoded once and written many times), texts, then endLine().
    void append(QByteArrayView bytes)
    {
        if (bytes.size() > kBufferSize - mUsed)
            return appendPastBuffer(bytes);
        std::memcpy(mBuffer.get() + mUsed, bytes.data(), size_t(bytes.size()));
        mUsed += bytes.size();
    }
    void appendText(QStringView text);
    void endLine() { append("\r\n"); }
    // Writes what is left and replaces the file; throws ReportFileError on failure.
    void close();
    bool isClosed() const { return mClosed; }
    QString path() const { return mPath; }

private:
    // The buffer goes to the file in pieces of about this size, so a report of any size
    // takes the same memory.
    static constexpr qsizetype kBufferSize = 1 << 20;

    void flush();
    // Flushes, then takes bytes into the buffer, or straight to the file when they are more.
    void appendPastBuffer(QByteArrayView bytes);

    QString mPath;
    std::unique_ptr<SafeFile> mFile;
    // Lines are gathered here and written out in large pieces (QByteArray's append is slow
    // for the many short pieces of a report).
    std::unique_ptr<char[]> mBuffer;
    qsizetype mUsed = 0;
    bool mClosed = false;
};
