#include "evaluation/kits/cls403TremalisArda.h"

const KitSheet &cls403TremalisArda::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Tremalis Arda"),
                                 QLatin1String("403"),
                                 1,
                                 1,
                                 1,
                                 3,
                                 0,
                                 1,
                                 620,
                                 650,
                                 50,
                                 QLatin1String("%I"),
                                 QLatin1String("PC")};
    return kSheet;
}
