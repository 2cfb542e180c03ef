#pragma once

#include "evaluation/kits/RatioKit.h"

// Jessamine Marsh Virus (cat. 420) as it was judged up to program version x.2. Kept for
// old plates, which keep the rules of the version that first validated them; the
// validation text says so, and the same text with that note goes to the Info view.
class cls420JMV_1_2 : public RatioKit {
public:
    bool isTestCurrent() const override;
    // POS when the OD reaches the positive mean, as numbers.
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    const KitSheet &sheet() const override;
};
