#include "evaluation/kits/cls405Dalvenia.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitText.h"

const KitSheet &cls405Dalvenia::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Dalvenia Antibody Test Kit, ELISA (milk & serum)"),
                                 QLatin1String("405"),
                                 2,
                                 3,
                                 2,
                                 3,
                                 0,
                                 1,
                                 620,
                                 650,
                                 50,
                                 QLatin1String("S/P"),
                                 QLatin1String()};
    return kSheet;
}

double cls405Dalvenia::getCalculationRatioValue(double value, double meanPC, double meanNC) const
{
    return spRatio(value, meanPC, meanNC);
}

QString cls405Dalvenia::getCalculationRatio(double value, double meanPC, double meanNC) const
{
    return legacy::format(spRatio(value, meanPC, meanNC), u"#0.000");
}

QString cls405Dalvenia::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(spRatio(od, meanPC, meanNC) * 100.0 >= 25.0);
}

bool cls405Dalvenia::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                                  KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    if (!(meanNC < 0.25)) {
        out.boxes =
            KitText::compose(KitText::kFailed, {QStringLiteral("The mean of the Negative Controls must be < 0.250")},
                             labels, meanNC, meanPC);
        return false;
    }
    if (!(meanPC >= 0.5 && meanPC <= 1.8)) {
        out.boxes = KitText::compose(
            KitText::kFailed, {QStringLiteral("The mean of the Positive Controls must be >= 0.500 and <= 1.800")},
            labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
