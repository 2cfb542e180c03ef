#pragma once

#include "platform/FileLayer.h"

#include <QByteArray>
#include <QString>

// Replaces a file safely: the new contents go to a temporary file beside the target, every
// write is checked, the file is put on the disk (fsync) and closed with a check, and only
// then renamed over the target, after which the folder is put on the disk too. Whatever
// fails on the way (a full disk, a failing device), the target is left whole as it was and
// the temporary file is removed. A target that exists and is not a regular file (a folder,
// a FIFO, a device) is refused and left alone; a symbolic link is followed, so the file it
// names is replaced and the link stays.
//
// Every file the program replaces goes through here.
class SafeFile {
public:
    explicit SafeFile(const QString &target, FileLayer &layer = FileLayer::system());
    ~SafeFile(); // an unfinished file is dropped: the target stays as it was
    SafeFile(const SafeFile &) = delete;
    SafeFile &operator=(const SafeFile &) = delete;

    // Makes the temporary file. False (with errorString()) when the target can't be replaced.
    bool open();
    bool write(const char *data, qint64 size);
    bool write(const QByteArray &data) { return write(data.constData(), data.size()); }
    // Puts the written contents in place of the target. False when anything failed since
    // open(); the target is then as it was.
    bool commit();
    // Drops what was written; the target stays as it was.
    void cancel();

    // The temporary file, for a library that writes a file by its name: it writes there
    // after open(), and commit() then puts it in place.
    QString temporaryPath() const { return mTemporary; }
    QString target() const { return mTarget; }
    // What went wrong, naming the file: "The file X could not be written: reason."
    QString errorString() const { return mError; }

    // The whole contents in one go. False with *error set when the target stays as it was.
    static bool writeWhole(const QString &target, const QByteArray &contents, QString *error = nullptr,
                           FileLayer &layer = FileLayer::system());
    // Copies source over target. False with *error set when the target stays as it was.
    static bool copy(const QString &source, const QString &target, QString *error = nullptr,
                     FileLayer &layer = FileLayer::system());

    // The check of open() alone: empty when path is a regular file or nothing, otherwise
    // why it can't be replaced.
    static QString refusalFor(const QString &path);

private:
    bool fail(const QString &reason);

    QString mTarget;
    QString mTemporary;
    FileLayer &mLayer;
    int mHandle = -1;
    bool mFailed = false;
    QString mError;
};
