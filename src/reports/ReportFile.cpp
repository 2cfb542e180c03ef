#include "reports/ReportFile.h"

#include "reports/ReportText.h"

#include "platform/SafeFile.h"

ReportFile::ReportFile(const QString &path) : mPath(path), mFile(std::make_unique<SafeFile>(path))
{
    if (!mFile->open())
        throw ReportFileError(mFile->errorString());
    mBuffer = std::make_unique<char[]>(size_t(kBufferSize));
}

ReportFile::~ReportFile()
{
    if (!mClosed)
        mFile->cancel();
}

void ReportFile::writeLine(QStringView text)
{
    appendText(text);
    endLine();
}

void ReportFile::writeLine(std::initializer_list<QStringView> pieces)
{
    for (QStringView piece : pieces)
        appendText(piece);
    endLine();
}

void ReportFile::appendText(QStringView text)
{
    if (text.size() > kBufferSize - mUsed) // one byte a character at most
        return appendPastBuffer(ReportText::toWindows1252(text));
    mUsed += ReportText::encodeWindows1252(text, mBuffer.get() + mUsed);
}

void ReportFile::appendPastBuffer(QByteArrayView bytes)
{
    flush();
    if (bytes.size() <= kBufferSize) {
        std::memcpy(mBuffer.get(), bytes.data(), size_t(bytes.size()));
        mUsed = bytes.size();
    } else if (!mFile->write(bytes.data(), bytes.size())) {
        throw ReportFileError(mFile->errorString());
    }
}

void ReportFile::flush()
{
    if (mUsed == 0)
        return;
    if (!mFile->write(mBuffer.get(), mUsed))
        throw ReportFileError(mFile->errorString());
    mUsed = 0;
}

void ReportFile::close()
{
    if (mClosed)
        return;
    flush();
    if (!mFile->commit())
        throw ReportFileError(mFile->errorString());
    mClosed = true;
}
