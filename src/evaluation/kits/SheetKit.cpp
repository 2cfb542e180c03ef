#include "evaluation/kits/SheetKit.h"

QString SheetKit::getCalculationRatioHeader() const
{
    return sheet().ratioHeader;
}
QString SheetKit::getCalculationRatioCriticalControl() const
{
    return sheet().ratioControl;
}
QString SheetKit::getCatNo() const
{
    return sheet().catNo;
}
qint16 SheetKit::getMaxFilter() const
{
    return sheet().maxFilter;
}
qint16 SheetKit::getMinFilter() const
{
    return sheet().minFilter;
}
qint16 SheetKit::getMaxVariation() const
{
    return sheet().maxVariation;
}
qint16 SheetKit::getMinimumAux() const
{
    return 0;
}
qint16 SheetKit::getMinimumBlanks() const
{
    return sheet().minimumBlanks;
}
qint16 SheetKit::getMinimumNC() const
{
    return sheet().minimumNC;
}
qint16 SheetKit::getMinimumPC() const
{
    return sheet().minimumPC;
}
qint16 SheetKit::getRecommendedAux() const
{
    return 0;
}
qint16 SheetKit::getRecommendedBlanks() const
{
    return sheet().recommendedBlanks;
}
qint16 SheetKit::getRecommendedNC() const
{
    return sheet().recommendedNC;
}
qint16 SheetKit::getRecommendedPC() const
{
    return sheet().recommendedPC;
}
QString SheetKit::getTestName() const
{
    return sheet().testName;
}
