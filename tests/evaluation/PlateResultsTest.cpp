// The result sheet of a plate that passed: which wells get a verdict, from which OD, and
// how each verdict looks.

#include "TestPlate.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

struct Wanted {
    const char *well;
    const char *text;
    bool bold;
    quint32 colour;
};

void expectCells(const TestPlate &p, std::initializer_list<Wanted> cells)
{
    for (const Wanted &c : cells) {
        SCOPED_TRACE(c.well);
        const ResultCell &cell = p.resultCell(c.well);
        EXPECT_EQ(cell.text, QString::fromLatin1(c.text));
        EXPECT_EQ(cell.bold, c.bold);
        EXPECT_FALSE(cell.italic);
        EXPECT_EQ(cell.colour, c.colour);
    }
}

} // namespace

TEST(ResultSheet, SamplesGetAVerdictAndControlsTheirName)
{
    TestPlate p(kJmv2);
    layOutJmv2Plate(p);
    p.put("F1", QStringLiteral("BLANK"), 0.0);
    p.put("G1", QStringLiteral("AUX"), 0.7);
    p.put("D2", QStringLiteral("pc"), 1.5); // not a control name: a sample
    p.put("E2", QStringLiteral(" "), 0.2);  // not empty: a sample
    p.read();
    ASSERT_TRUE(p.evaluate());
    expectCells(p, {{"A2", "POS", true, 255},
                    {"B2", "NEG", false, 0},
                    {"C2", "POS", true, 255}, // at the PC mean
                    {"D2", "POS", true, 255},
                    {"E2", "NEG", false, 0},
                    {"A1", "PC", false, 0},
                    {"D1", "NC", false, 0},
                    {"F1", "BLANK", false, 0},
                    {"G1", "AUX", false, 0},
                    {"H12", "", false, 0}});
}

TEST(ResultSheet, VerdictsComeFromTheODsAsShownWithThreeDecimals)
{
    TestPlate p(kJmv2);
    p.put("A1", QStringLiteral("PC"), 0.5004); // shows 0.500
    p.put("B1", QStringLiteral("NC"), 0.1);
    p.put("A2", QStringLiteral("up"), 0.4996);   // shows 0.500: at the PC mean
    p.put("B2", QStringLiteral("down"), 0.4994); // shows 0.499
    p.put("C2", QStringLiteral("same"), 0.50049);
    p.read();
    ASSERT_TRUE(p.evaluate());
    EXPECT_EQ(p.result("A2"), QStringLiteral("POS"));
    EXPECT_EQ(p.result("B2"), QStringLiteral("NEG"));
    EXPECT_EQ(p.result("C2"), QStringLiteral("POS"));
}

TEST(ResultSheet, AControlNameInAnotherCaseCountsAsAControlButIsNotAveraged)
{
    TestPlate p(kJmv2);
    p.put("A1", QStringLiteral("pc"), 2.0);
    p.put("B1", QStringLiteral("PC"), 0.5);
    p.put("C1", QStringLiteral("NC"), 0.1);
    p.read();
    EXPECT_EQ(PlateEvaluator::countControls(p.in, p.in.flags, QStringLiteral("PC")), 2);
    ASSERT_TRUE(p.evaluate());
    EXPECT_EQ(p.verdict(), crlf({"TEST VALIDATION PASSED", "Neg Control (AVG): 0.100", "Pos Control (AVG): 0.500"}));
    EXPECT_EQ(p.result("A1"), QStringLiteral("POS"));
}
