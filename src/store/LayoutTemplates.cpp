#include "store/LayoutTemplates.h"

#include "core/WellList.h"
#include "store/AddedTables.h"
#include "store/DbConnection.h"
#include "store/RunDatabase.h"
#include "store/TransactionRetry.h"

#include <QSqlQuery>

#include <algorithm>

namespace {
const QString kTable = QStringLiteral("LayoutTemplates");
}

QStringList LayoutTemplates::names() const
{
    QStringList names;
    if (!AddedTables::exists(mDb, kTable))
        return names;
    QSqlQuery q = mDb.query(QStringLiteral("SELECT TemplateName FROM LayoutTemplates"));
    while (q.next())
        names << q.value(0).toString();
    std::sort(names.begin(), names.end(),
              [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    return names;
}

std::optional<QString> LayoutTemplates::existing(const QString &name) const
{
    // Compared here rather than by the database's lower(), which knows only ASCII.
    for (const QString &stored : names())
        if (stored.compare(name.trimmed(), Qt::CaseInsensitive) == 0)
            return stored;
    return std::nullopt;
}

std::optional<LayoutTemplate> LayoutTemplates::load(const QString &name) const
{
    const std::optional<QString> stored = existing(name);
    if (!stored)
        return std::nullopt;
    QSqlQuery q =
        mDb.query(QStringLiteral("SELECT Groups, Samples FROM LayoutTemplates WHERE TemplateName = ?"), {*stored});
    if (!q.next())
        return std::nullopt;
    return LayoutTemplate{*stored, splitWellList(q.value(0).toString()), splitWellList(q.value(1).toString())};
}

void LayoutTemplates::save(const LayoutTemplate &layout) const
{
    const QString name = layout.name.trimmed();
    runTransaction(mDb, [&] {
        AddedTables::ensure(mDb, kTable);
        if (const std::optional<QString> stored = existing(name))
            mDb.execute(QStringLiteral("DELETE FROM LayoutTemplates WHERE TemplateName = ?"), {*stored});
        // The id is taken here, not from the server's identity, so that templates copied
        // with their ids (copy-db) never meet a new one.
        lockBeforeNewId(mDb, kTable);
        const qint64 id =
            mDb.scalar(QStringLiteral("SELECT COALESCE(MAX(TemplateID), 0) + 1 FROM LayoutTemplates")).toLongLong();
        mDb.execute(QStringLiteral("INSERT INTO LayoutTemplates (TemplateID, TemplateName, Groups, Samples) "
                                   "VALUES (?, ?, ?, ?)"),
                    {id, name, joinWellList(layout.groups), joinWellList(layout.samples)});
    });
}

bool LayoutTemplates::rename(const QString &from, const QString &to) const
{
    bool changed = false;
    runTransaction(mDb, [&] {
        const std::optional<QString> stored = existing(from);
        changed = stored.has_value();
        if (changed)
            mDb.execute(QStringLiteral("UPDATE LayoutTemplates SET TemplateName = ? WHERE TemplateName = ?"),
                        {to.trimmed(), *stored});
    });
    return changed;
}

bool LayoutTemplates::remove(const QString &name) const
{
    bool changed = false;
    runTransaction(mDb, [&] {
        const std::optional<QString> stored = existing(name);
        changed = stored.has_value();
        if (changed)
            mDb.execute(QStringLiteral("DELETE FROM LayoutTemplates WHERE TemplateName = ?"), {*stored});
    });
    return changed;
}

QString LayoutTemplates::nameProblem(const QString &name)
{
    const QString n = name.trimmed();
    if (n.isEmpty())
        return QStringLiteral("A template needs a name.");
    if (n.contains(kWellDelimiter))
        return QStringLiteral("A template's name can't hold the character \"%1\".").arg(kWellDelimiter);
    if (n.size() > kMaxName)
        return QStringLiteral("A template's name can have at most %1 characters.").arg(kMaxName);
    return QString();
}
