#include "directory/PlateNames.h"

#include "core/RecordSet.h"
#include "core/WellList.h"

QString replaceGroupInList(const QString &oldName, const QString &newName, const QString &list)
{
    QStringList items = splitWellList(list);
    for (QString &item : items) {
        if (item == oldName)
            item = newName;
    }
    return joinWellList(items);
}

bool wellListHasName(const QString &list, const QString &name)
{
    return splitWellList(list).contains(name);
}

bool platesUseGroup(const RecordSet &plates, const QString &groupName)
{
    for (int row = 0; row < plates.recordCount(); ++row) {
        if (wellListHasName(plates.valueAt(row, u"Groups").toString(), groupName))
            return true;
    }
    return false;
}

void renameGroupInPlates(RecordSet &plates, const QString &oldName, const QString &newName)
{
    for (int row = 0; row < plates.recordCount(); ++row) {
        const QVariant groups = plates.valueAt(row, u"Groups");
        if (groups.isNull())
            continue;
        try {
            plates.setValueAt(row, u"Groups", replaceGroupInList(oldName, newName, groups.toString()));
        } catch (const WellListOverflow &) {
            // Left as it stands, as said above.
        }
    }
}

bool platesUseTech(const RecordSet &plates, const QString &techName)
{
    for (int row = 0; row < plates.recordCount(); ++row) {
        if (plates.valueAt(row, u"TechName").toString() == techName)
            return true;
    }
    return false;
}

void renameTechInPlates(RecordSet &plates, const QString &oldName, const QString &newName)
{
    for (int row = 0; row < plates.recordCount(); ++row) {
        const QVariant tech = plates.valueAt(row, u"TechName");
        if (!tech.isNull() && tech.toString() == oldName)
            plates.setValueAt(row, u"TechName", newName);
    }
}
