// Plate validation of the inhibition kits: every rule at its edges, with the full text
// that the validation boxes show.

#include "evaluation/kits/KitMath.h"
#include "evaluation/kits/cls402HTV.h"
#include "evaluation/kits/cls403TremalisArda.h"
#include "evaluation/kits/cls404TremalisBosk.h"
#include "evaluation/kits/cls410Sylvenna.h"
#include "evaluation/kits/cls412Orvexa.h"
#include "evaluation/kits/cls413Orvexa.h"
#include "evaluation/kits/cls417Nimbrel.h"
#include "evaluation/kits/cls419PZV.h"
#include "evaluation/kits/cls424VLPV.h"
#include "evaluation/kits/cls6120302Nimbrel.h"
#include "evaluation/kits/cls6WQ020WQD.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace {

using KitMaker = std::function<std::unique_ptr<TestKit>()>;

template<typename Kit>
KitMaker maker()
{
    return [] { return std::make_unique<Kit>(); };
}

QString lines(std::initializer_list<const char *> parts)
{
    QStringList list;
    for (const char *part : parts)
        list << QString::fromUtf8(part);
    return list.join(QStringLiteral("\r\n"));
}

struct ValidationRow {
    std::string name;
    KitMaker make;
    double meanPC;
    double meanNC;
    double cvPC;
    double cvNC;
    bool passes;
    QString text;
};

void PrintTo(const ValidationRow &row, std::ostream *os)
{
    *os << row.name << " PC " << row.meanPC << " NC " << row.meanNC << " cvNC " << row.cvNC;
}

class InhibitionValidation : public ::testing::TestWithParam<ValidationRow> {};

TEST_P(InhibitionValidation, JudgesThePlateAndWritesTheText)
{
    const ValidationRow &row = GetParam();
    KitValidationText out;
    out.boxes = QStringLiteral("left from an earlier plate");
    const bool passed = row.make()->validateTest(row.meanPC, row.meanNC, row.cvPC, row.cvNC,
                                                 QStringLiteral("1.5.4"), out);
    EXPECT_EQ(passed, row.passes);
    EXPECT_EQ(out.boxes, row.text);
    // Only the kit kept for old plates writes the Info view's box.
    EXPECT_FALSE(out.infoWritten);
    EXPECT_TRUE(out.info.isEmpty());
}

// Control %CVs that no kit of this family but WQD looks at.
constexpr double kAnyCV = 80.0;

const char *const kFailedHead = "TEST VALIDATION FAILED: ";
const char *const kPassedHead = "TEST VALIDATION PASSED";

// --- Nimbrel 417: long control labels, text comparison in rule 2 --------------------------

const char *const kNimbrelNC = "The mean of the Negative Controls must be > 0.300 and < 2.000";
const char *const kNimbrelPC =
    "The mean of the Positive Controls must be <= 50% of the mean of Negative Controls";

INSTANTIATE_TEST_SUITE_P(
    Nimbrel417, InhibitionValidation,
    ::testing::Values(
        // The message says > 0.300 and < 2.000, but both ends pass.
        ValidationRow{"NCExactly0_3Passes", maker<cls417Nimbrel>(), 0.15, 0.3, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Negative Control (AVG): 0.300", "Positive Control (AVG): 0.150"})},
        ValidationRow{"NCExactly2_0Passes", maker<cls417Nimbrel>(), 0.5, 2.0, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Negative Control (AVG): 2.000", "Positive Control (AVG): 0.500"})},
        ValidationRow{"NCJustBelow0_3Fails", maker<cls417Nimbrel>(), 0.1, 0.2999, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kNimbrelNC, "Negative Control (AVG): 0.300",
                             "Positive Control (AVG): 0.100"})},
        ValidationRow{"NCJustAbove2_0Fails", maker<cls417Nimbrel>(), 0.1, 2.0001, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kNimbrelNC, "Negative Control (AVG): 2.000",
                             "Positive Control (AVG): 0.100"})},
        ValidationRow{"PCMoreThanHalfFails", maker<cls417Nimbrel>(), 0.401, 0.8, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kNimbrelPC, "Negative Control (AVG): 0.800",
                             "Positive Control (AVG): 0.401"})},
        ValidationRow{"PCExactlyHalfPasses", maker<cls417Nimbrel>(), 0.4, 0.8, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Negative Control (AVG): 0.800", "Positive Control (AVG): 0.400"})},
        // 0.4004 is more than half of 0.8, but both show as 0.400.
        ValidationRow{"PCEqualAfterRoundingPasses", maker<cls417Nimbrel>(), 0.4004, 0.8, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Negative Control (AVG): 0.800", "Positive Control (AVG): 0.400"})},
        // "1,000.000" is not greater than "1.000" as text: the comma sorts before the point.
        ValidationRow{"PCThousandsPassesAsText", maker<cls417Nimbrel>(), 1000.0, 2.0, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Negative Control (AVG): 2.000",
                             "Positive Control (AVG): 1,000.000"})},
        ValidationRow{"PCNegativePasses", maker<cls417Nimbrel>(), -0.05, 0.8, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Negative Control (AVG): 0.800",
                             "Positive Control (AVG): -0.050"})}),
    [](const auto &info) { return info.param.name; });

