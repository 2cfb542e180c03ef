#include "worksheet/clsUndoStack.h"

void clsUndoStack::clear()
{
    while (!isEmpty())
        eraseFrontRecord();
}

void clsUndoStack::eraseFrontRecord()
{
    int i = 0;
    while (i < kDepth && !mRecords[i].used)
        ++i;
    if (i >= kDepth)
        throw std::out_of_range("Program Error.  Attempting to erase a record that doesn't exist.");
    mRecords[i].used = false;
    mRecords[i].groups.clear();
    mRecords[i].samples.clear();
    if (i < kDepth - 1)
        mFront = i + 1;
}

void clsUndoStack::addRecord(const QStringList &groups, const QStringList &samples, const Flags &flags)
{
    int i = kDepth - 1;
    while (i >= 0 && mRecords[i].used)
        --i;
    if (i < 0) {
        for (int k = kDepth - 1; k > 0; --k)
            mRecords[k] = mRecords[k - 1];
        i = 0;
    }
    mFront = i;
    mRecords[i].used = true;
    mRecords[i].groups = groups;
    mRecords[i].samples = samples;
    mRecords[i].flags = flags;
}

bool clsUndoStack::isEmpty() const
{
    for (const Record &r : mRecords) {
        if (r.used)
            return false;
    }
    return true;
}

int clsUndoStack::size() const
{
    int n = 0;
    for (const Record &r : mRecords)
        n += r.used ? 1 : 0;
    return n;
}
