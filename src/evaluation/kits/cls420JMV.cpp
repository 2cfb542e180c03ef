#include "evaluation/kits/cls420JMV.h"

const KitSheet &cls420JMV::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Jessamine Marsh Virus"),
                                 QLatin1String("420"),
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
