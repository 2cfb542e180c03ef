#include "platform/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

namespace {

constexpr int kNameTries = 20;
constexpr qint64 kCopyChunk = 1 << 20;

} // namespace

SafeFile::SafeFile(const QString &target, FileLayer &layer) : mTarget(target), mLayer(layer)
{
    // A link is followed: the file it names is the one replaced, and the link stays.
    const QFileInfo info(target);
    if (info.isSymLink() && info.exists())
        mTarget = info.canonicalFilePath();
}

SafeFile::~SafeFile()
{
    cancel();
}

QString SafeFile::refusalFor(const QString &path)
{
    const QFileInfo info(path);
    if (path.isEmpty())
        return QStringLiteral("No file name was given.");
    if (info.exists() && !info.isFile())
        return QStringLiteral("%1 is not a regular file; it is left as it is.").arg(QDir::toNativeSeparators(path));
    return QString();
}

bool SafeFile::fail(const QString &reason)
{
    if (!mFailed)
        mError = QStringLiteral("The file %1 could not be written: %2").arg(QDir::toNativeSeparators(mTarget), reason);
    mFailed = true;
    return false;
}

bool SafeFile::open()
{
    cancel();
    mFailed = false;
    mError.clear();
    const QString refusal = refusalFor(mTarget);
    if (!refusal.isEmpty()) {
        mFailed = true;
        mError = refusal;
        return false;
    }
    const QFileInfo info(mTarget);
    for (int attempt = 0; attempt < kNameTries && mHandle < 0; ++attempt) {
        mTemporary =
            info.absoluteDir().filePath(QStringLiteral(".%1.%2.tmp")
                                            .arg(info.fileName())
                                            .arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0')));
        mHandle = mLayer.create(mTemporary);
    }
    if (mHandle < 0) {
        mTemporary.clear();
        return fail(mLayer.errorString());
    }
    if (info.exists())
        QFile::setPermissions(mTemporary, QFile::permissions(mTarget));
    return true;
}

bool SafeFile::write(const char *data, qint64 size)
{
    if (mHandle < 0 || mFailed)
        return fail(QStringLiteral("the file is not open"));
    if (size > 0 && mLayer.write(mHandle, data, size) != size)
        return fail(mLayer.errorString());
    return true;
}

bool SafeFile::commit()
{
    if (mHandle < 0 || mFailed) {
        fail(QStringLiteral("the file is not open"));
        cancel();
        return false;
    }
    const bool synced = mLayer.sync(mHandle) || fail(mLayer.errorString());
    const int handle = std::exchange(mHandle, -1);
    const bool closed = mLayer.close(handle) || fail(mLayer.errorString());
    if (!synced || !closed || !(mLayer.rename(mTemporary, mTarget) || fail(mLayer.errorString()))) {
        cancel();
        return false;
    }
    mTemporary.clear();
    // The new file is in place; a folder that can't be synced leaves it there but is told.
    return mLayer.syncFolder(QFileInfo(mTarget).absolutePath()) || fail(mLayer.errorString());
}

void SafeFile::cancel()
{
    if (mHandle >= 0)
        mLayer.close(std::exchange(mHandle, -1));
    if (!mTemporary.isEmpty())
        mLayer.remove(std::exchange(mTemporary, QString()));
}

bool SafeFile::writeWhole(const QString &target, const QByteArray &contents, QString *error, FileLayer &layer)
{
    SafeFile file(target, layer);
    const bool ok = file.open() && file.write(contents) && file.commit();
    if (!ok && error)
        *error = file.errorString();
    return ok;
}

bool SafeFile::copy(const QString &source, const QString &target, QString *error, FileLayer &layer)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("The file %1 could not be read: %2")
                         .arg(QDir::toNativeSeparators(source), in.errorString());
        return false;
    }
    SafeFile out(target, layer);
    bool ok = out.open();
    while (ok && !in.atEnd()) {
        const QByteArray chunk = in.read(kCopyChunk);
        if (chunk.isEmpty() && in.error() != QFileDevice::NoError) {
            out.fail(
                QStringLiteral("%1 could not be read (%2)").arg(QDir::toNativeSeparators(source), in.errorString()));
            ok = false;
        } else {
            ok = out.write(chunk);
        }
    }
    // A copy that came out shorter than its source is no copy.
    if (ok && in.pos() != QFileInfo(source).size())
        ok = out.fail(QStringLiteral("%1 changed while it was copied").arg(QDir::toNativeSeparators(source)));
    ok = ok && out.commit();
    if (!ok && error)
        *error = out.errorString();
    return ok;
}
