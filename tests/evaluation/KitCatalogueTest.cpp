// The catalogue answers of every inhibition and ratio kit, as the kits' data sheets give
// them, one row per kit.

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

#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

struct CatalogueRow {
    const char *kitClass;
    std::function<std::unique_ptr<TestKit>()> make;
    const char *testName;
    const char *catNo;
    int minPC, recPC, minNC, recNC, minBlanks, recBlanks;
    int minFilter, maxFilter, maxVariation;
    const char *ratioHeader;
    const char *ratioControl;
    const char *criticalControl;
    const char *criticalHeader;
    bool current;
};

template<typename Kit>
std::function<std::unique_ptr<TestKit>()> maker()
{
    return [] { return std::make_unique<Kit>(); };
}

void PrintTo(const CatalogueRow &row, std::ostream *os)
{
    *os << row.kitClass;
}

const CatalogueRow kRows[] = {
    // Inhibition kits: critical control NC, figure control PC.
    {"cls417Nimbrel", maker<cls417Nimbrel>(), "Nimbrel Test Kit, cELISA", "417",
     1, 1, 1, 3, 0, 1, 620, 650, 50, "S/N", "PC", "NC", "Mean NC", true},
    {"cls6120302Nimbrel", maker<cls6120302Nimbrel>(), "Nimbrel Test Kit, cELISA v2", "6120.30-2",
     2, 2, 3, 4, 0, 1, 620, 650, 50, "%I", "PC", "NC", "Mean NC", true},
    {"cls412Orvexa", maker<cls412Orvexa>(), "Orvexa Antibody Test Kit, cELISA", "412",
     1, 1, 1, 3, 0, 1, 620, 650, 50, "%I", "PC", "NC", "Mean NC", true},
    {"cls413Orvexa", maker<cls413Orvexa>(), "Orvexa Antibody Test Kit, cELISA v2", "413",
     1, 1, 1, 3, 0, 1, 620, 650, 50, "%I", "PC", "NC", "Mean NC", true},
    {"cls419PZV", maker<cls419PZV>(), "Pasture Zelvirus", "419",
     1, 1, 1, 3, 0, 1, 620, 650, 50, "%I", "PC", "NC", "Mean NC", true},
    {"cls410Sylvenna", maker<cls410Sylvenna>(), "Sylvenna mirabilis Antibody Test Kit, cELISA", "410",
     1, 1, 1, 3, 0, 1, 620, 650, 50, "%I", "PC", "NC", "Mean NC", true},
    {"cls402HTV", maker<cls402HTV>(), "Hestral Torpid Antibody Test Kit, cELISA", "402",
     1, 2, 1, 3, 0, 0, 450, 450, 50, "%I", "PC", "NC", "Mean NC", true},
    {"cls404TremalisBosk", maker<cls404TremalisBosk>(), "Tremalis Bosk", "404",
     1, 1, 1, 3, 0, 1, 620, 650, 50, "%I", "PC", "NC", "Mean NC", true},
    {"cls403TremalisArda", maker<cls403TremalisArda>(), "Tremalis Arda", "403",
     1, 1, 1, 3, 0, 1, 620, 650, 50, "%I", "PC", "NC", "Mean NC", true},
    {"cls424VLPV", maker<cls424VLPV>(), "Velpar Lapsing Virus Antibody", "424",
     1, 2, 2, 3, 0, 1, 450, 450, 50, "%I", "PC", "NC", "Mean NC", true},
    {"cls6WQ020WQD", maker<cls6WQ020WQD>(), "WQD Antibody Test Kit, cELISA", "6WQ0.20",
     2, 3, 3, 3, 0, 1, 450, 450, 100, "%I", "PC", "NC", "Mean NC", true},
    // Ratio kits: critical control PC.
    {"cls405Dalvenia", maker<cls405Dalvenia>(), "Dalvenia Antibody Test Kit, ELISA (milk & serum)", "405",
     2, 3, 2, 3, 0, 1, 620, 650, 50, "S/P", "", "PC", "Mean PC", true},
    {"cls617420TSC", maker<cls617420TSC>(), "TSC Antibody Test Kit", "6174.20",
     2, 2, 2, 2, 0, 1, 450, 450, 50, "S/P", "NC", "PC", "Mean PC", true},
    {"cls6174020TSCBovineMilk", maker<cls6174020TSCBovineMilk>(), "TSC Antibody Test Kit (Bovine Milk)", "6174.20",
     2, 2, 2, 2, 0, 1, 450, 450, 50, "S/P", "NC", "PC", "Mean PC", true},
    {"cls6174020TSCCaprine", maker<cls6174020TSCCaprine>(), "TSC Antibody Test Kit (Caprine)", "6174.20",
     2, 2, 2, 2, 0, 1, 450, 450, 50, "S/P", "NC", "PC", "Mean PC", true},
    {"cls414KSV", maker<cls414KSV>(), "Kestrin Antibody Test Kit, ELISA", "414",
     1, 3, 1, 1, 0, 1, 620, 650, 50, "", "", "PC", "Mean PC", true},
    {"cls420JMV", maker<cls420JMV>(), "Jessamine Marsh Virus", "420",
     1, 3, 1, 1, 0, 1, 450, 450, 50, "", "", "PC", "Mean PC", true},
    {"cls420JMV_1_2", maker<cls420JMV_1_2>(), "Jessamine Marsh Virus", "420",
     1, 3, 1, 1, 0, 1, 450, 450, 50, "", "", "PC", "Mean PC", false},
    {"cls6615011JMV", maker<cls6615011JMV>(), "Jessamine Marsh Virus v2", "6615.01-1",
     1, 3, 1, 1, 0, 1, 450, 450, 50, "", "", "PC", "Mean PC", true},
};

