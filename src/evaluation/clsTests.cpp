#include "evaluation/clsTests.h"

#include "core/LegacyFormat.h"
#include "platform/Prompt.h"

#include "evaluation/kits/cls402HTV.h"
#include "evaluation/kits/cls403TremalisArda.h"
#include "evaluation/kits/cls404TremalisBosk.h"
#include "evaluation/kits/cls405Dalvenia.h"
#include "evaluation/kits/cls410Sylvenna.h"
#include "evaluation/kits/cls412Orvexa.h"
#include "evaluation/kits/cls413Orvexa.h"
#include "evaluation/kits/cls414KSV.h"
#include "evaluation/kits/cls417Nimbrel.h"
#include "evaluation/kits/cls419PZV.h"
#include "evaluation/kits/cls420JMV.h"
#include "evaluation/kits/cls420JMV_1_2.h"
#include "evaluation/kits/cls424VLPV.h"
#include "evaluation/kits/cls6120302Nimbrel.h"
#include "evaluation/kits/cls6174020TSCBovineMilk.h"
#include "evaluation/kits/cls6174020TSCCaprine.h"
#include "evaluation/kits/cls617420TSC.h"
#include "evaluation/kits/cls6615011JMV.h"
#include "evaluation/kits/cls6WQ020WQD.h"
#include "evaluation/kits/clsGeneric.h"

namespace {

template <typename Kit> std::unique_ptr<TestKit> make()
{
    return std::make_unique<Kit>();
}

struct DispatchRow {
    const char16_t *testName;
    std::unique_ptr<TestKit> (*create)(qint16 minor);
};

// Matched in this order, name compared exactly. Only "JMV 420" depends on the version:
// plates first validated before x.3 keep the rule of their time.
const DispatchRow kDispatch[] = {
    {u"Nimbrel 417", [](qint16) { return make<cls417Nimbrel>(); }},
    {u"Nimbrel v2 6120.30-2", [](qint16) { return make<cls6120302Nimbrel>(); }},
    {u"Dalvenia 405", [](qint16) { return make<cls405Dalvenia>(); }},
    {u"KSV 414", [](qint16) { return make<cls414KSV>(); }},
    {u"Orvexa 412", [](qint16) { return make<cls412Orvexa>(); }},
    {u"Orvexa v2 413", [](qint16) { return make<cls413Orvexa>(); }},
    {u"PZV 419", [](qint16) { return make<cls419PZV>(); }},
    {u"HTV 402", [](qint16) { return make<cls402HTV>(); }},
    {u"JMV 420", [](qint16 minor) { return minor >= 3 ? make<cls420JMV>() : make<cls420JMV_1_2>(); }},
    {u"JMV v2 6615.01-1", [](qint16) { return make<cls6615011JMV>(); }},
    {u"WQD 6WQ0.20", [](qint16) { return make<cls6WQ020WQD>(); }},
    {u"TSC 6174.20", [](qint16) { return make<cls617420TSC>(); }},
    {u"TSC 6174.20 (Caprine)", [](qint16) { return make<cls6174020TSCCaprine>(); }},
    {u"TSC 6174.20 (Bovine Milk)", [](qint16) { return make<cls6174020TSCBovineMilk>(); }},
    {u"Sylvenna 410", [](qint16) { return make<cls410Sylvenna>(); }},
    {u"Tremalis Bosk 404", [](qint16) { return make<cls404TremalisBosk>(); }},
    {u"Tremalis Arda 403", [](qint16) { return make<cls403TremalisArda>(); }},
    {u"VLPV 424", [](qint16) { return make<cls424VLPV>(); }},
    {u"Generic", [](qint16) { return make<clsGeneric>(); }},
};

} // namespace

qint16 getVersionMinor(const QString &version)
{
    if (version.isEmpty())
        return 999;
    const qsizetype first = version.indexOf(u'.');
    const qsizetype second = first < 0 ? -1 : version.indexOf(u'.', first + 1);
    QString middle;
    if (first < 0)
        middle = version;
    else if (second < 0)
        middle = version.mid(first + 1);
    else
        middle = version.mid(first + 1, second - first - 1);
    // Plain digits, the usual case, need no general conversion.
    if (!middle.isEmpty() && middle.size() <= 4) {
        int minor = 0;
        for (const QChar c : middle) {
            if (c < u'0' || c > u'9')
                return legacy::toInt16(middle);
            minor = minor * 10 + (c.unicode() - u'0');
        }
        return qint16(minor);
    }
    return legacy::toInt16(middle);
}

const QStringList &clsTests::allTestNames()
{
    static const QStringList names = {
        QStringLiteral("Orvexa 412"),
        QStringLiteral("Orvexa v2 413"),
        QStringLiteral("Tremalis Arda 403"),
        QStringLiteral("Tremalis Bosk 404"),
        QStringLiteral("Nimbrel 417"),
        QStringLiteral("Nimbrel v2 6120.30-2"),
        QStringLiteral("KSV 414"),
        QStringLiteral("Dalvenia 405"),
        QStringLiteral("PZV 419"),
        QStringLiteral("HTV 402"),
        QStringLiteral("JMV 420"),
        QStringLiteral("JMV v2 6615.01-1"),
        QStringLiteral("WQD 6WQ0.20"),
        QStringLiteral("Generic"),
        QStringLiteral("TSC 6174.20"),
        QStringLiteral("TSC 6174.20 (Bovine Milk)"),
        QStringLiteral("TSC 6174.20 (Caprine)"),
        QStringLiteral("VLPV 424"),
        QStringLiteral("Sylvenna 410"),
    };
    return names;
}

