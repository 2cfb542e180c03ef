#pragma once

#include "evaluation/kits/InhibitionKit.h"

// The rules shared by both Orvexa antibody kits (cat. 412 and 413), which differ only in
// their names.
class OrvexaKit : public InhibitionKit {
public:
    // The inhibition formatted with two decimals and then cut to one: 12.36 shows 12.3%.
    QString getCalculationRatio(double value, double meanPC, double meanNC) const override;
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC,
                      const QString &version, KitValidationText &out) const override;
};
