#pragma once

#include "evaluation/TestKit.h"
#include "evaluation/kits/KitSheet.h"

// A kit whose catalogue answers come from its data sheet constant. No kit uses auxiliary
// controls, so their minimum and recommendation are 0 throughout.
class SheetKit : public TestKit {
public:
    QString getCalculationRatioHeader() const override;
    QString getCalculationRatioCriticalControl() const override;
    QString getCatNo() const override;
    qint16 getMaxFilter() const override;
    qint16 getMinFilter() const override;
    qint16 getMaxVariation() const override;
    qint16 getMinimumAux() const override;
    qint16 getMinimumBlanks() const override;
    qint16 getMinimumNC() const override;
    qint16 getMinimumPC() const override;
    qint16 getRecommendedAux() const override;
    qint16 getRecommendedBlanks() const override;
    qint16 getRecommendedNC() const override;
    qint16 getRecommendedPC() const override;
    QString getTestName() const override;

protected:
    virtual const KitSheet &sheet() const = 0;
};
