#include "evaluation/kits/cls404TremalisBosk.h"

const KitSheet &cls404TremalisBosk::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Tremalis Bosk"),
                                 QLatin1String("404"),
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
