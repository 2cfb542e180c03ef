#include "evaluation/kits/cls410Sylvenna.h"

#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

const KitSheet &cls410Sylvenna::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Sylvenna mirabilis Antibody Test Kit, cELISA"),
                                 QLatin1String("410"),
                                 1, 1, 1, 3, 0, 1, 620, 650, 50,
                                 QLatin1String("%I"), QLatin1String("PC")};
    return kSheet;
}

QString cls410Sylvenna::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(100.0 - KitMath::divide(double(od), meanNC) * 100.0 >= 30.0);
}

bool cls410Sylvenna::validateTest(double meanPC, double meanNC, double cvPC, double cvNC,
                                  const QString &version, KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    if (!(meanNC >= 0.3 && meanNC <= 2.5)) {
        out.boxes = KitText::compose(KitText::kFailed,
            {QStringLiteral("The mean of the Negative Controls must be >= 0.3 and <= 2.5")},
            labels, meanNC, meanPC);
        return false;
    }
    const double inhibition = 100.0 - KitMath::divide(meanPC, meanNC) * 100.0;
    if (!(inhibition >= 30.0)) {
        // "Inihibition" is this kit's own spelling and stays so.
        out.boxes = KitText::compose(KitText::kFailed,
            {QStringLiteral("The inhibition of the mean of the Positive Controls must be >= 30%"),
             inhibitionLine(QStringLiteral("Inihibition = "), meanPC, meanNC)},
            labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
