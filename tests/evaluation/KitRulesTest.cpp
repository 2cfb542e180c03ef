// The kits' own rules, each at its edges (just in, just out): the plate rule on the
// control means, the cut-off that calls a sample, and the figure shown beside it.
// Boundary inputs are binary fractions that put the kit's figure exactly on the limit;
// up() and down() move a float OD by one step.

#include "FakePrompt.h"
#include "QtPrinters.h"

#include "evaluation/clsTests.h"
#include "evaluation/kits/KitMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

namespace {

std::unique_ptr<TestKit> kit(const char *name, const char *version = "")
{
    FakePrompt prompt;
    return clsTests(prompt).getTestClass(QString::fromLatin1(name), QString::fromLatin1(version));
}

float up(float od)
{
    return std::nextafter(od, std::numeric_limits<float>::infinity());
}
float down(float od)
{
    return std::nextafter(od, -std::numeric_limits<float>::infinity());
}

const QString kVersion = QStringLiteral("1.5.4");

// --- plate validation -------------------------------------------------------------------------

struct Plate {
    const char *kit;
    double pc, nc;
    bool passes;
    double cvNC = 10.0; // only WQD judges it
};

TEST(KitValidation, EachRuleAtItsEdges)
{
    const double atLeast1_5 = std::nextafter(0.1875, 0.0); // a hair below 1.5 times 0.125
    const Plate plates[] = {
        // Nimbrel 417 passes both ends of its NC range and compares the PC with half the
        // NC as the texts "##,##0.000", character by character.
        {"Nimbrel 417", 0.15, 0.3, true},
        {"Nimbrel 417", 0.1, 0.2999, false},
        {"Nimbrel 417", 0.5, 2.0, true},
        {"Nimbrel 417", 0.1, 2.0001, false},
        {"Nimbrel 417", 0.4, 0.8, true},
        {"Nimbrel 417", 0.401, 0.8, false},
        {"Nimbrel 417", 0.4004, 0.8, true}, // both show 0.400
        {"Nimbrel 417", 1000.0, 2.0, true}, // "1,000.000" sorts before "1.000"
        // Nimbrel v2: strict NC range; inhibition as a whole number, halves to even.
        {"Nimbrel v2 6120.30-2", 0.1, 0.3, false},
        {"Nimbrel v2 6120.30-2", 0.1, 0.3001, true},
        {"Nimbrel v2 6120.30-2", 0.1, 2.0, false},
        {"Nimbrel v2 6120.30-2", 0.1, 1.9999, true},
        {"Nimbrel v2 6120.30-2", 81.0 / 256, 0.78125, true},  // 59.5 -> 60
        {"Nimbrel v2 6120.30-2", 83.0 / 256, 0.78125, false}, // 58.5 -> 58
        {"Orvexa 412", 0.1, 0.4, true},
        {"Orvexa 412", 0.1, 0.3999, false},
        {"Orvexa 412", 0.1, 2.1, true},
        {"Orvexa 412", 0.1, 2.1001, false},
        {"Orvexa 412", 0.875, 1.25, true},
        {"Orvexa 412", 0.875000000001, 1.25, false}, // 30%
        {"Orvexa v2 413", 0.875, 1.25, true},
        {"Orvexa v2 413", 0.1, 2.1001, false},
        {"PZV 419", 0.1, 0.3, true},
        {"PZV 419", 0.1, 0.2999, false},
        {"PZV 419", 1.0, 1234.5, true},
        {"PZV 419", 0.8125, 1.25, true},
        {"PZV 419", 0.8126, 1.25, false}, // 35%
        {"Sylvenna 410", 0.1, 0.3, true},
        {"Sylvenna 410", 0.1, 0.2999, false},
        {"Sylvenna 410", 0.1, 2.5, true},
        {"Sylvenna 410", 0.1, 2.5001, false},
        {"Sylvenna 410", 0.875, 1.25, true},
        {"Sylvenna 410", 0.875000000001, 1.25, false}, // 30%
        {"HTV 402", 0.05, 0.2, false},
        {"HTV 402", 0.05, 0.2001, true},
        {"HTV 402", 0.05, 2.0, false},
        {"HTV 402", 0.05, 1.9999, true},
        {"HTV 402", 0.8125, 1.25, true},
        {"HTV 402", 0.8125000001, 1.25, false}, // 35%
        {"Tremalis Bosk 404", 0.05, 0.3, false},
        {"Tremalis Bosk 404", 0.05, 0.3001, true},
        {"Tremalis Bosk 404", 0.05, 2.0, false},
        {"Tremalis Bosk 404", 0.05, 1.9999, true},
        {"Tremalis Bosk 404", 0.75, 1.25, true},
        {"Tremalis Bosk 404", 0.7500001, 1.25, false}, // 40%
        {"Tremalis Arda 403", 0.75, 1.25, true},
        {"Tremalis Arda 403", 0.05, 0.3, false},
        // VLPV: the NC range, and the inhibition as a whole number, halves to even.
        {"VLPV 424", 0.1, 0.4, true},
        {"VLPV 424", 0.1, 0.3999, false},
        {"VLPV 424", 0.1, 2.1, true},
        {"VLPV 424", 0.1, 2.1001, false},
        {"VLPV 424", 149.0 / 256, 0.78125, true},  // 25.5 -> 26
        {"VLPV 424", 151.0 / 256, 0.78125, false}, // 24.5 -> 24
        // WQD: the message says < 1.600, but 1.6 passes; the inhibition window 50 to 70
        // as a whole number; the NC %CV up to 15.
        {"WQD 6WQ0.20", 0.16, 0.4, true},
        {"WQD 6WQ0.20", 0.16, 0.3999, false},
        {"WQD 6WQ0.20", 0.64, 1.6, true},
        {"WQD 6WQ0.20", 0.64, 1.6001, false},
        {"WQD 6WQ0.20", 101.0 / 256, 0.78125, true},  // 49.5 -> 50
        {"WQD 6WQ0.20", 103.0 / 256, 0.78125, false}, // 48.5 -> 48
        {"WQD 6WQ0.20", 59.0 / 256, 0.78125, true},   // 70.5 -> 70
        {"WQD 6WQ0.20", 57.0 / 256, 0.78125, false},  // 71.5 -> 72
        {"WQD 6WQ0.20", 0.5, 1.25, true, 15.0},
        {"WQD 6WQ0.20", 0.5, 1.25, false, 15.01},
        {"Dalvenia 405", 1.0, 0.25, false},
        {"Dalvenia 405", 1.0, 0.2499, true},
        {"Dalvenia 405", 0.5, 0.1, true},
        {"Dalvenia 405", 0.4999, 0.1, false},
        {"Dalvenia 405", 1.8, 0.1, true},
        {"Dalvenia 405", 1.8001, 0.1, false},
        {"TSC 6174.20", 1.0, 0.2, false},
        {"TSC 6174.20", 1.0, 0.1999, true},
        {"TSC 6174.20", 0.3, 0.1, true},
        {"TSC 6174.20", 0.2999, 0.1, false},
        {"TSC 6174.20", 2500.0, 0.1, true},
        {"KSV 414", 1.0, 0.2, false},
        {"KSV 414", 1.0, 0.1999, true},
        {"KSV 414", 0.25, 0.1, true},
        {"KSV 414", 0.2499, 0.1, false},
        {"KSV 414", 2.0, 0.1, false},
        {"KSV 414", 1.9999, 0.1, true},
        // JMV: PC at least 1.5 times the NC, NC at most 0.15.
        {"JMV 420", 0.225, 0.15, true},
        {"JMV 420", 1.0, 0.1501, false},
        {"JMV 420", 0.1875, 0.125, true},
        {"JMV 420", atLeast1_5, 0.125, false},
        {"JMV v2 6615.01-1", 0.1875, 0.125, true},
        {"JMV v2 6615.01-1", atLeast1_5, 0.125, false},
    };
    for (const Plate &p : plates) {
        SCOPED_TRACE(testing::Message() << p.kit << ": PC " << p.pc << ", NC " << p.nc << ", %CV NC " << p.cvNC);
        KitValidationText out;
        out.boxes = QStringLiteral("left from an earlier plate");
        EXPECT_EQ(kit(p.kit)->validateTest(p.pc, p.nc, 80.0, p.cvNC, kVersion, out), p.passes);
        EXPECT_TRUE(out.boxes.startsWith(p.passes ? u"TEST VALIDATION PASSED" : u"TEST VALIDATION FAILED"))
            << out.boxes.toStdString();
        EXPECT_FALSE(out.infoWritten);
    }
}

// The text names the broken rule, then the means as "##,##0.000" (half away from zero)
// and any figure the rule judged.
TEST(KitValidation, TheTextShowsTheBrokenRuleAndTheMeans)
{
    KitValidationText out;
    kit("PZV 419")->validateTest(0.8126, 1.25, 1, 1, kVersion, out);
    EXPECT_EQ(out.boxes, QStringLiteral("TEST VALIDATION FAILED: \r\n"
                                        "The inhibition of the mean of the Positive Controls must be >=35%\r\n"
                                        "Inhibition = 34.99%\r\n"
                                        "Neg Control (AVG): 1.250\r\nPos Control (AVG): 0.813"));
    kit("Nimbrel v2 6120.30-2")->validateTest(0.95, 1.0, 1, 1, kVersion, out);
    EXPECT_TRUE(out.boxes.contains(QStringLiteral("\r\nInhibition = 05.00%\r\n"))) << out.boxes.toStdString();
    kit("PZV 419")->validateTest(0.8125, 1234.5, 1, 1, kVersion, out);
    EXPECT_EQ(out.boxes,
              QStringLiteral("TEST VALIDATION PASSED\r\nNeg Control (AVG): 1,234.500\r\nPos Control (AVG): 0.813"));
}

// JMV 420 plates first validated before 1.3 keep the rule of their time (PC strictly above
// twice the NC, no NC limit) and tell so on the Info view.
TEST(KitValidation, AnOldJmvPlateKeepsItsRuleAndSaysSo)
{
    struct Case {
        double pc, nc;
        bool passes;
    };
    for (const Case &c :
         {Case{0.25, 0.125, false}, Case{std::nextafter(0.25, 1.0), 0.125, true}, Case{1.1, 0.5, true}}) {
        SCOPED_TRACE(testing::Message() << "PC " << c.pc << ", NC " << c.nc);
        KitValidationText out;
        EXPECT_EQ(kit("JMV 420", "1.2.0")->validateTest(c.pc, c.nc, 1, 1, QStringLiteral("1.2.0"), out), c.passes);
        EXPECT_TRUE(out.infoWritten);
        EXPECT_EQ(out.info, out.boxes + QStringLiteral("\r\nValidation and Specification from\r\nversion 1.2.0 is "
                                                       "being used because this plate was read in Tavimetra "
                                                       "version 1.2.0."));
    }
}

// The kits that judge on a whole number take it before any rule, so a zero mean NC is a
// division error there; the others fail their NC rule first.
TEST(KitValidation, AZeroMeanNCIsADivisionErrorOrAFailedNCRule)
{
    for (const char *name : {"Nimbrel v2 6120.30-2", "VLPV 424", "WQD 6WQ0.20"}) {
        KitValidationText out;
        EXPECT_THROW(kit(name)->validateTest(0.1, 0.0, 1, 1, kVersion, out), KitDivisionByZero) << name;
    }
    for (const char *name : {"Nimbrel 417", "Orvexa 412", "Orvexa v2 413", "PZV 419", "Sylvenna 410", "HTV 402",
                             "Tremalis Bosk 404", "Tremalis Arda 403"}) {
        KitValidationText out;
        EXPECT_FALSE(kit(name)->validateTest(0.1, 0.0, 1, 1, kVersion, out)) << name;
        EXPECT_TRUE(out.boxes.contains(QStringLiteral("Negative Controls must"))) << name;
    }
}

// --- sample verdicts --------------------------------------------------------------------------

struct Sample {
    const char *kit;
    float od;
    double pc, nc;
    bool pos;
    const char *version = "";
};

TEST(KitCutOff, EachCallsTheSampleAtItsEdge)
{
    const Sample samples[] = {
        // 100 - OD / NC * 100 (or (1 - OD / NC) * 100) with NC 1.25: 60 at 0.5, 35 at
        // 0.8125, 40 at 0.75, 30 at 0.875; the cut-off itself is POS.
        {"Nimbrel v2 6120.30-2", 0.5f, 0.2, 1.25, true},
        {"Nimbrel v2 6120.30-2", up(0.5f), 0.2, 1.25, false},
        {"Orvexa 412", 0.875f, 0.2, 1.25, true},
        {"Orvexa 412", up(0.875f), 0.2, 1.25, false},
        {"Sylvenna 410", 0.875f, 0.2, 1.25, true},
        {"Sylvenna 410", up(0.875f), 0.2, 1.25, false},
        {"HTV 402", 0.8125f, 0.2, 1.25, true},
        {"HTV 402", up(0.8125f), 0.2, 1.25, false},
        {"Tremalis Bosk 404", 0.75f, 0.2, 1.25, true},
        {"Tremalis Bosk 404", up(0.75f), 0.2, 1.25, false},
        {"WQD 6WQ0.20", 0.75f, 0.2, 1.25, true},
        {"WQD 6WQ0.20", up(0.75f), 0.2, 1.25, false},
        // VLPV: 100 - OD * 100 / NC as a whole number, halves to even; 25 at 150/256.
        {"VLPV 424", 150.0f / 256, 0.1, 0.78125, true},
        {"VLPV 424", 151.0f / 256, 0.1, 0.78125, false},
        {"VLPV 424", 149.0f / 256, 0.1, 0.78125, true},
        // PZV works in single precision: one float step above 35% is still exactly 35.
        {"PZV 419", 0.8125f, 0.2, 1.25, true},
        {"PZV 419", up(0.8125f), 0.2, 1.25, true},
        {"PZV 419", up(up(0.8125f)), 0.2, 1.25, false},
        {"PZV 419", 0.8125f, 0.2, 1.249999838, true}, // the NC becomes a float first
        // Nimbrel 417: POS when the OD's text sorts before the text of half the NC.
        {"Nimbrel 417", 0.400f, 0.1, 0.8, false},
        {"Nimbrel 417", 0.399f, 0.1, 0.8, true},
        {"Nimbrel 417", 0.3995f, 0.1, 0.8, false}, // shows 0.400 too
        {"Nimbrel 417", 10.0f, 0.1, 4.0, true},    // "10.000" before "2.000"
        {"Nimbrel 417", 1000.0f, 0.1, 3.0, true},  // the comma sorts before the point
        // (OD - NC) / (PC - NC) * 100: 25 at 0.375 (PC 1.125, NC 0.125), 30 at 0.3125 and
        // 80 at 0.625 (PC 0.75, NC 0.125), 13 at 0.265625 (PC 1.625, NC 0.0625). Dalvenia
        // counts the cut-off as POS, the TSC kits don't.
        {"Dalvenia 405", 0.375f, 1.125, 0.125, true},
        {"Dalvenia 405", down(0.375f), 1.125, 0.125, false},
        {"TSC 6174.20", 0.3125f, 0.75, 0.125, false},
        {"TSC 6174.20", up(0.3125f), 0.75, 0.125, true},
        {"TSC 6174.20 (Bovine Milk)", 0.265625f, 1.625, 0.0625, false},
        {"TSC 6174.20 (Bovine Milk)", up(0.265625f), 1.625, 0.0625, true},
        {"TSC 6174.20 (Caprine)", 0.625f, 0.75, 0.125, false},
        {"TSC 6174.20 (Caprine)", up(0.625f), 0.75, 0.125, true},
        // KSV: POS when the OD's text "##,##0.000" does not sort below the PC's; the NC
        // plays no part.
        {"KSV 414", 0.2504f, 0.2496, 0.05, true},
        {"KSV 414", 0.2494f, 0.2496, 0.05, false},
        {"KSV 414", 10.0f, 2.0, 0.05, false},
        {"KSV 414", 1000.0f, 1.5, 0.05, false},
        {"KSV 414", 0.5f, 0.3, 0.3, true},
        // JMV: the OD, widened from its float, against the PC mean as numbers.
        {"JMV 420", 0.5f, 0.5, 0.05, true},
        {"JMV 420", down(0.5f), 0.5, 0.05, false},
        {"JMV 420", 0.5f, 0.5000001, 0.05, false},
        {"JMV 420", 0.7f, 0.7, 0.05, false},
        {"JMV 420", 0.5f, 0.5, 0.05, true, "1.2.0"},
        {"JMV 420", down(0.5f), 0.5, 0.05, false, "1.2.0"},
    };
    for (const Sample &s : samples) {
        SCOPED_TRACE(testing::Message() << s.kit << " " << s.version << ": OD " << s.od << ", PC " << s.pc << ", NC "
                                        << s.nc);
        EXPECT_EQ(kit(s.kit, s.version)->mathResults(s.od, s.pc, s.nc), s.pos ? u"POS" : u"NEG");
    }
}

// --- figures ---------------------------------------------------------------------------------

struct Figure {
    const char *kit;
    double value, pc, nc;
    const char *text;
};

TEST(KitFigure, IsShownInTheKitsForm)
{
    const Figure figures[] = {
        // The inhibition (1 - value / NC) * 100, one decimal, "%"; the PC plays no part.
        {"Nimbrel v2 6120.30-2", 0.8764, 5.0, 1.0, "12.4%"},
        {"PZV 419", 0.8764, -3.0, 1.0, "12.4%"},
        {"Sylvenna 410", 0.75, 0.0, 1.25, "40.0%"},
        {"HTV 402", 1.5, 0.0, 1.0, "-50.0%"},
        {"Tremalis Bosk 404", 0.0, 0.0, 1.0, "100.0%"},
        {"VLPV 424", 0.8764, 5.0, 1.0, "12.4%"},
        {"WQD 6WQ0.20", 0.8764, 5.0, 1.0, "12.4%"},
        // Orvexa: two decimals with the last one cut off, not rounded to one.
        {"Orvexa 412", 0.8764, 5.0, 1.0, "12.3%"},
        {"Orvexa 412", 0.87604, 5.0, 1.0, "12.4%"},
        {"Orvexa 412", 1.1236, 5.0, 1.0, "-12.3%"},
        {"Orvexa 412", 0.95, 5.0, 1.0, "5.0%"},
        // Nimbrel 417: value / NC as a percent, halves away from zero.
        {"Nimbrel 417", 0.3, 9.0, 0.8, "37.5%"},
        {"Nimbrel 417", 0.25, 9.0, 0.8, "31.3%"},
        // S/P: (value - NC) / (PC - NC) as "#0.000".
        {"Dalvenia 405", 0.375, 1.125, 0.125, "0.250"},
        {"Dalvenia 405", 0.05, 1.0, 0.1, "-0.056"},
        {"TSC 6174.20", 2.0, 1.125, 0.125, "1.875"},
        {"TSC 6174.20", 0.1, 1.1, 0.1, "0.000"},
        // No figure.
        {"KSV 414", 0.8, 1.0, 0.1, ""},
        {"JMV 420", 0.8, 1.0, 0.1, ""},
    };
    for (const Figure &f : figures) {
        SCOPED_TRACE(testing::Message() << f.kit << ": " << f.value << ", PC " << f.pc << ", NC " << f.nc);
        EXPECT_EQ(kit(f.kit)->getCalculationRatio(f.value, f.pc, f.nc), QString::fromLatin1(f.text));
    }
}

TEST(KitFigure, TheNumberBehindTheText)
{
    EXPECT_NEAR(kit("Orvexa 412")->getCalculationRatioValue(0.8764, 5.0, 1.0), 12.36, 1e-9);
    EXPECT_NEAR(kit("HTV 402")->getCalculationRatioValue(0.8764, 5.0, 1.0), 12.36, 1e-9);
    EXPECT_DOUBLE_EQ(kit("Nimbrel 417")->getCalculationRatioValue(0.3, 9.0, 0.8), 0.375); // a fraction
    EXPECT_DOUBLE_EQ(kit("TSC 6174.20")->getCalculationRatioValue(0.375, 1.125, 0.125), 0.25);
    // Reports leave out the figure column of a kit without one, tracking knows it has none.
    for (const char *name : {"KSV 414", "JMV 420", "JMV v2 6615.01-1"})
        EXPECT_EQ(kit(name)->getCalculationRatioValue(0.8, 1.0, 0.1), -1.0) << name;
    EXPECT_EQ(kit("JMV 420", "1.2.0")->getCalculationRatioValue(0.8, 1.0, 0.1), -1.0);
}

// A zero mean NC (inhibition) or equal means (S/P) stop the figure and the verdict alike.
TEST(KitFigure, ADivisionByZeroIsAnError)
{
    for (const char *name : {"Nimbrel 417", "Nimbrel v2 6120.30-2", "Orvexa 412", "PZV 419", "Sylvenna 410", "HTV 402",
                             "Tremalis Bosk 404", "VLPV 424", "WQD 6WQ0.20"}) {
        SCOPED_TRACE(name);
        EXPECT_THROW(kit(name)->getCalculationRatio(0.5, 1.0, 0.0), KitDivisionByZero);
        if (QLatin1String(name) != QLatin1String("Nimbrel 417")) { // compares texts, divides nothing
            EXPECT_THROW(kit(name)->mathResults(0.5f, 1.0, 0.0), KitDivisionByZero);
        }
    }
    for (const char *name : {"Dalvenia 405", "TSC 6174.20"}) {
        SCOPED_TRACE(name);
        EXPECT_THROW(kit(name)->getCalculationRatioValue(0.5, 0.3, 0.3), KitDivisionByZero);
        EXPECT_THROW(kit(name)->mathResults(0.5f, 0.3, 0.3), KitDivisionByZero);
    }
}

} // namespace
