#pragma once

#include "core/RecordSet.h"
#include "evaluation/TestKit.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <stdexcept>

class Prompt;

// Raised after the two boxes of an unknown test name: the question asked cannot be answered.
class UnknownTestKit : public std::runtime_error {
public:
    explicit UnknownTestKit(const QString &name)
        : std::runtime_error(("Could not identify test class for '" + name + "'").toStdString())
    {
    }
};

// The middle number of a dotted version text: "1.5.4" gives 5, "1.2" gives 2, "7" gives 7,
// an empty text 999 (a plate never validated counts as new). Throws ConversionError when the
// middle part is not numeric.
qint16 getVersionMinor(const QString &version);

// The one way to the kits. Maps a plate's test name and the version that validated it to a
// kit, and forwards each question to a kit made for it.
class clsTests {
public:
    explicit clsTests(Prompt &prompt) : mPrompt(prompt) {}

    // The selectable tests, one text field TestID per row, in list order.
    static RecordSet rsGetAllTests();
    static const QStringList &allTestNames();

    // The kit for a plate. An unknown name shows the two boxes and throws UnknownTestKit.
    std::unique_ptr<TestKit> getTestClass(const QString &testName, const QString &version) const;

    QString getCriticalControlHeader(const QString &testName, const QString &version) const;
    bool isTestCurrent(const QString &testName, const QString &version) const;
    QString getCalculationRatioHeader(const QString &testName, const QString &version) const;
    QString getCalculationRatioCriticalControl(const QString &testName, const QString &version) const;
    QString getCalculationRatio(const QString &testName, const QString &version, double value, double meanPC,
                                double meanNC) const;
    double getCalculationRatioValue(const QString &testName, const QString &version, double value, double meanPC,
                                    double meanNC) const;
    QString getCriticalControl(const QString &testName, const QString &version) const;
    QString getCatNo(const QString &testName, const QString &version) const;
    qint16 getMaxFilter(const QString &testName, const QString &version) const;
    qint16 getMaxVariation(const QString &testName, const QString &version) const;
    qint16 getMinFilter(const QString &testName, const QString &version) const;
    qint16 getMinimumAux(const QString &testName, const QString &version) const;
    qint16 getMinimumBlanks(const QString &testName, const QString &version) const;
    qint16 getMinimumNC(const QString &testName, const QString &version) const;
    qint16 getMinimumPC(const QString &testName, const QString &version) const;
    qint16 getRecommendedAux(const QString &testName, const QString &version) const;
    qint16 getRecommendedBlanks(const QString &testName, const QString &version) const;
    qint16 getRecommendedNC(const QString &testName, const QString &version) const;
    qint16 getRecommendedPC(const QString &testName, const QString &version) const;
    QString getTestName(const QString &testName, const QString &version) const;
    QString mathResults(const QString &testName, const QString &version, float od, double meanPC, double meanNC) const;
    bool validateTest(const QString &testName, const QString &version, double meanPC, double meanNC, double cvPC,
                      double cvNC, KitValidationText &out) const;

    // Counts against the kit's needs: at or above the minimum / the recommendation.
    bool isEnoughAux(const QString &testName, const QString &version, qint16 count) const;
    bool isEnoughBlanks(const QString &testName, const QString &version, qint16 count) const;
    bool isEnoughNC(const QString &testName, const QString &version, qint16 count) const;
    bool isEnoughPC(const QString &testName, const QString &version, qint16 count) const;
    bool isRecommendedAux(const QString &testName, const QString &version, qint16 count) const;
    bool isRecommendedBlanks(const QString &testName, const QString &version, qint16 count) const;
    bool isRecommendedNC(const QString &testName, const QString &version, qint16 count) const;
    bool isRecommendedPC(const QString &testName, const QString &version, qint16 count) const;
    // Both ends allowed.
    bool isFilterInRange(const QString &testName, const QString &version, qint16 filter) const;

private:
    Prompt &mPrompt;
};
