#pragma once

#include "evaluation/kits/InhibitionKit.h"

// The rules shared by the two Tremalis kits (cat. 403 and 404), which differ only in
// their names.
class TremalisKit : public InhibitionKit {
public:
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;
};
