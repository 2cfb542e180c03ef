#include "core/WellList.h"

#include "core/Wells.h"

QStringList splitWellList(const QString &text)
{
    QStringList items(wells::kCount);
    forEachWellItem(text, [&items](int k, QStringView item) { items[k] = item.toString(); });
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
