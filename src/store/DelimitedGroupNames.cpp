#include "store/DelimitedGroupNames.h"

#include "core/RecordSet.h"
#include "core/WellList.h"
#include "store/DbConnection.h"

#include <QSqlQuery>

#include <algorithm>

DelimitedGroupNames::DelimitedGroupNames(const QStringList &names)
{
    for (const QString &name : names) {
        if (name.contains(kWellDelimiter) && !mNames.contains(name))
            mNames << name;
    }
    std::stable_sort(mNames.begin(), mNames.end(),
                     [](const QString &a, const QString &b) { return a.size() > b.size(); });
}

DelimitedGroupNames DelimitedGroupNames::fromDatabase(const DbConnection &db)
{
    QSqlQuery q = db.query(QStringLiteral("SELECT GroupName FROM Groups"));
    QStringList names;
    while (q.next())
        names << q.value(0).toString();
    return DelimitedGroupNames(names);
}

QString DelimitedGroupNames::repairList(const QString &list, QStringList *found) const
{
    if (mNames.isEmpty())
        return list;
    QString out;
    out.reserve(list.size());
    qsizetype i = 0;
    while (i < list.size()) {
        // i is at the start of an item.
        bool repaired = false;
        for (const QString &name : mNames) {
            const qsizetype end = i + name.size();
            if (end < list.size() && list[end] == kWellDelimiter && QStringView(list).mid(i, name.size()) == name) {
                out += wellListItem(name);
                out += kWellDelimiter;
                i = end + 1;
                if (found && !found->contains(name))
                    found->append(name);
                repaired = true;
                break;
            }
        }
        if (repaired)
            continue;
        const qsizetype next = list.indexOf(kWellDelimiter, i);
        if (next < 0) {
            out += QStringView(list).mid(i);
            break;
        }
        out += QStringView(list).mid(i, next + 1 - i);
        i = next + 1;
    }
    return out;
}

QStringList DelimitedGroupNames::repairPlates(RecordSet &plates) const
{
    QStringList lines;
    if (mNames.isEmpty())
        return lines;
    for (int row = 0; row < plates.recordCount(); ++row) {
        const QVariant groups = plates.valueAt(row, u"Groups");
        if (groups.isNull())
            continue;
        QStringList found;
        const QString repaired = repairList(groups.toString(), &found);
        if (found.isEmpty())
            continue;
        plates.setValueAt(row, u"Groups", repaired);
        for (const QString &name : found)
            lines << QStringLiteral("Plate \"%1\": \"%2\" is now \"%3\".")
                         .arg(plates.valueAt(row, u"PlateName").toString(), name, wellListItem(name));
    }
    return lines;
}

QString DelimitedGroupNames::messageText(const QStringList &lines)
{
    return QStringLiteral("Some group names in this run hold the character \"") + kWellDelimiter +
           QStringLiteral("\", which a plate's layout cannot keep. They are shown without it:\r\n\r\n") +
           lines.join(QStringLiteral("\r\n")) +
           QStringLiteral("\r\n\r\nSave the run to keep the repaired names, and rename these groups in Group "
                          "Management so that their names match.");
}
