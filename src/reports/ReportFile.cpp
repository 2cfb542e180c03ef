#include "reports/ReportFile.h"

#include "reports/ReportText.h"

#include "platform/SafeFile.h"

namespace {

constexpr qsizetype kFlushAt = 1 << 20;

} // namespace

ReportFile::ReportFile(const QString &path) : mPath(path), mFile(std::make_unique<SafeFile>(path))
{
    if (!mFile->open())
        throw ReportFileError(mFile->errorString());
    mBuffer.reserve(kFlushAt + 4096);
}

ReportFile::~ReportFile()
{
    if (!mClosed)
        mFile->cancel();
}

void ReportFile::writeLine(QStringView text)
{
    ReportText::appendWindows1252(mBuffer, text);
    mBuffer.append("\r\n", 2);
    if (mBuffer.size() >= kFlushAt)
        flush();
}

void ReportFile::writeLine(std::initializer_list<QStringView> pieces)
{
    for (QStringView piece : pieces)
        ReportText::appendWindows1252(mBuffer, piece);
    mBuffer.append("\r\n", 2);
    if (mBuffer.size() >= kFlushAt)
        flush();
}

void ReportFile::flush()
{
    if (mBuffer.isEmpty())
        return;
    if (!mFile->write(mBuffer))
        throw ReportFileError(mFile->errorString());
    mBuffer.truncate(0);
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
