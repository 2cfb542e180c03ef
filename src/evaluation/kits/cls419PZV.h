#pragma once

#include "evaluation/kits/InhibitionKit.h"

// Pasture Zelvirus (cat. 419). Its sample verdict takes the control means as 32-bit
// floats and works in single precision; a sample near the cut-off can come out
// otherwise than a double-precision figure would have it.
class cls419PZV : public InhibitionKit {
public:
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    const KitSheet &sheet() const override;
};