// --- Nimbrel v2 6120.30-2: strict NC range, whole-number inhibition >= 60 -----------------

const char *const kNimbrel2NC = "The mean of the Negative Controls must be > 0.300 and < 2.000";
const char *const kNimbrel2PC = "The inhibition of the mean of the Positive Controls must be >= 60%";

INSTANTIATE_TEST_SUITE_P(
    Nimbrel6120302, InhibitionValidation,
    ::testing::Values(
        ValidationRow{"NCExactly0_3Fails", maker<cls6120302Nimbrel>(), 0.1, 0.3, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kNimbrel2NC, "Neg Control (AVG): 0.300", "Pos Control (AVG): 0.100"})},
        ValidationRow{"NCJustAbove0_3Passes", maker<cls6120302Nimbrel>(), 0.1, 0.3001, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.300", "Pos Control (AVG): 0.100"})},
        ValidationRow{"NCExactly2_0Fails", maker<cls6120302Nimbrel>(), 0.1, 2.0, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kNimbrel2NC, "Neg Control (AVG): 2.000", "Pos Control (AVG): 0.100"})},
        ValidationRow{"NCJustBelow2_0Passes", maker<cls6120302Nimbrel>(), 0.1, 1.9999, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 2.000", "Pos Control (AVG): 0.100"})},
        // 100 - PC * 100 / NC is 59.5 here and rounds to 60 (half to even).
        ValidationRow{"Inhibition59_5RoundsTo60Passes", maker<cls6120302Nimbrel>(), 81.0 / 256, 0.78125,
                      kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.781", "Pos Control (AVG): 0.316"})},
        // 58.5 rounds to 58; the line shows the unrounded figure.
        ValidationRow{"Inhibition58_5RoundsTo58Fails", maker<cls6120302Nimbrel>(), 83.0 / 256, 0.78125,
                      kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kNimbrel2PC, "Inhibition = 58.50%", "Neg Control (AVG): 0.781",
                             "Pos Control (AVG): 0.324"})},
        // "00.00" keeps two integer digits.
        ValidationRow{"LowInhibitionShowsTwoIntegerDigits", maker<cls6120302Nimbrel>(), 0.95, 1.0,
                      kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kNimbrel2PC, "Inhibition = 05.00%", "Neg Control (AVG): 1.000",
                             "Pos Control (AVG): 0.950"})}),
    [](const auto &info) { return info.param.name; });

// --- Orvexa (412 and 413 share the rule) ---------------------------------------------------------------------

const char *const kOrvexaNC = "The mean of the Negative Controls must be >= 0.40 and <= 2.10";
const char *const kOrvexaPC = "The inhibition of the mean of the Positive Controls must be >= 30%";

