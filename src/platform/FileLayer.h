#pragma once

#include <QString>

// The few calls of the operating system through which files are written and replaced
// (SafeFile). Tests put a layer of their own in its place to fail a write after so many
// bytes, the sync, the close or the rename, as a full or failing disk would.
//
// Handles are the layer's own small numbers; -1 is no handle. Every call that fails leaves
// a text for errorString().
class FileLayer {
public:
    virtual ~FileLayer() = default;

    // Makes a new file (never opens one that exists) for writing.
    virtual int create(const QString &path) = 0;
    // Writes all of data or fails; the number of bytes that reached the file, -1 on failure.
    virtual qint64 write(int handle, const char *data, qint64 size) = 0;
    // Puts the file's contents on the disk.
    virtual bool sync(int handle) = 0;
    virtual bool close(int handle) = 0;
    // Replaces to by from in one step (both in one folder).
    virtual bool rename(const QString &from, const QString &to) = 0;
    // Puts the folder's entries (a rename) on the disk.
    virtual bool syncFolder(const QString &folder) = 0;
    virtual bool remove(const QString &path) = 0;

    virtual QString errorString() const = 0;

    // The layer of the operating system.
    static FileLayer &system();
};
