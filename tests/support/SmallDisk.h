#pragma once

#include <QString>
#include <QTemporaryDir>

// A real file system of a few bytes' room: a tmpfs mounted on a temporary folder. Mounting
// needs root; where it can't be done, mounted() is false and the test skips:
//
//     SmallDisk disk(2 << 20);
//     if (!disk.mounted())
//         GTEST_SKIP() << disk.whyNot();
class SmallDisk {
public:
    explicit SmallDisk(qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    bool mounted() const { return mMounted; }
    QString whyNot() const { return mWhyNot; }
    QString path() const { return mDir.path(); }
    qint64 freeBytes() const;
    // Fills the disk with a file "filler" until about bytesLeft are free.
    void fillLeaving(qint64 bytesLeft) const;

private:
    QTemporaryDir mDir;
    bool mMounted = false;
    QString mWhyNot;
};
