#include "evaluation/kits/OrvexaKit.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

QString OrvexaKit::getCalculationRatio(double value, double meanPC, double meanNC) const
{
    QString text = legacy::format(getCalculationRatioValue(value, meanPC, meanNC), u"#0.00");
    text.chop(1);
    return text + QLatin1Char('%');
}

QString OrvexaKit::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(100.0 - KitMath::divide(double(od), meanNC) * 100.0 >= 30.0);
}

bool OrvexaKit::validateTest(double meanPC, double meanNC, double cvPC, double cvNC,
                             const QString &version, KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    if (!(meanNC >= 0.4 && meanNC <= 2.1)) {
        out.boxes = KitText::compose(KitText::kFailed,
            {QStringLiteral("The mean of the Negative Controls must be >= 0.40 and <= 2.10")},
            labels, meanNC, meanPC);
        return false;
    }
    const double inhibition = 100.0 - KitMath::divide(meanPC, meanNC) * 100.0;
    if (!(inhibition >= 30.0)) {
        out.boxes = KitText::compose(KitText::kFailed,
            {QStringLiteral("The inhibition of the mean of the Positive Controls must be >= 30%"),
             inhibitionLine(QStringLiteral("Inhibition = "), meanPC, meanNC)},
            labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
