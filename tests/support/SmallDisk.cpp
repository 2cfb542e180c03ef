#include "SmallDisk.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

SmallDisk::SmallDisk(qint64 bytes)
{
    if (::geteuid() != 0) {
        mWhyNot = QStringLiteral("a small disk needs root to mount");
        return;
    }
    const QByteArray options = "size=" + QByteArray::number(bytes);
    mMounted = ::mount("tmpfs", QFile::encodeName(mDir.path()).constData(), "tmpfs", 0, options.constData()) == 0;
    if (!mMounted)
        mWhyNot = QStringLiteral("tmpfs could not be mounted: ") + QString::fromLocal8Bit(std::strerror(errno));
}

SmallDisk::~SmallDisk()
{
    if (mMounted)
        ::umount2(QFile::encodeName(mDir.path()).constData(), MNT_DETACH);
}

qint64 SmallDisk::freeBytes() const
{
    struct statvfs stats {};
    if (::statvfs(QFile::encodeName(mDir.path()).constData(), &stats) != 0)
        return -1;
    return qint64(stats.f_bavail) * qint64(stats.f_frsize);
}

void SmallDisk::fillLeaving(qint64 bytesLeft) const
{
    QFile filler(QDir(mDir.path()).filePath(QStringLiteral("filler")));
    if (!filler.open(QIODevice::Append))
        return;
    const qint64 toFill = freeBytes() - bytesLeft;
    if (toFill > 0) {
        filler.write(QByteArray(toFill, 'f'));
        filler.flush();
    }
}
