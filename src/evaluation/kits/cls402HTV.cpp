#include "evaluation/kits/cls402HTV.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

const KitSheet &cls402HTV::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Hestral Torpid Antibody Test Kit, cELISA"),
                                 QLatin1String("402"),
                                 1,
                                 2,
                                 1,
                                 3,
                                 0,
                                 0,
                                 450,
                                 450,
                                 50,
                                 QLatin1String("%I"),
                                 QLatin1String("PC")};
    return kSheet;
}

QString cls402HTV::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict((1.0 - KitMath::divide(double(od), meanNC)) * 100.0 >= 35.0);
}

bool cls402HTV::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                             KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    if (!(meanNC > 0.2 && meanNC < 2.0)) {
        out.boxes =
            KitText::compose(KitText::kFailedBare,
                             {QStringLiteral("The mean of the Negative Controls must produce an optical density "
                                             "> 0.200 and < 2.000.")},
                             labels, meanNC, meanPC);
        return false;
    }
    const double inhibition = (1.0 - KitMath::divide(meanPC, meanNC)) * 100.0;
    if (!(inhibition >= 35.0)) {
        // "product" for "produce": the kit's text, kept as it is.
        out.boxes = KitText::compose(
            KitText::kFailedBare,
            {QStringLiteral("The mean of the Positive Controls must product an inhibition of >= 35%.")}, labels, meanNC,
            meanPC, {QStringLiteral("Positive Inhibition: ") + legacy::format(inhibition, u"##,##0.000")});
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassedColon, {}, labels, meanNC, meanPC);
    return true;
}
