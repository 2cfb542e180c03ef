#include "evaluation/kits/cls617420TSC.h"

const KitSheet &cls617420TSC::sheet() const
{
    static const KitSheet kSheet{QLatin1String("TSC Antibody Test Kit"),
                                 QLatin1String("6174.20"),
                                 2,
                                 2,
                                 2,
                                 2,
                                 0,
                                 1,
                                 450,
                                 450,
                                 50,
                                 QLatin1String("S/P"),
                                 QLatin1String("NC")};
    return kSheet;
}

double cls617420TSC::positiveAbove() const
{
    return 30.0;
}
