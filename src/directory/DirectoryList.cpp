#include "directory/DirectoryList.h"

void DirectoryList::setListIndex(int index)
{
    mIndex = (index >= 0 && index < count()) ? index : -1;
}

QString DirectoryList::selectedText() const
{
    return mIndex >= 0 ? mNames.at(mIndex) : QString();
}

void DirectoryList::setNames(const QStringList &names)
{
    mNames = names;
    mIndex = -1;
}

void DirectoryList::restoreIndex(int remembered)
{
    if (remembered < 0)
        setListIndex(-1);
    else
        setListIndex(qMin(remembered, count() - 1));
}

void DirectoryList::selectAfterDelete(int remembered)
{
    if (remembered < 1)
        setListIndex(count() > 0 ? 0 : -1);
    else
        setListIndex(qMin(remembered - 1, count() - 1));
}
