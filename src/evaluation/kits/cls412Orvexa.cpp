#include "evaluation/kits/cls412Orvexa.h"

const KitSheet &cls412Orvexa::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Orvexa Antibody Test Kit, cELISA"),
                                 QLatin1String("412"),
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
