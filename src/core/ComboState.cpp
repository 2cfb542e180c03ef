#include "core/ComboState.h"

int findComboItem(const ComboState &combo, const QVariant &itemData)
{
    if (itemData.isNull())
        return -1;
    bool wantedIsNumber = false;
    const double wanted = itemData.toDouble(&wantedIsNumber);
    for (int i = 0; i < combo.count(); ++i) {
        const QVariant &d = combo.data[i];
        if (d.isNull())
            continue;
        bool isNumber = false;
        const double value = d.toDouble(&isNumber);
        if ((isNumber && wantedIsNumber) ? value == wanted : d.toString() == itemData.toString())
            return i;
    }
    return -1;
}

int findComboItemOrFirst(const ComboState &combo, const QVariant &itemData)
{
    const int index = findComboItem(combo, itemData);
    if (index >= 0)
        return index;
    return combo.count() > 0 ? 0 : -1;
}
