#include "evaluation/kits/cls410Sylvenna.h"

const KitSheet &cls410Sylvenna::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Sylvenna mirabilis Antibody Test Kit, cELISA"),
                                 QLatin1String("410"),
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
