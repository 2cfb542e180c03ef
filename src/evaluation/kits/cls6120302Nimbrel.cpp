#include "evaluation/kits/cls6120302Nimbrel.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

const KitSheet &cls6120302Nimbrel::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Nimbrel Test Kit, cELISA v2"),
                                 QLatin1String("6120.30-2"),
                                 2,
                                 2,
                                 3,
                                 4,
                                 0,
                                 1,
                                 620,
                                 650,
                                 50,
                                 QLatin1String("%I"),
                                 QLatin1String("PC")};
    return kSheet;
}

QString cls6120302Nimbrel::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(100.0 - KitMath::divide(double(od), meanNC) * 100.0 >= 60.0);
}

bool cls6120302Nimbrel::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                                     KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();
    // Taken once, before any rule, so a zero mean NC stops here.
    const double inhibition = legacy::wholeNumber(100.0 - KitMath::divide(meanPC * 100.0, meanNC));

    if (!(meanNC > 0.3 && meanNC < 2.0)) {
        out.boxes = KitText::compose(KitText::kFailed,
                                     {QStringLiteral("The mean of the Negative Controls must be > 0.300 and < 2.000")},
                                     labels, meanNC, meanPC);
        return false;
    }
    if (!(inhibition >= 60.0)) {
        out.boxes =
            KitText::compose(KitText::kFailed,
                             {QStringLiteral("The inhibition of the mean of the Positive Controls must be >= 60%"),
                              inhibitionLine(QStringLiteral("Inhibition = "), meanPC, meanNC)},
                             labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
