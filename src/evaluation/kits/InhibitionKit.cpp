#include "evaluation/kits/InhibitionKit.h"

#include "core/LegacyFormat.h"
#include "evaluation/kits/KitMath.h"

bool InhibitionKit::isTestCurrent() const
{
    return true;
}
QString InhibitionKit::getCriticalControl() const
{
    return QStringLiteral("NC");
}
QString InhibitionKit::getCriticalControlHeader() const
{
    return QStringLiteral("Mean NC");
}

double InhibitionKit::getCalculationRatioValue(double value, double meanPC, double meanNC) const
{
    return (1.0 - KitMath::divide(value, meanNC)) * 100.0;
}

QString InhibitionKit::getCalculationRatio(double value, double meanPC, double meanNC) const
{
    QString text;
    text.reserve(16);
    legacy::appendFormatted(text, getCalculationRatioValue(value, meanPC, meanNC), u"#0.0");
    text.append(QLatin1Char('%'));
    return text;
}

QString InhibitionKit::inhibitionLine(const QString &label, double meanPC, double meanNC)
{
    const double inhibition = 100.0 - KitMath::divide(meanPC, meanNC) * 100.0;
    return label + legacy::format(inhibition, u"00.00") + QLatin1Char('%');
}
