#pragma once

#include "evaluation/kits/TscKit.h"

// TSC Antibody Test Kit (Caprine) (cat. 6174.20): POS above an S/P of 80%.
class cls6174020TSCCaprine : public TscKit {
protected:
    const KitSheet &sheet() const override;
    double positiveAbove() const override;
};
