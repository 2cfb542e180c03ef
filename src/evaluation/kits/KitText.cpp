#include "evaluation/kits/KitText.h"

#include "core/LegacyFormat.h"
#include "platform/Prompt.h"

namespace KitText {

const ControlLabels &shortLabels()
{
    static const ControlLabels labels{QStringLiteral("Neg Control (AVG): "), QStringLiteral("Pos Control (AVG): ")};
    return labels;
}

const ControlLabels &longLabels()
{
    static const ControlLabels labels{QStringLiteral("Negative Control (AVG): "),
                                      QStringLiteral("Positive Control (AVG): ")};
    return labels;
}

QString mean(double value)
{
    return legacy::format(value, u"##,##0.000");
}

QString compose(const QString &head, const QStringList &before, const ControlLabels &labels, double meanNC,
                double meanPC, const QStringList &after)
{
    QStringList lines;
    lines << head << before;
    lines << labels.nc + mean(meanNC) << labels.pc + mean(meanPC);
    lines << after;
    return lines.join(kCrLf);
}

QString verdict(bool positive)
{
    return positive ? QStringLiteral("POS") : QStringLiteral("NEG");
}

} // namespace KitText
