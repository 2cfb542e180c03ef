#pragma once

#include "evaluation/kits/TscKit.h"

// TSC Antibody Test Kit (cat. 6174.20): POS above an S/P of 30%.
class cls617420TSC : public TscKit {
protected:
    const KitSheet &sheet() const override;
    double positiveAbove() const override;
};
