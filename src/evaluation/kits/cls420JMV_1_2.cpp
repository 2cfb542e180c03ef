#include "evaluation/kits/cls420JMV_1_2.h"

#include "evaluation/kits/KitText.h"
#include "platform/Prompt.h"

const KitSheet &cls420JMV_1_2::sheet() const
{
    static const KitSheet kSheet{QLatin1String("Jessamine Marsh Virus"),
                                 QLatin1String("420"),
                                 1,
                                 3,
                                 1,
                                 1,
                                 0,
                                 1,
                                 450,
                                 450,
                                 50,
                                 QLatin1String(),
                                 QLatin1String()};
    return kSheet;
}

bool cls420JMV_1_2::isTestCurrent() const
{
    return false;
}

QString cls420JMV_1_2::mathResults(float od, double meanPC, double meanNC) const
{
    return KitText::verdict(double(od) >= meanPC);
}

bool cls420JMV_1_2::validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                                 KitValidationText &out) const
{
    out = KitValidationText{};
    const auto &labels = KitText::shortLabels();

    // Strictly more than twice, though the message allows exactly twice: the old rule.
    const bool passed = meanPC > meanNC * 2.0;
    if (passed) {
        out.boxes = KitText::compose(KitText::kPassed, {}, labels, meanNC, meanPC);
    } else {
        out.boxes =
            KitText::compose(KitText::kFailed,
                             {QStringLiteral("The mean of the Positive Controls must be >= than 2 times the mean "
                                             "of the Negative Controls.")},
                             labels, meanNC, meanPC);
    }
    // Unlike the note of the plate flow, this one breaks the line after "from".
    out.info = out.boxes + kCrLf + QStringLiteral("Validation and Specification from") + kCrLf +
               QStringLiteral("version ") + version + QStringLiteral(" is being used because this plate was read ") +
               QStringLiteral("in Tavimetra version ") + version + QLatin1Char('.');
    out.infoWritten = true;
    return passed;
}
