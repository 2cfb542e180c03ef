#include "core/NameMatch.h"

#include <algorithm>

namespace names {

bool same(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

std::optional<QString> find(const QStringList &list, QStringView name)
{
    for (const QString &entry : list) {
        if (same(entry, name))
            return entry;
    }
    return std::nullopt;
}

QString firstStartingWith(const QStringList &list, QStringView prefix)
{
    for (const QString &entry : list) {
        if (entry.startsWith(prefix, Qt::CaseInsensitive))
            return entry;
    }
    return QString();
}

void sort(QStringList &list)
{
    std::stable_sort(list.begin(), list.end(), [](const QString &a, const QString &b) {
        const int c = a.compare(b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a < b;
    });
}

} // namespace names
