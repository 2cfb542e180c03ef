#pragma once

#include "evaluation/kits/InhibitionKit.h"

// Nimbrel Test Kit, cELISA (cat. 417). Reports the S/N ratio, and judges samples and
// the positive control by comparing formatted texts rather than numbers, as the kit
// always has: "10.000" sorts before "2.000", and a minus sign before any digit.
class cls417Nimbrel : public InhibitionKit {
public:
    // value / meanNC, a fraction.
    double getCalculationRatioValue(double value, double meanPC, double meanNC) const override;
    // The S/N shown as a percent with one decimal, unlike the number.
    QString getCalculationRatio(double value, double meanPC, double meanNC) const override;
    // POS when the text of the OD sorts before the text of half the mean NC.
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    const KitSheet &sheet() const override;
};
