#pragma once

#include "evaluation/kits/InhibitionKit.h"

// Nimbrel Test Kit, cELISA v2 (cat. 6120.30-2). The positive control's inhibition is
// judged as a whole number (halves to even).
class cls6120302Nimbrel : public InhibitionKit {
public:
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    const KitSheet &sheet() const override;
};
