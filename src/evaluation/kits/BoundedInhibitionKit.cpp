#include "evaluation/kits/BoundedInhibitionKit.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/KitText.h"

const InhibitionBounds BoundedInhibitionKit::kOrvexa{
    0.4, 2.1, "The mean of the Negative Controls must be >= 0.40 and <= 2.10", "Inhibition = ", true};
// "Inihibition" is this kit's own spelling and stays so.
const InhibitionBounds BoundedInhibitionKit::kSylvenna{
    0.3, 2.5, "The mean of the Negative Controls must be >= 0.3 and <= 2.5", "Inihibition = ", false};

QString BoundedInhibitionKit::getCalculationRatio(double value, double meanPC, double meanNC) const
{
    if (!bounds().figureCut)
        return InhibitionKit::getCalculationRatio(value, meanPC, meanNC);
    // One text built in place: the report and the export ask this for every sample.
    QString text;
    text.reserve(16);
    legacy::appendFormatted(text, getCalculationRatioValue(value, meanPC, meanNC), u"#0.00");
    text.chop(1);
    text.append(QLatin1Char('%'));
    return text;
}

QString BoundedInhibitionKit::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(100.0 - KitMath::divide(double(od), meanNC) * 100.0 >= 30.0);
}

bool BoundedInhibitionKit::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                                        KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();
    const InhibitionBounds &b = bounds();

    if (!(meanNC >= b.minNC && meanNC <= b.maxNC)) {
        out.boxes = KitText::compose(KitText::kFailed, {QString::fromLatin1(b.ncRule)}, labels, meanNC, meanPC);
        return false;
    }
    const double inhibition = 100.0 - KitMath::divide(meanPC, meanNC) * 100.0;
    if (!(inhibition >= 30.0)) {
        out.boxes =
            KitText::compose(KitText::kFailed,
                             {QStringLiteral("The inhibition of the mean of the Positive Controls must be >= 30%"),
                              inhibitionLine(QString::fromLatin1(b.inhibitionLabel), meanPC, meanNC)},
                             labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
