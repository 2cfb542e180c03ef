#include "evaluation/kits/cls6615011JMV.h"

const KitSheet &cls6615011JMV::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Jessamine Marsh Virus v2"),
                                 QLatin1String("6615.01-1"),
                                 1,
                                 3,
                                 1,
                                 1,
                                 0,
                                 1,
                                 450,
                                 450,
                                 50,
                                 QLatin1String(),
                                 QLatin1String()};
    return kSheet;
}
