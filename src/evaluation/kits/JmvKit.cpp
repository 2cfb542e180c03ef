#include "evaluation/kits/JmvKit.h"

#include "evaluation/kits/KitText.h"

QString JmvKit::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(double(od) >= meanPC);
}

bool JmvKit::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                          KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    if (!(meanPC >= meanNC * 1.5 && meanNC <= 0.15)) {
        out.boxes =
            KitText::compose(KitText::kFailed,
                             {QStringLiteral("The mean of the Positive Controls must be >= than 1.5 times the mean "
                                             "of the Negative Controls,"),
                              QStringLiteral("and the mean of the Negative Controls must be <= 0.15.")},
                             labels, meanNC, meanPC);
        return false;
    }
    out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    return true;
}