class KitCatalogue : public ::testing::TestWithParam<CatalogueRow> {};

TEST_P(KitCatalogue, AnswersItsDataSheet)
{
    const CatalogueRow &row = GetParam();
    const auto kit = row.make();
    EXPECT_EQ(kit->getTestName(), QString::fromUtf8(row.testName));
    EXPECT_EQ(kit->getCatNo(), QString::fromUtf8(row.catNo));
    EXPECT_EQ(kit->getMinimumPC(), row.minPC);
    EXPECT_EQ(kit->getRecommendedPC(), row.recPC);
    EXPECT_EQ(kit->getMinimumNC(), row.minNC);
    EXPECT_EQ(kit->getRecommendedNC(), row.recNC);
    EXPECT_EQ(kit->getMinimumBlanks(), row.minBlanks);
    EXPECT_EQ(kit->getRecommendedBlanks(), row.recBlanks);
    EXPECT_EQ(kit->getMinimumAux(), 0);
    EXPECT_EQ(kit->getRecommendedAux(), 0);
    EXPECT_EQ(kit->getMinFilter(), row.minFilter);
    EXPECT_EQ(kit->getMaxFilter(), row.maxFilter);
    EXPECT_EQ(kit->getMaxVariation(), row.maxVariation);
    EXPECT_EQ(kit->getCalculationRatioHeader(), QString::fromUtf8(row.ratioHeader));
    EXPECT_EQ(kit->getCalculationRatioCriticalControl(), QString::fromUtf8(row.ratioControl));
    EXPECT_EQ(kit->getCriticalControl(), QString::fromUtf8(row.criticalControl));
    EXPECT_EQ(kit->getCriticalControlHeader(), QString::fromUtf8(row.criticalHeader));
    EXPECT_EQ(kit->isTestCurrent(), row.current);
}

INSTANTIATE_TEST_SUITE_P(AllKits, KitCatalogue, ::testing::ValuesIn(kRows),
                         [](const auto &info) { return std::string(info.param.kitClass); });

// A kit with no figure answers -1.0 and an empty text, whatever it is given, so that
// reports leave out the figure column and tracking knows it has none.
class KitWithoutFigure : public ::testing::TestWithParam<CatalogueRow> {};

TEST_P(KitWithoutFigure, AnswersMinusOneAndEmptyText)
{
    const auto kit = GetParam().make();
    EXPECT_EQ(kit->getCalculationRatioValue(0.8, 1.0, 0.1), -1.0);
    EXPECT_EQ(kit->getCalculationRatioValue(0.5, 0.5, 0.5), -1.0);
    EXPECT_EQ(kit->getCalculationRatio(0.8, 1.0, 0.1), QString());
    EXPECT_EQ(kit->getCalculationRatio(0.5, 0.5, 0.5), QString());
}

INSTANTIATE_TEST_SUITE_P(RatioKits, KitWithoutFigure,
                         ::testing::Values(kRows[15], kRows[16], kRows[17], kRows[18]),
                         [](const auto &info) { return std::string(info.param.kitClass); });

} // namespace
