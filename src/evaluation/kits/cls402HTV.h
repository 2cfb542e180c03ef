#pragma once

#include "evaluation/kits/InhibitionKit.h"

// Hestral Torpid Antibody Test Kit, cELISA (cat. 402).
class cls402HTV : public InhibitionKit {
public:
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    const KitSheet &sheet() const override;
};
