#include "platform/FileLayer.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>

#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

class SystemFileLayer final : public FileLayer {
public:
    int create(const QString &path) override
    {
#ifdef Q_OS_WIN
        const int handle = ::_wopen(reinterpret_cast<const wchar_t *>(path.utf16()),
                                    _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
#else
        const int handle = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
#endif
        return handle >= 0 ? handle : fail(-1);
    }

    qint64 write(int handle, const char *data, qint64 size) override
    {
        qint64 done = 0;
        while (done < size) {
#ifdef Q_OS_WIN
            const auto n = ::_write(handle, data + done, unsigned(std::min<qint64>(size - done, 1 << 30)));
#else
            const ssize_t n = ::write(handle, data + done, size_t(size - done));
#endif
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0) {
                if (n == 0)
                    errno = ENOSPC;
                return fail(-1);
            }
            done += n;
        }
        return done;
    }

    bool sync(int handle) override
    {
#ifdef Q_OS_WIN
        return ::_commit(handle) == 0 || fail(false);
#else
        return ::fsync(handle) == 0 || fail(false);
#endif
    }

    bool close(int handle) override
    {
#ifdef Q_OS_WIN
        return ::_close(handle) == 0 || fail(false);
#else
        return ::close(handle) == 0 || fail(false);
#endif
    }

    bool rename(const QString &from, const QString &to) override
    {
#ifdef Q_OS_WIN
        if (::MoveFileExW(reinterpret_cast<const wchar_t *>(from.utf16()),
                          reinterpret_cast<const wchar_t *>(to.utf16()),
                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return true;
        mError = QStringLiteral("could not be renamed");
        return false;
#else
        return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0 || fail(false);
#endif
    }

    bool syncFolder(const QString &folder) override
    {
#ifdef Q_OS_WIN
        Q_UNUSED(folder);
        return true; // MOVEFILE_WRITE_THROUGH has done it
#else
        const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (handle < 0)
            return fail(false);
        const bool synced = ::fsync(handle) == 0 || errno == EINVAL; // some file systems can't sync folders
        const int syncError = errno;
        ::close(handle);
        errno = syncError;
        return synced || fail(false);
#endif
    }

    bool remove(const QString &path) override
    {
        return QFile::remove(path);
    }

    QString errorString() const override
    {
        return mError;
    }

private:
    template <typename T> T fail(T result)
    {
        mError = QString::fromLocal8Bit(std::strerror(errno));
        return result;
    }

    QString mError;
};

} // namespace

FileLayer &FileLayer::system()
{
    static thread_local SystemFileLayer layer;
    return layer;
}
