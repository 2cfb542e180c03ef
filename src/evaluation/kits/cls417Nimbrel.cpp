#include "evaluation/kits/cls417Nimbrel.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

namespace {

QString odText(double value)
{
    return legacy::format(value, u"##,##0.000");
}

} // namespace

const KitSheet &cls417Nimbrel::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Nimbrel Test Kit, cELISA"),
                                 QLatin1String("417"),
                                 1,
                                 1,
                                 1,
                                 3,
                                 0,
                                 1,
                                 620,
                                 650,
                                 50,
                                 QLatin1String("S/N"),
                                 QLatin1String("PC")};
    return kSheet;
}

double cls417Nimbrel::getCalculationRatioValue(double value, double meanPC, double meanNC) const
{
    return KitMath::divide(value, meanNC);
}

QString cls417Nimbrel::getCalculationRatio(double value, double meanPC, double meanNC) const
{
    QString text;
    text.reserve(16);
    legacy::appendFormatted(text, KitMath::divide(value, meanNC) * 100.0, u"#0.0");
    text.append(QLatin1Char('%'));
    return text;
}

QString cls417Nimbrel::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(legacy::compareBinary(odText(od), odText(meanNC / 2.0)) < 0);
}

bool cls417Nimbrel::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                                 KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::longLabels();

    // The message says > 0.300 and < 2.000, but the kit has always let both ends pass.
    if (!(meanNC >= 0.3 && meanNC <= 2.0)) {
        out.boxes = KitText::compose(KitText::kFailed,
                                     {QStringLiteral("The mean of the Negative Controls must be > 0.300 and < 2.000")},
                                     labels, meanNC, meanPC);
        return false;
    }
    if (legacy::compareBinary(odText(meanPC), odText(meanNC / 2.0)) > 0) {
        out.boxes = KitText::compose(KitText::kFailed,
                                     {QStringLiteral("The mean of the Positive Controls must be <= 50% of the mean of "
                                                     "Negative Controls")},
                                     labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
