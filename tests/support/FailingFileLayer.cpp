#include "FailingFileLayer.h"

#include <algorithm>

namespace {

const QString kNoSpace = QStringLiteral("No space left on device");
const QString kIoError = QStringLiteral("Input/output error");

} // namespace

int FailingFileLayer::create(const QString &path)
{
    mError.clear();
    return mReal.create(path);
}

qint64 FailingFileLayer::write(int handle, const char *data, qint64 size)
{
    qint64 allowed = size;
    if (failAfterBytes >= 0)
        allowed = std::clamp<qint64>(failAfterBytes - bytesWritten, 0, size);
    // What fits goes to the file, as on a disk that fills up during the write.
    const qint64 written = allowed > 0 ? mReal.write(handle, data, allowed) : 0;
    if (written > 0)
        bytesWritten += written;
    if (written < size) {
        mError = kNoSpace;
        return -1;
    }
    return written;
}

bool FailingFileLayer::sync(int handle)
{
    if (failSync) {
        mError = kIoError;
        return false;
    }
    return mReal.sync(handle);
}

bool FailingFileLayer::close(int handle)
{
    const bool closed = mReal.close(handle);
    if (failClose) {
        mError = kNoSpace; // a network or quota file system tells a late write failure here
        return false;
    }
    return closed;
}

bool FailingFileLayer::rename(const QString &from, const QString &to)
{
    ++renames;
    if (failRename) {
        mError = kIoError;
        return false;
    }
    return mReal.rename(from, to);
}

bool FailingFileLayer::syncFolder(const QString &folder)
{
    return mReal.syncFolder(folder);
}

bool FailingFileLayer::remove(const QString &path)
{
    return mReal.remove(path);
}

QString FailingFileLayer::errorString() const
{
    return mError.isEmpty() ? mReal.errorString() : mError;
}
