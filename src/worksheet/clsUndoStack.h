#pragma once

#include "core/Wells.h"

#include <QString>
#include <QStringList>

#include <array>
#include <stdexcept>

// The last ten states of a plate's layout, whole: the groups, the samples and the
// inclusion flags of all 96 wells. Records fill from index 9 towards 0; the newest is at
// the front. The eleventh snapshot drops the oldest.
class clsUndoStack {
public:
    static constexpr int kDepth = 10;
    using Flags = std::array<qint16, wells::kCount>;

    // Erases records until the stack is empty.
    void clear();
    // Drops the newest record. On an empty stack this is a program error: the scan runs
    // past the last record (an index error, thrown as std::out_of_range).
    void eraseFrontRecord();
    void addRecord(const QStringList &groups, const QStringList &samples, const Flags &flags);
    bool isEmpty() const;
    QStringList getSamples() const { return mRecords[mFront].samples; }
    QStringList getGroups() const { return mRecords[mFront].groups; }
    Flags getIncludeExcludeFlags() const { return mRecords[mFront].flags; }
    int size() const;

private:
    struct Record {
        bool used = false;
        QStringList groups;
        QStringList samples;
        Flags flags{};
    };
    std::array<Record, kDepth> mRecords;
    int mFront = kDepth - 1;
};
