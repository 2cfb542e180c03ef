#pragma once

#include "platform/FileLayer.h"

// The operating system's file layer with faults put in, as a full or failing disk gives
// them: the writes stop after a number of bytes, or the sync, the close or the rename
// fails. Everything else goes to the real files.
//
//     FailingFileLayer disk;
//     disk.failAfterBytes = 1000;
//     EXPECT_FALSE(SafeFile::writeWhole(path, contents, &error, disk));
class FailingFileLayer : public FileLayer {
public:
    qint64 failAfterBytes = -1; // -1: writes never fail
    bool failSync = false;
    bool failClose = false;
    bool failRename = false;

    qint64 bytesWritten = 0;
    int renames = 0;

    int create(const QString &path) override;
    qint64 write(int handle, const char *data, qint64 size) override;
    bool sync(int handle) override;
    bool close(int handle) override;
    bool rename(const QString &from, const QString &to) override;
    bool syncFolder(const QString &folder) override;
    bool remove(const QString &path) override;
    QString errorString() const override;

private:
    FileLayer &mReal = FileLayer::system();
    QString mError;
};
