#pragma once

#include "evaluation/kits/InhibitionKit.h"

// Velpar Lapsing Virus Antibody (cat. 424). Samples and the positive control are judged
// on the inhibition as a whole number (halves to even).
class cls424VLPV : public InhibitionKit {
public:
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    const KitSheet &sheet() const override;
};