RecordSet clsTests::rsGetAllTests()
{
    RecordSet set({QStringLiteral("TestID")});
    for (const QString &name : allTestNames()) {
        set.addNew();
        set.setValue(u"TestID", name);
    }
    set.moveFirst();
    return set;
}

std::unique_ptr<TestKit> clsTests::getTestClass(const QString &testName, const QString &version) const
{
    const qint16 minor = getVersionMinor(version);
    for (const DispatchRow &row : kDispatch) {
        if (testName == QStringView(row.testName))
            return row.create(minor);
    }
    mPrompt.message(QStringLiteral("Class requested is ") + testName);
    mPrompt.message(QStringLiteral("Could Not Identify Test Class.  Please Contact Qorn."),
                    QStringLiteral("Critical Error"), MsgIcon::Critical);
    throw UnknownTestKit(testName);
}

#define TAV_FORWARD(Type, op)                                                                                          \
    Type clsTests::op(const QString &testName, const QString &version) const                                           \
    {                                                                                                                  \
        return getTestClass(testName, version)->op();                                                                  \
    }

TAV_FORWARD(QString, getCriticalControlHeader)
TAV_FORWARD(bool, isTestCurrent)
TAV_FORWARD(QString, getCalculationRatioHeader)
TAV_FORWARD(QString, getCalculationRatioCriticalControl)
TAV_FORWARD(QString, getCriticalControl)
TAV_FORWARD(QString, getCatNo)
TAV_FORWARD(qint16, getMaxFilter)
TAV_FORWARD(qint16, getMaxVariation)
TAV_FORWARD(qint16, getMinFilter)
TAV_FORWARD(qint16, getMinimumAux)
TAV_FORWARD(qint16, getMinimumBlanks)
TAV_FORWARD(qint16, getMinimumNC)
TAV_FORWARD(qint16, getMinimumPC)
TAV_FORWARD(qint16, getRecommendedAux)
TAV_FORWARD(qint16, getRecommendedBlanks)
TAV_FORWARD(qint16, getRecommendedNC)
TAV_FORWARD(qint16, getRecommendedPC)
TAV_FORWARD(QString, getTestName)

#undef TAV_FORWARD

QString clsTests::getCalculationRatio(const QString &testName, const QString &version, double value, double meanPC,
                                      double meanNC) const
{
    return getTestClass(testName, version)->getCalculationRatio(value, meanPC, meanNC);
}

double clsTests::getCalculationRatioValue(const QString &testName, const QString &version, double value, double meanPC,
                                          double meanNC) const
{
    return getTestClass(testName, version)->getCalculationRatioValue(value, meanPC, meanNC);
}

QString clsTests::mathResults(const QString &testName, const QString &version, float od, double meanPC,
                              double meanNC) const
{
    return getTestClass(testName, version)->mathResults(od, meanPC, meanNC);
}

bool clsTests::validateTest(const QString &testName, const QString &version, double meanPC, double meanNC, double cvPC,
                            double cvNC, KitValidationText &out) const
{
    return getTestClass(testName, version)->validateTest(meanPC, meanNC, cvPC, cvNC, version, out);
}

bool clsTests::isEnoughAux(const QString &testName, const QString &version, qint16 count) const
{
    return count >= getMinimumAux(testName, version);
}

bool clsTests::isEnoughBlanks(const QString &testName, const QString &version, qint16 count) const
{
    return count >= getMinimumBlanks(testName, version);
}

bool clsTests::isEnoughNC(const QString &testName, const QString &version, qint16 count) const
{
    return count >= getMinimumNC(testName, version);
}

bool clsTests::isEnoughPC(const QString &testName, const QString &version, qint16 count) const
{
    return count >= getMinimumPC(testName, version);
}

bool clsTests::isRecommendedAux(const QString &testName, const QString &version, qint16 count) const
{
    return count >= getRecommendedAux(testName, version);
}

bool clsTests::isRecommendedBlanks(const QString &testName, const QString &version, qint16 count) const
{
    return count >= getRecommendedBlanks(testName, version);
}

bool clsTests::isRecommendedNC(const QString &testName, const QString &version, qint16 count) const
{
    return count >= getRecommendedNC(testName, version);
}

bool clsTests::isRecommendedPC(const QString &testName, const QString &version, qint16 count) const
{
    return count >= getRecommendedPC(testName, version);
}

bool clsTests::isFilterInRange(const QString &testName, const QString &version, qint16 filter) const
{
    return filter >= getMinFilter(testName, version) && filter <= getMaxFilter(testName, version);
}
