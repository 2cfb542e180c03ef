#pragma once

#include <QByteArray>
#include <QString>

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
    // Writes what is left and replaces the file; throws ReportFileError on failure.
    void close();
    bool isClosed() const { return mClosed; }
    QString path() const { return mPath; }

private:
    void flush();

    QString mPath;
    std::unique_ptr<SafeFile> mFile;
    QByteArray mBuffer;
    bool mClosed = false;
};
