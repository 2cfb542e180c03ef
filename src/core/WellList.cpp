#include "core/WellList.h"

#include "core/Wells.h"

QStringList splitWellList(const QString &text)
{
    QStringList items(wells::kCount);
    int next = 0;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != kWellDelimiter)
            continue;
        if (next >= wells::kCount)
            throw WellListOverflow();
        items[next++] = text.mid(start, i - start);
        start = i + 1;
    }
    return items;
}

QString joinWellList(const QStringList &items)
{
    QString out;
    out.reserve(items.size() * 8 + wells::kCount);
    for (int k = 0; k < wells::kCount; ++k) {
        if (k < items.size())
            out += wellListItem(items[k]);
        out += kWellDelimiter;
    }
    return out;
}

QString wellListItem(const QString &text)
{
    if (!text.contains(kWellDelimiter))
        return text;
    QString item = text;
    item.remove(kWellDelimiter);
    return item;
}

QString emptyWellList()
{
    return QString(wells::kCount, kWellDelimiter);
}