std::vector<ValidationRow> orvexaRows(const std::string &kit, KitMaker make)
{
    return {
        {kit + "_NCExactly0_4Passes", make, 0.1, 0.4, kAnyCV, kAnyCV, true,
         lines({kPassedHead, "Neg Control (AVG): 0.400", "Pos Control (AVG): 0.100"})},
        {kit + "_NCJustBelow0_4Fails", make, 0.1, 0.3999, kAnyCV, kAnyCV, false,
         lines({kFailedHead, kOrvexaNC, "Neg Control (AVG): 0.400", "Pos Control (AVG): 0.100"})},
        {kit + "_NCExactly2_1Passes", make, 0.1, 2.1, kAnyCV, kAnyCV, true,
         lines({kPassedHead, "Neg Control (AVG): 2.100", "Pos Control (AVG): 0.100"})},
        {kit + "_NCJustAbove2_1Fails", make, 0.1, 2.1001, kAnyCV, kAnyCV, false,
         lines({kFailedHead, kOrvexaNC, "Neg Control (AVG): 2.100", "Pos Control (AVG): 0.100"})},
        // 100 - 0.875 / 1.25 * 100 is exactly 30.
        {kit + "_InhibitionExactly30Passes", make, 0.875, 1.25, kAnyCV, kAnyCV, true,
         lines({kPassedHead, "Neg Control (AVG): 1.250", "Pos Control (AVG): 0.875"})},
        // A hair below 30, shown rounded as 30.00.
        {kit + "_InhibitionJustBelow30Fails", make, 0.875000000001, 1.25, kAnyCV, kAnyCV, false,
         lines({kFailedHead, kOrvexaPC, "Inhibition = 30.00%", "Neg Control (AVG): 1.250",
                "Pos Control (AVG): 0.875"})},
        {kit + "_NegativeInhibitionFails", make, 1.5, 1.0, kAnyCV, kAnyCV, false,
         lines({kFailedHead, kOrvexaPC, "Inhibition = -50.00%", "Neg Control (AVG): 1.000",
                "Pos Control (AVG): 1.500"})},
    };
}

INSTANTIATE_TEST_SUITE_P(Orvexa412, InhibitionValidation,
                         ::testing::ValuesIn(orvexaRows("Orvexa412", maker<cls412Orvexa>())),
                         [](const auto &info) { return info.param.name; });

// --- PZV 419: no upper NC limit, ">=35%" without a blank ------------------------------------

const char *const kPzvNC = "The mean of the Negative Controls must be >= 0.300";
const char *const kPzvPC = "The inhibition of the mean of the Positive Controls must be >=35%";

INSTANTIATE_TEST_SUITE_P(
    PZV419, InhibitionValidation,
    ::testing::Values(
        ValidationRow{"NCExactly0_3Passes", maker<cls419PZV>(), 0.1, 0.3, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.300", "Pos Control (AVG): 0.100"})},
        ValidationRow{"NCJustBelow0_3Fails", maker<cls419PZV>(), 0.1, 0.2999, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kPzvNC, "Neg Control (AVG): 0.300", "Pos Control (AVG): 0.100"})},
        ValidationRow{"HighNCPasses", maker<cls419PZV>(), 1.0, 1234.5, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 1,234.500", "Pos Control (AVG): 1.000"})},
        ValidationRow{"InhibitionExactly35Passes", maker<cls419PZV>(), 0.8125, 1.25, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 1.250", "Pos Control (AVG): 0.813"})},
        ValidationRow{"InhibitionBelow35Fails", maker<cls419PZV>(), 0.8126, 1.25, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kPzvPC, "Inhibition = 34.99%", "Neg Control (AVG): 1.250",
                             "Pos Control (AVG): 0.813"})}),
    [](const auto &info) { return info.param.name; });

// --- Sylvenna 410: "Inihibition" -------------------------------------------------------------

const char *const kSylvennaNC = "The mean of the Negative Controls must be >= 0.3 and <= 2.5";
const char *const kSylvennaPC = "The inhibition of the mean of the Positive Controls must be >= 30%";

