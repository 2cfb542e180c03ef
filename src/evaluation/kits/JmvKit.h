#pragma once

#include "evaluation/kits/RatioKit.h"

// The rules shared by the current Jessamine Marsh Virus kits (cat. 420 from program
// version x.3 on, and 6615.01-1), which differ only in their names.
class JmvKit : public RatioKit {
public:
    // POS when the OD reaches the positive mean, as numbers.
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;
};
