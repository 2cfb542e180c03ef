#pragma once

#include <QString>

#include <stdexcept>

// What a kit's validation writes: the text of the four validation boxes, and for the one
// kit kept for old plates also the text of the Info view's box.
struct KitValidationText {
    QString boxes;
    bool infoWritten = false;
    QString info;
};

// Raised when a kit is asked an operation that it does not have (the Generic kit has no
// isTestCurrent, getCalculationRatioCriticalControl or getCalculationRatioValue).
class MissingKitOperation : public std::runtime_error {
public:
    explicit MissingKitOperation(const char *operation)
        : std::runtime_error(std::string("Object doesn't support this property or method: ") + operation)
    {
    }
};

// One test kit: its catalogue data, control needs, filter range, validation rule and
// per-sample cut-off. Kits hold no state; clsTests makes one for each question.
class TestKit {
public:
    virtual ~TestKit() = default;

    virtual bool isTestCurrent() const { throw MissingKitOperation("isTestCurrent"); }
    virtual QString getCriticalControl() const = 0;
    virtual QString getCriticalControlHeader() const = 0;
    virtual QString getCalculationRatioHeader() const = 0;
    virtual QString getCalculationRatioCriticalControl() const
    {
        throw MissingKitOperation("getCalculationRatioCriticalControl");
    }
    virtual QString getCalculationRatio(double value, double meanPC, double meanNC) const = 0;
    virtual double getCalculationRatioValue(double value, double meanPC, double meanNC) const
    {
        throw MissingKitOperation("getCalculationRatioValue");
    }
    virtual QString getCatNo() const = 0;
    virtual qint16 getMaxFilter() const = 0;
    virtual qint16 getMinFilter() const = 0;
    virtual qint16 getMaxVariation() const = 0;
    virtual qint16 getMinimumAux() const = 0;
    virtual qint16 getMinimumBlanks() const = 0;
    virtual qint16 getMinimumNC() const = 0;
    virtual qint16 getMinimumPC() const = 0;
    virtual qint16 getRecommendedAux() const = 0;
    virtual qint16 getRecommendedBlanks() const = 0;
    virtual qint16 getRecommendedNC() const = 0;
    virtual qint16 getRecommendedPC() const = 0;
    virtual QString getTestName() const = 0;
    // "POS" or "NEG" (or empty for the Generic kit) for one sample well.
    virtual QString mathResults(float od, double meanPC, double meanNC) const = 0;
    // Applies the kit's rule; writes the validation text; true when the plate passes.
    virtual bool validateTest(double meanPC, double meanNC, double cvPC, double cvNC, const QString &version,
                              KitValidationText &out) const = 0;
};