INSTANTIATE_TEST_SUITE_P(
    Sylvenna410, InhibitionValidation,
    ::testing::Values(
        ValidationRow{"NCExactly0_3Passes", maker<cls410Sylvenna>(), 0.1, 0.3, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.300", "Pos Control (AVG): 0.100"})},
        ValidationRow{"NCJustBelow0_3Fails", maker<cls410Sylvenna>(), 0.1, 0.2999, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kSylvennaNC, "Neg Control (AVG): 0.300", "Pos Control (AVG): 0.100"})},
        ValidationRow{"NCExactly2_5Passes", maker<cls410Sylvenna>(), 0.1, 2.5, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 2.500", "Pos Control (AVG): 0.100"})},
        ValidationRow{"NCJustAbove2_5Fails", maker<cls410Sylvenna>(), 0.1, 2.5001, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kSylvennaNC, "Neg Control (AVG): 2.500", "Pos Control (AVG): 0.100"})},
        ValidationRow{"InhibitionExactly30Passes", maker<cls410Sylvenna>(), 0.875, 1.25, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 1.250", "Pos Control (AVG): 0.875"})},
        ValidationRow{"InhibitionBelow30Fails", maker<cls410Sylvenna>(), 0.9, 1.25, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kSylvennaPC, "Inihibition = 28.00%", "Neg Control (AVG): 1.250",
                             "Pos Control (AVG): 0.900"})}),
    [](const auto &info) { return info.param.name; });

// --- HTV 402 and the Tremalis kits: other heads, inhibition line after the controls -------

const char *const kBareFailedHead = "TEST VALIDATION FAILED";
const char *const kColonPassedHead = "TEST VALIDATION PASSED: ";

INSTANTIATE_TEST_SUITE_P(
    HTV402, InhibitionValidation,
    ::testing::Values(
        ValidationRow{"NCExactly0_2Fails", maker<cls402HTV>(), 0.05, 0.2, kAnyCV, kAnyCV, false,
                      lines({kBareFailedHead,
                             "The mean of the Negative Controls must produce an optical density > 0.200 and < 2.000.",
                             "Neg Control (AVG): 0.200", "Pos Control (AVG): 0.050"})},
        ValidationRow{"NCJustAbove0_2Passes", maker<cls402HTV>(), 0.05, 0.2001, kAnyCV, kAnyCV, true,
                      lines({kColonPassedHead, "Neg Control (AVG): 0.200", "Pos Control (AVG): 0.050"})},
        ValidationRow{"NCExactly2_0Fails", maker<cls402HTV>(), 0.05, 2.0, kAnyCV, kAnyCV, false,
                      lines({kBareFailedHead,
                             "The mean of the Negative Controls must produce an optical density > 0.200 and < 2.000.",
                             "Neg Control (AVG): 2.000", "Pos Control (AVG): 0.050"})},
        // (1 - 0.8125 / 1.25) * 100 is exactly 35.
        ValidationRow{"InhibitionExactly35Passes", maker<cls402HTV>(), 0.8125, 1.25, kAnyCV, kAnyCV, true,
                      lines({kColonPassedHead, "Neg Control (AVG): 1.250", "Pos Control (AVG): 0.813"})},
        ValidationRow{"InhibitionBelow35Fails", maker<cls402HTV>(), 0.9, 1.25, kAnyCV, kAnyCV, false,
                      lines({kBareFailedHead,
                             "The mean of the Positive Controls must product an inhibition of >= 35%.",
                             "Neg Control (AVG): 1.250", "Pos Control (AVG): 0.900",
                             "Positive Inhibition: 28.000"})}),
    [](const auto &info) { return info.param.name; });

std::vector<ValidationRow> tremalisRows(const std::string &kit, KitMaker make)
{
    const char *nc = "The mean of the Negative Controls must produce an optical density > 0.300 and < 2.000.";
    return {
        {kit + "_NCExactly0_3Fails", make, 0.05, 0.3, kAnyCV, kAnyCV, false,
         lines({kBareFailedHead, nc, "Neg Control (AVG): 0.300", "Pos Control (AVG): 0.050"})},
        {kit + "_NCJustAbove0_3Passes", make, 0.05, 0.3001, kAnyCV, kAnyCV, true,
         lines({kColonPassedHead, "Neg Control (AVG): 0.300", "Pos Control (AVG): 0.050"})},
        {kit + "_NCExactly2_0Fails", make, 0.05, 2.0, kAnyCV, kAnyCV, false,
         lines({kBareFailedHead, nc, "Neg Control (AVG): 2.000", "Pos Control (AVG): 0.050"})},
        {kit + "_NCJustBelow2_0Passes", make, 0.05, 1.9999, kAnyCV, kAnyCV, true,
         lines({kColonPassedHead, "Neg Control (AVG): 2.000", "Pos Control (AVG): 0.050"})},
        {kit + "_InhibitionExactly40Passes", make, 0.75, 1.25, kAnyCV, kAnyCV, true,
         lines({kColonPassedHead, "Neg Control (AVG): 1.250", "Pos Control (AVG): 0.750"})},
        // 35 would do for HTV, not here.
        {kit + "_Inhibition35Fails", make, 0.8125, 1.25, kAnyCV, kAnyCV, false,
         lines({kBareFailedHead, "The mean of the Positive Controls must product an inhibition of >= 40%.",
                "Neg Control (AVG): 1.250", "Pos Control (AVG): 0.813", "Positive Inhibition: 35.000"})},
    };
}

