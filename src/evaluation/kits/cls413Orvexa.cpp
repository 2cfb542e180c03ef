#include "evaluation/kits/cls413Orvexa.h"

const KitSheet &cls413Orvexa::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Orvexa Antibody Test Kit, cELISA v2"),
                                 QLatin1String("413"),
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
