#pragma once

#include "evaluation/kits/SheetKit.h"

// A competitive assay: a strong sample lowers the OD below the negative control, so the
// negative control is the critical one and the figure is the percent inhibition of a
// sample against the mean NC.
class InhibitionKit : public SheetKit {
public:
    bool isTestCurrent() const override;
    QString getCriticalControl() const override;
    QString getCriticalControlHeader() const override;
    // (1 - value / meanNC) * 100; meanPC plays no part.
    double getCalculationRatioValue(double value, double meanPC, double meanNC) const override;
    // The same figure with one decimal and a percent sign.
    QString getCalculationRatio(double value, double meanPC, double meanNC) const override;

protected:
    // label + (100 - PC / NC * 100) as "00.00" + "%": the inhibition line of a failed
    // inhibition rule, always from the unrounded figure.
    static QString inhibitionLine(const QString &label, double meanPC, double meanNC);
};
