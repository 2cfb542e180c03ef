#include "evaluation/kits/TscKit.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitText.h"

double TscKit::getCalculationRatioValue(double value, double meanPC, double meanNC) const
{
    return spRatio(value, meanPC, meanNC);
}

QString TscKit::getCalculationRatio(double value, double meanPC, double meanNC) const
{
    return legacy::format(spRatio(value, meanPC, meanNC), u"#0.000");
}

QString TscKit::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(spRatio(od, meanPC, meanNC) * 100.0 > positiveAbove());
}

bool TscKit::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                          KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    if (!(meanNC < 0.2)) {
        out.boxes =
            KitText::compose(KitText::kFailed, {QStringLiteral("The mean of the Negative Controls must be < 0.200")},
                             labels, meanNC, meanPC);
        return false;
    }
    if (!(meanPC >= 0.3)) {
        out.boxes =
            KitText::compose(KitText::kFailed, {QStringLiteral("The mean of the Positive Controls must be >= 0.300")},
                             labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
