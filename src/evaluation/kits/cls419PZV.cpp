#include "evaluation/kits/cls419PZV.h"

#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

const KitSheet &cls419PZV::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Pasture Zelvirus"),
                                 QLatin1String("419"),
                                 1,
                                 1,
                                 1,
                                 3,
                                 0,
                                 1,
                                 620,
                                 650,
                                 50,
                                 QLatin1String("%I"),
                                 QLatin1String("PC")};
    return kSheet;
}

QString cls419PZV::mathResults(float od, double meanPC, double meanNC) const
{
    // The means arrive as singles, and OD / meanNC * 100 stays single; only the product
    // is kept as a double before it is taken from 100.
    const float singleNC = static_cast<float>(meanNC);
    const float ratio = KitMath::divideSingle(od, singleNC);
    const float product = ratio * 100.0f;
    const double inhibition = 100.0 - static_cast<double>(product);
    return KitText::verdict(inhibition >= 35.0);
}

bool cls419PZV::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                             KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    if (!(meanNC >= 0.3)) {
        out.boxes =
            KitText::compose(KitText::kFailed, {QStringLiteral("The mean of the Negative Controls must be >= 0.300")},
                             labels, meanNC, meanPC);
        return false;
    }
    const double inhibition = 100.0 - KitMath::divide(meanPC, meanNC) * 100.0;
    if (!(inhibition >= 35.0)) {
        // No blank after ">=" in this kit's message.
        out.boxes =
            KitText::compose(KitText::kFailed,
                             {QStringLiteral("The inhibition of the mean of the Positive Controls must be >=35%"),
                              inhibitionLine(QStringLiteral("Inhibition = "), meanPC, meanNC)},
                             labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
