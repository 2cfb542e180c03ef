#pragma once

#include "evaluation/kits/RatioKit.h"

// Dalvenia Antibody Test Kit, ELISA (milk & serum) (cat. 405). Reports the S/P ratio.
class cls405Dalvenia : public RatioKit {
public:
    // (value - meanNC) / (meanPC - meanNC).
    double getCalculationRatioValue(double value, double meanPC, double meanNC) const override;
    // The same with three decimals and no percent sign.
    QString getCalculationRatio(double value, double meanPC, double meanNC) const override;
    // POS at an S/P of 25% and above; the cut-off itself counts, unlike the TSC kits.
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    const KitSheet &sheet() const override;
};
