#include "store/RunChangeCounter.h"

#include "store/DbConnection.h"

#include <QHash>
#include <QMutex>
#include <QPair>

namespace RunChangeCounter {

namespace {

using Key = QPair<QString, qint64>;

QMutex &mutex()
{
    static QMutex m;
    return m;
}

QHash<Key, int> &seen()
{
    static QHash<Key, int> counts;
    return counts;
}

void remember(const DbConnection &db, qint64 runID, int count)
{
    const QMutexLocker lock(&mutex());
    seen().insert({db.location().text(), runID}, count);
}

std::optional<int> countNow(const DbConnection &db, qint64 runID, bool lockRow)
{
    const QVariant count = db.scalar(QStringLiteral("SELECT ChangeCount FROM Runs WHERE RunID = ?") +
                                         (lockRow ? QStringLiteral(" FOR UPDATE") : QString()),
                                     {runID});
    if (count.isNull())
        return std::nullopt;
    return count.toInt();
}

} // namespace

void noteSeen(const DbConnection &db, qint64 runID)
{
    if (!db.dialect().isServer())
        return;
    if (const std::optional<int> count = countNow(db, runID, false))
        remember(db, runID, *count);
}

bool changedElsewhere(const DbConnection &db, qint64 runID)
{
    if (!db.dialect().isServer())
        return false;
    std::optional<int> known;
    {
        const QMutexLocker lock(&mutex());
        const auto found = seen().constFind({db.location().text(), runID});
        if (found != seen().constEnd())
            known = *found;
    }
    const std::optional<int> now = countNow(db, runID, false);
    return known && now && *now != *known;
}

std::optional<int> countSave(const DbConnection &db, qint64 runID)
{
    if (!db.dialect().isServer())
        return 0;
    const std::optional<int> now = countNow(db, runID, true);
    if (!now)
        return std::nullopt;
    db.execute(QStringLiteral("UPDATE Runs SET ChangeCount = ? WHERE RunID = ?"), {*now + 1, runID});
    return *now + 1;
}

void noteSaved(const DbConnection &db, qint64 runID, int count)
{
    if (db.dialect().isServer())
        remember(db, runID, count);
}

} // namespace RunChangeCounter
