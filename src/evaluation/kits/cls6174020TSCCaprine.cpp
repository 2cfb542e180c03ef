#include "evaluation/kits/cls6174020TSCCaprine.h"

const KitSheet &cls6174020TSCCaprine::sheet() const
{
    static const KitSheet kSheet{QLatin1String("TSC Antibody Test Kit (Caprine)"),
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

double cls6174020TSCCaprine::positiveAbove() const
{
    return 80.0;
}
