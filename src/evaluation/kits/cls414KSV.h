#pragma once

#include "evaluation/kits/RatioKit.h"

// Kestrin Antibody Test Kit, ELISA (cat. 414). No figure; a sample is POS when its OD
// text is not below the text of the positive mean, both with three decimals. The kit
// compares the texts, not the numbers: equal after rounding counts as POS, and
// "10.000" sorts below "2.000".
class cls414KSV : public RatioKit {
public:
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    const KitSheet &sheet() const override;
};
