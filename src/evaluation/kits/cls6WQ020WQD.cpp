#include "evaluation/kits/cls6WQ020WQD.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

const KitSheet &cls6WQ020WQD::sheet() const
{
    static const KitSheet kSheet{QLatin1String("WQD Antibody Test Kit, cELISA"),
                                 QLatin1String("6WQ0.20"),
                                 2,
                                 3,
                                 3,
                                 3,
                                 0,
                                 1,
                                 450,
                                 450,
                                 100,
                                 QLatin1String("%I"),
                                 QLatin1String("PC")};
    return kSheet;
}

QString cls6WQ020WQD::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(100.0 - KitMath::divide(double(od), meanNC) * 100.0 >= 40.0);
}

bool cls6WQ020WQD::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                                KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();
    // Taken once, before any rule, so a zero mean NC stops here.
    const double inhibition = legacy::wholeNumber(100.0 - KitMath::divide(meanPC * 100.0, meanNC));

    // The message says < 1.600, but 1.6 itself has always passed.
    if (!(meanNC >= 0.4 && meanNC <= 1.6)) {
        out.boxes = KitText::compose(KitText::kFailed,
                                     {QStringLiteral("The mean of the Negative Controls must be >= 0.400 and < 1.600")},
                                     labels, meanNC, meanPC);
        return false;
    }
    if (!(inhibition >= 50.0 && inhibition <= 70.0)) {
        out.boxes =
            KitText::compose(KitText::kFailed,
                             {QStringLiteral("The inhibition of the mean of the Positive Controls must be >= 50% "
                                             "and <= 70%"),
                              inhibitionLine(QStringLiteral("Inhibition = "), meanPC, meanNC)},
                             labels, meanNC, meanPC);
        return false;
    }
    if (!(cvNC <= 15.0)) {
        out.boxes = KitText::compose(
            KitText::kFailed,
            {QStringLiteral("The %CV for negative controls must be <= 15%"),
             QStringLiteral("Neg Control %CV:  ") + legacy::format(cvNC, u"##,##0.000") + QLatin1Char('%'),
             inhibitionLine(QStringLiteral("Inhibition = "), meanPC, meanNC)},
            labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
