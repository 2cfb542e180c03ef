#pragma once

#include "evaluation/kits/TscKit.h"

// TSC Antibody Test Kit (Bovine Milk) (cat. 6174.20): POS above an S/P of 13%.
class cls6174020TSCBovineMilk : public TscKit {
protected:
    const KitSheet &sheet() const override;
    double positiveAbove() const override;
};
