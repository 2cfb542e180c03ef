#include "evaluation/kits/cls424VLPV.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

const KitSheet &cls424VLPV::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Velpar Lapsing Virus Antibody"),
                                 QLatin1String("424"),
                                 1,
                                 2,
                                 2,
                                 3,
                                 0,
                                 1,
                                 450,
                                 450,
                                 50,
                                 QLatin1String("%I"),
                                 QLatin1String("PC")};
    return kSheet;
}

QString cls424VLPV::mathResults(float od, double meanPC, double meanNC) const
{
    const double inhibition = legacy::wholeNumber(100.0 - KitMath::divide(double(od) * 100.0, meanNC));
    return KitText::verdict(inhibition >= 25.0);
}

bool cls424VLPV::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                              KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();
    const double inhibition = legacy::wholeNumber(100.0 - KitMath::divide(meanPC * 100.0, meanNC));
    const QStringList meanLine{QStringLiteral("Mean Pos %I ") + legacy::format(inhibition, u"##,##0.000") +
                               QLatin1Char('%')};

    // One rule. Its message speaks of twice the negative mean, though the rule is the
    // inhibition: kept as the kit's data sheet has it.
    if (!(meanNC >= 0.4 && meanNC <= 2.1 && inhibition >= 25.0)) {
        out.boxes =
            KitText::compose(KitText::kFailed,
                             {QStringLiteral("The mean of the Positive Controls must be >= than 2 times the mean "
                                             "of the Negative Controls.")},
                             labels, meanNC, meanPC, meanLine);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC, meanLine);
    return true;
}