INSTANTIATE_TEST_SUITE_P(TremalisBosk404, InhibitionValidation,
                         ::testing::ValuesIn(tremalisRows("TremalisBosk404", maker<cls404TremalisBosk>())),
                         [](const auto &info) { return info.param.name; });

// --- VLPV 424: one rule, and the mean positive inhibition on every text ------------------

const char *const kVlpvRule =
    "The mean of the Positive Controls must be >= than 2 times the mean of the Negative Controls.";

INSTANTIATE_TEST_SUITE_P(
    VLPV424, InhibitionValidation,
    ::testing::Values(
        ValidationRow{"NCExactly0_4Passes", maker<cls424VLPV>(), 0.1, 0.4, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.400", "Pos Control (AVG): 0.100",
                             "Mean Pos %I 75.000%"})},
        ValidationRow{"NCJustBelow0_4Fails", maker<cls424VLPV>(), 0.1, 0.3999, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kVlpvRule, "Neg Control (AVG): 0.400", "Pos Control (AVG): 0.100",
                             "Mean Pos %I 75.000%"})},
        ValidationRow{"NCExactly2_1Passes", maker<cls424VLPV>(), 0.1, 2.1, kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 2.100", "Pos Control (AVG): 0.100",
                             "Mean Pos %I 95.000%"})},
        ValidationRow{"NCJustAbove2_1Fails", maker<cls424VLPV>(), 0.1, 2.1001, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kVlpvRule, "Neg Control (AVG): 2.100", "Pos Control (AVG): 0.100",
                             "Mean Pos %I 95.000%"})},
        // 24.5 rounds to 24: the line shows the whole number the rule judged.
        ValidationRow{"Inhibition24_5Fails", maker<cls424VLPV>(), 151.0 / 256, 0.78125, kAnyCV, kAnyCV, false,
                      lines({kFailedHead, kVlpvRule, "Neg Control (AVG): 0.781", "Pos Control (AVG): 0.590",
                             "Mean Pos %I 24.000%"})},
        ValidationRow{"Inhibition25_5RoundsTo26Passes", maker<cls424VLPV>(), 149.0 / 256, 0.78125,
                      kAnyCV, kAnyCV, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.781", "Pos Control (AVG): 0.582",
                             "Mean Pos %I 26.000%"})}),
    [](const auto &info) { return info.param.name; });

// --- WQD 6WQ0.20: inhibition window and the NC %CV ----------------------------------------

const char *const kWqdNC = "The mean of the Negative Controls must be >= 0.400 and < 1.600";
const char *const kWqdPC = "The inhibition of the mean of the Positive Controls must be >= 50% and <= 70%";
const char *const kWqdCV = "The %CV for negative controls must be <= 15%";

