#pragma once

#include "evaluation/kits/InhibitionKit.h"

// The bounds of one kit under the bounded inhibition rule, and the words it shows them in.
struct InhibitionBounds {
    double minNC;
    double maxNC;
    const char *ncRule;          // the failure message of a mean NC out of bounds
    const char *inhibitionLabel; // head of the inhibition line of a failed PC
    // The figure with two decimals cut to one (12.36 shows 12.3%), rather than rounded to one.
    bool figureCut;
};

// The rule of the Orvexa and Sylvenna kits: the mean NC within the kit's bounds, the mean
// PC inhibited by at least 30%, and a sample positive from 30% inhibition on.
class BoundedInhibitionKit : public InhibitionKit {
public:
    static const InhibitionBounds kOrvexa;
    static const InhibitionBounds kSylvenna;

    QString getCalculationRatio(double value, double meanPC, double meanNC) const override;
    QString mathResults(float od, double meanPC, double meanNC) const override;
    bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                      KitValidationText &out) const override;

protected:
    virtual const InhibitionBounds &bounds() const = 0;
};
