#include "evaluation/kits/TremalisKit.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

QString TremalisKit::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict((1.0 - KitMath::divide(double(od), meanNC)) * 100.0 >= 40.0);
}

bool TremalisKit::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                               KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    if (!(meanNC > 0.3 && meanNC < 2.0)) {
        out.boxes =
            KitText::compose(KitText::kFailedBare,
                             {QStringLiteral("The mean of the Negative Controls must produce an optical density "
                                             "> 0.300 and < 2.000.")},
                             labels, meanNC, meanPC);
        return false;
    }
    const double inhibition = (1.0 - KitMath::divide(meanPC, meanNC)) * 100.0;
    if (!(inhibition >= 40.0)) {
        // "product" for "produce": the kit's text, kept as it is.
        out.boxes = KitText::compose(
            KitText::kFailedBare,
            {QStringLiteral("The mean of the Positive Controls must product an inhibition of >= 40%.")}, labels, meanNC,
            meanPC, {QStringLiteral("Positive Inhibition: ") + legacy::format(inhibition, u"##,##0.000")});
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassedColon, {}, labels, meanNC, meanPC);
    return true;
}
