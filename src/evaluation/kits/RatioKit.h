#pragma once

#include "evaluation/kits/SheetKit.h"

// A direct assay: a strong sample raises the OD, so the positive control is the critical
// one. Kits of this kind have no figure unless they report the S/P ratio.
class RatioKit : public SheetKit {
public:
    bool isTestCurrent() const override;
    QString getCriticalControl() const override;
    QString getCriticalControlHeader() const override;
    // -1.0: no figure.
    double getCalculationRatioValue(double value, double meanPC, double meanNC) const override;
    // Empty: no figure.
    QString getCalculationRatio(double value, double meanPC, double meanNC) const override;

protected:
    // (value - meanNC) / (meanPC - meanNC), the sample-to-positive ratio.
    static double spRatio(double value, double meanPC, double meanNC);
};
