#pragma once

#include "evaluation/kits/InhibitionKit.h"

// WQD Antibody Test Kit, cELISA (cat. 6WQ0.20). The only kit that also limits the %CV of
// its negative controls.
class cls6WQ020WQD : public InhibitionKit {
public:
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    const KitSheet &sheet() const override;
};
