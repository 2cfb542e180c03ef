#include "evaluation/kits/RatioKit.h"

#include "evaluation/kits/KitMath.h"

bool RatioKit::isTestCurrent() const
{
    return true;
}
QString RatioKit::getCriticalControl() const
{
    return QStringLiteral("PC");
}
QString RatioKit::getCriticalControlHeader() const
{
    return QStringLiteral("Mean PC");
}

double RatioKit::getCalculationRatioValue(double value, double meanPC, double meanNC) const
{
    return -1.0;
}

QString RatioKit::getCalculationRatio(double value, double meanPC, double meanNC) const
{
    return QString();
}

double RatioKit::spRatio(double value, double meanPC, double meanNC)
{
    return KitMath::divide(value - meanNC, meanPC - meanNC);
}
