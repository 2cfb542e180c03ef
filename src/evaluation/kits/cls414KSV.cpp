#include "evaluation/kits/cls414KSV.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitText.h"

const KitSheet &cls414KSV::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Kestrin Antibody Test Kit, ELISA"),
                                 QLatin1String("414"),
                                 1,
                                 3,
                                 1,
                                 1,
                                 0,
                                 1,
                                 620,
                                 650,
                                 50,
                                 QLatin1String(),
                                 QLatin1String()};
    return kSheet;
}

QString cls414KSV::mathResults(float od, double meanPC, double meanNC) const
{
    const QString odText = legacy::format(od, u"##,##0.000");
    const QString pcText = legacy::format(meanPC, u"##,##0.000");
    return KitText::verdict(legacy::compareBinary(odText, pcText) >= 0);
}

bool cls414KSV::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                             KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    if (!(meanNC < 0.2)) {
        out.boxes =
            KitText::compose(KitText::kFailed, {QStringLiteral("The mean of the Negative Controls must be < 0.200")},
                             labels, meanNC, meanPC);
        return false;
    }
    if (!(meanPC >= 0.25 && meanPC < 2.0)) {
        // The message ends in a blank, as it always has.
        out.boxes = KitText::compose(
            KitText::kFailed, {QStringLiteral("The mean of the Positive Controls must be >= 0.250 and < 2.000 ")},
            labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