INSTANTIATE_TEST_SUITE_P(
    WQD6WQ020, InhibitionValidation,
    ::testing::Values(
        ValidationRow{"NCExactly0_4Passes", maker<cls6WQ020WQD>(), 0.16, 0.4, kAnyCV, 10.0, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.400", "Pos Control (AVG): 0.160"})},
        ValidationRow{"NCJustBelow0_4Fails", maker<cls6WQ020WQD>(), 0.16, 0.3999, kAnyCV, 10.0, false,
                      lines({kFailedHead, kWqdNC, "Neg Control (AVG): 0.400", "Pos Control (AVG): 0.160"})},
        // The message says < 1.600, but 1.6 passes.
        ValidationRow{"NCExactly1_6Passes", maker<cls6WQ020WQD>(), 0.64, 1.6, kAnyCV, 10.0, true,
                      lines({kPassedHead, "Neg Control (AVG): 1.600", "Pos Control (AVG): 0.640"})},
        ValidationRow{"NCJustAbove1_6Fails", maker<cls6WQ020WQD>(), 0.64, 1.6001, kAnyCV, 10.0, false,
                      lines({kFailedHead, kWqdNC, "Neg Control (AVG): 1.600", "Pos Control (AVG): 0.640"})},
        // The NC rule comes first, whatever the %CV.
        ValidationRow{"NCRuleBeforeCVRule", maker<cls6WQ020WQD>(), 0.64, 1.7, kAnyCV, 40.0, false,
                      lines({kFailedHead, kWqdNC, "Neg Control (AVG): 1.700", "Pos Control (AVG): 0.640"})},
        ValidationRow{"Inhibition49_5RoundsTo50Passes", maker<cls6WQ020WQD>(), 101.0 / 256, 0.78125,
                      kAnyCV, 10.0, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.781", "Pos Control (AVG): 0.395"})},
        ValidationRow{"Inhibition48_5RoundsTo48Fails", maker<cls6WQ020WQD>(), 103.0 / 256, 0.78125,
                      kAnyCV, 10.0, false,
                      lines({kFailedHead, kWqdPC, "Inhibition = 48.50%", "Neg Control (AVG): 0.781",
                             "Pos Control (AVG): 0.402"})},
        ValidationRow{"Inhibition70_5RoundsTo70Passes", maker<cls6WQ020WQD>(), 59.0 / 256, 0.78125,
                      kAnyCV, 10.0, true,
                      lines({kPassedHead, "Neg Control (AVG): 0.781", "Pos Control (AVG): 0.230"})},
        ValidationRow{"Inhibition71_5RoundsTo72Fails", maker<cls6WQ020WQD>(), 57.0 / 256, 0.78125,
                      kAnyCV, 10.0, false,
                      lines({kFailedHead, kWqdPC, "Inhibition = 71.50%", "Neg Control (AVG): 0.781",
                             "Pos Control (AVG): 0.223"})},
        // The PC %CV is not judged.
        ValidationRow{"CVExactly15Passes", maker<cls6WQ020WQD>(), 0.5, 1.25, 99.0, 15.0, true,
                      lines({kPassedHead, "Neg Control (AVG): 1.250", "Pos Control (AVG): 0.500"})},
        ValidationRow{"CVAbove15Fails", maker<cls6WQ020WQD>(), 0.5, 1.25, 0.0, 15.01, false,
                      lines({kFailedHead, kWqdCV, "Neg Control %CV:  15.010%", "Inhibition = 60.00%",
                             "Neg Control (AVG): 1.250", "Pos Control (AVG): 0.500"})}),
    [](const auto &info) { return info.param.name; });

// --- a zero mean NC ---------------------------------------------------------------------------

// The kits that judge on a whole number take it before any rule, so a zero mean NC is a
// division error there even though the NC rule would fail.
TEST(InhibitionValidationZeroNC, WholeNumberKitsStopAtTheDivision)
{
    KitValidationText out;
    const QString version = QStringLiteral("1.5.4");
    EXPECT_THROW(cls6120302Nimbrel().validateTest(0.1, 0.0, 1, 1, version, out), KitDivisionByZero);
    EXPECT_THROW(cls424VLPV().validateTest(0.1, 0.0, 1, 1, version, out), KitDivisionByZero);
    EXPECT_THROW(cls6WQ020WQD().validateTest(0.1, 0.0, 1, 1, version, out), KitDivisionByZero);
}

// The others judge the NC range first, which a zero mean fails.
TEST(InhibitionValidationZeroNC, OtherKitsFailTheNCRule)
{
    const QString version = QStringLiteral("1.5.4");
    const std::vector<KitMaker> kits{maker<cls417Nimbrel>(), maker<cls412Orvexa>(), maker<cls413Orvexa>(),
                                     maker<cls419PZV>(), maker<cls410Sylvenna>(), maker<cls402HTV>(),
                                     maker<cls404TremalisBosk>(), maker<cls403TremalisArda>()};
    for (const auto &make : kits) {
        KitValidationText out;
        EXPECT_FALSE(make()->validateTest(0.1, 0.0, 1, 1, version, out));
        EXPECT_TRUE(out.boxes.contains(QStringLiteral("Negative Controls must")));
    }
}

} // namespace
