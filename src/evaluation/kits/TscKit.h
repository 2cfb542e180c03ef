#pragma once

#include "evaluation/kits/RatioKit.h"

// The rules shared by the three TSC antibody kits (cat. 6174.20): the same S/P figure
// and plate rule, each with its own cut-off.
class TscKit : public RatioKit {
public:
    // (value - meanNC) / (meanPC - meanNC).
    double getCalculationRatioValue(double value, double meanPC, double meanNC) const override;
    // The same with three decimals and no percent sign.
    QString getCalculationRatio(double value, double meanPC, double meanNC) const override;
    // POS when the S/P in percent lies strictly above the kit's cut-off.
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    // S/P cut-off in percent; a sample exactly at it is NEG.
    virtual double positiveAbove() const = 0;
};
