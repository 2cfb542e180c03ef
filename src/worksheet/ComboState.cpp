#include "worksheet/ComboState.h"

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
