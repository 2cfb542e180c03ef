#pragma once

#include "evaluation/TestKit.h"

// The kit of free-form plates: no controls needed, no validation, no results. It has no
// isTestCurrent, getCalculationRatioCriticalControl or getCalculationRatioValue: asking
// them fails loudly, so callers ask them only of named kits.
class clsGeneric : public TestKit {
public:
    QString getCriticalControl() const override { return QStringLiteral("PC"); }
    QString getCriticalControlHeader() const override { return QString(); }
    QString getCalculationRatioHeader() const override { return QString(); }
    QString getCalculationRatio(double, double, double) const override { return QString(); }
    QString getCatNo() const override { return QString(); }
    qint16 getMaxFilter() const override { return 2000; }
    qint16 getMinFilter() const override { return 0; }
    qint16 getMaxVariation() const override { return 50; }
    qint16 getMinimumAux() const override { return 0; }
    qint16 getMinimumBlanks() const override { return 0; }
    qint16 getMinimumNC() const override { return 0; }
    qint16 getMinimumPC() const override { return 0; }
    qint16 getRecommendedAux() const override { return 0; }
    qint16 getRecommendedBlanks() const override { return 0; }
    qint16 getRecommendedNC() const override { return 0; }
    qint16 getRecommendedPC() const override { return 0; }
    QString getTestName() const override { return QStringLiteral("Generic"); }
    QString mathResults(float, double, double) const override { return QString(); }
    bool validateTest(double, double, double, double, const QString &, KitValidationText &out) const override
    {
        out.boxes.clear();
        return true;
    }
};
