#include "store/DatabaseUseLock.h"

#include "store/SqliteWal.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QSet>
#include <QThread>

#include <utility>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace {

constexpr int kPollMs = 20;

// The databases this process holds exclusively: its own connections to them, made by
// the work that holds them, go ahead.
QMutex gMutex;
QSet<QString> gHeldExclusively;

QString keyOf(const QString &databasePath)
{
    const QFileInfo info(databasePath);
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? info.absoluteFilePath() : canonical;
}

} // namespace

QString DatabaseUseLock::lockPath(const QString &databasePath)
{
    return keyOf(databasePath) + QStringLiteral("-users");
}

bool DatabaseUseLock::isHeldExclusivelyHere(const QString &databasePath)
{
    const QMutexLocker locker(&gMutex);
    return gHeldExclusively.contains(keyOf(databasePath));
}

DatabaseUseLock::DatabaseUseLock(const QString &databasePath, Kind kind, int waitMs)
    : mKey(keyOf(databasePath)), mKind(kind)
{
    // This program's own keeper of the log holds the file too: it lets go first.
    if (kind == Kind::Exclusive && !isHeldExclusivelyHere(databasePath))
        SqliteWal::settle(databasePath);
    {
        const QMutexLocker locker(&gMutex);
        if (gHeldExclusively.contains(mKey)) {
            // Our own work holds the file: its connections go ahead, a second such work
            // does not.
            mHeld = kind == Kind::Shared;
            mInherited = mHeld;
            return;
        }
    }
#ifdef Q_OS_UNIX
    mHandle = ::open(QFile::encodeName(lockPath(databasePath)).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (mHandle < 0) {
        // A folder where the lock file can't be made (read-only media): the database can
        // only be read there, and nothing replaces it.
        mHeld = kind == Kind::Shared;
        return;
    }
    const int operation = (kind == Kind::Shared ? LOCK_SH : LOCK_EX) | LOCK_NB;
    QElapsedTimer waited;
    waited.start();
    while (!(mHeld = ::flock(mHandle, operation) == 0) && waited.elapsed() < waitMs)
        QThread::msleep(kPollMs);
    if (!mHeld) {
        ::close(mHandle);
        mHandle = -1;
        return;
    }
#else
    Q_UNUSED(waitMs);
    mHeld = true;
#endif
    if (kind == Kind::Exclusive) {
        {
            const QMutexLocker locker(&gMutex);
            gHeldExclusively.insert(mKey);
        }
        // Nothing else has the file open now: a log that another program left is folded in.
        SqliteWal::settle(databasePath);
    }
}

DatabaseUseLock::~DatabaseUseLock()
{
    release();
}

DatabaseUseLock::DatabaseUseLock(DatabaseUseLock &&other) noexcept
    : mKey(std::move(other.mKey)), mHandle(std::exchange(other.mHandle, -1)), mKind(other.mKind),
      mHeld(std::exchange(other.mHeld, false)), mInherited(std::exchange(other.mInherited, false))
{
}

DatabaseUseLock &DatabaseUseLock::operator=(DatabaseUseLock &&other) noexcept
{
    if (this != &other) {
        release();
        mKey = std::move(other.mKey);
        mHandle = std::exchange(other.mHandle, -1);
        mKind = other.mKind;
        mHeld = std::exchange(other.mHeld, false);
        mInherited = std::exchange(other.mInherited, false);
    }
    return *this;
}

void DatabaseUseLock::release()
{
    if (mHeld && mKind == Kind::Exclusive && !mInherited) {
        const QMutexLocker locker(&gMutex);
        gHeldExclusively.remove(mKey);
    }
#ifdef Q_OS_UNIX
    if (mHandle >= 0)
        ::close(mHandle);
#endif
    mHandle = -1;
    mHeld = false;
    mInherited = false;
}
