// The order of plate validation, on the plate alone: the version stamp,
// blanks, adjusted ODs, OD range, filter with the note of an old plate's rules, the Generic
// plate, kit expiry and the kit's own rule.

#include "TestPlate.h"
#include "QtPrinters.h"

#include "core/LegacyFormat.h"
#include "evaluation/MathLibrary.h"
#include "evaluation/TestKit.h"

#include <gtest/gtest.h>

namespace {

const PromptBox kBlanksBox{QStringLiteral("Abnormal Blanks Excluded"),
                           QStringLiteral("One or more blanks had Optical Density values greater than 0.1, so they "
                                          "have been excluded from calculations."),
                           MsgIcon::None};

const QString kRangeFailed = QStringLiteral("VALIDATION FAILED:  ODs out of expected range.");
const QString kFilterFailed = QStringLiteral("VALIDATION FAILED:  Filter used is not within specified range for test.");
const QString kControlsMissing = QStringLiteral("VALIDATION FAILED:  Required controls missing.");
const QString kGeneric = QStringLiteral("Generic Test:  Validation Not Required.");
const QString kOldPlateNote = QStringLiteral("\r\nValidation and Specification fromversion 1.2.0 is being used because "
                                             "this plate was read in Tavimetra version 1.2.0.");

QDate day(const char *iso)
{
    return QDate::fromString(QString::fromLatin1(iso), Qt::ISODate);
}

} // namespace

// --- Blanks and adjusted ODs ------------------------------------------------------------------

struct BlankCase {
    const char *name;
    std::vector<double> blanks; // in wells F1, G1, H1
    std::vector<qint16> flags;  // before evaluation; 1 when not given
    std::vector<qint16> flagsAfter;
    bool boxShown;
    const char *sampleOD;    // A2 has a raw OD of 0.6
    const char *emptyWellOD; // H12 is empty, raw OD 0
};

TEST(Blanks, AreExcludedAboveOneTenthAndSubtractedFromEveryWell)
{
    const BlankCase cases[] = {
        BlankCase{"NoBlanks", {}, {}, {}, false, "0.600", "0.000"},
        BlankCase{"ExactlyOneTenthStays", {0.1}, {}, {1}, false, "0.500", "-0.100"},
        BlankCase{"JustAboveIsExcluded", {0.101}, {}, {0}, true, "0.600", "0.000"},
        BlankCase{"TwoExcludedOneBox", {0.05, 0.101, 0.2}, {}, {1, 0, 0}, true, "0.550", "-0.050"},
        BlankCase{"KeptByHandStaysIn", {0.3}, {2}, {2}, false, "0.300", "-0.300"},
        BlankCase{"ExcludedByHandIsNotCounted", {0.3, 0.04}, {0, 1}, {0, 1}, false, "0.560", "-0.040"},
        BlankCase{"MeanOfSeveral", {0.02, 0.03, 0.07}, {}, {1, 1, 1}, false, "0.560", "-0.040"}};
    for (const BlankCase &c : cases) {
        SCOPED_TRACE(c.name);
        TestPlate p(kJmv2);
        layOutJmv2Plate(p);
        p.put("A2", QStringLiteral("S1"), 0.6);
        const char *at[] = {"F1", "G1", "H1"};
        for (std::size_t i = 0; i < c.blanks.size(); ++i) {
            p.put(at[i], QStringLiteral("BLANK"), c.blanks[i]);
            if (i < c.flags.size())
                p.setFlag(at[i], c.flags[i]);
        }
        p.read();
        p.evaluate();

        for (std::size_t i = 0; i < c.blanks.size(); ++i)
            EXPECT_EQ(p.flag(at[i]), c.flagsAfter[i]) << at[i];
        if (c.boxShown)
            EXPECT_EQ(p.boxes(), QList<PromptBox>{kBlanksBox});
        else
            EXPECT_EQ(p.boxes(), QList<PromptBox>{});
        EXPECT_EQ(p.od("A2"), QString::fromLatin1(c.sampleOD));
        EXPECT_EQ(p.od("H12"), QString::fromLatin1(c.emptyWellOD));
    }
}

TEST(AdjustedODs, AreRoundedHalfAwayFromZeroAndMayBeNegative)
{
    TestPlate p(kJmv2);
    layOutJmv2Plate(p);
    p.put("F1", QStringLiteral("BLANK"), 0.05);
    p.put("A3", QStringLiteral("low"), 0.02);
    p.put("B3", QStringLiteral("half"), 0.1735); // 0.1235 after the blank
    p.rawOD("H12", 0.9);                         // no sample, but the reader gave an OD
    p.read();
    p.evaluate();
    EXPECT_EQ(p.od("A3"), QStringLiteral("-0.030"));
    EXPECT_EQ(p.od("B3"), QStringLiteral("0.124"));
    EXPECT_EQ(p.od("H12"), QStringLiteral("0.850"));
    EXPECT_EQ(p.od("F1"), QStringLiteral("0.000"));
}

// --- OD range -----------------------------------------------------------------------------------

// Every well counts, both ends allowed; a plate out of range keeps its ODs on show, has no
// results and no control excluded.
TEST(OdRange, EveryWellCountsBothEndsAllowed)
{
    const struct {
        const char *well;
        double rawOD;
        bool passes;
    } cases[] = {{"H12", 3.0, true},     {"H12", -1.0, true},      {"H12", 3.001, false},
                 {"H12", -1.001, false}, {"G7", 9999.9999, false}, {"A2", 3.001, false}};
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.well << " " << c.rawOD);
        TestPlate p(kJmv2);
        layOutJmv2Plate(p);
        p.put({"F1", "G1", "H1", "A4"}, QStringLiteral("PC"), {1.0, 1.0, 1.0, 3.0}); // an outlier
        p.rawOD(c.well, c.rawOD);
        p.read();
        EXPECT_EQ(p.evaluate(), c.passes);
        if (c.passes)
            continue;
        EXPECT_EQ(p.verdict(), kRangeFailed);
        EXPECT_TRUE(p.resultSheetEmpty());
        EXPECT_EQ(p.od(c.well), legacy::format(c.rawOD, u"#0.000"));
        EXPECT_EQ(p.flag("A4"), 1);
        EXPECT_EQ(p.boxes(), QList<PromptBox>{});
    }
}

// --- Filter and the note of an old plate -------------------------------------------------------------

TEST(Filter, MustLieInTheKitsRange)
{
    const struct {
        const char *test;
        const char *filter;
        const char *version;
        QString verdict;
    } cases[] = {{"JMV v2 6615.01-1", "450", "", kJmv2Passed},
                 {"JMV v2 6615.01-1", "449", "", kFilterFailed},
                 {"JMV v2 6615.01-1", "451", "", kFilterFailed},
                 {"JMV 420", "630", "1.3.0", kFilterFailed},
                 {"JMV 420", "630", "1.2.0", kFilterFailed + kOldPlateNote}, // an old plate gets its note
                 {"Generic", "2000", "", kGeneric}};
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.test << " at " << c.filter << " validated by " << c.version);
        TestPlate p(QString::fromLatin1(c.test));
        layOutJmv2Plate(p);
        p.read(QString::fromLatin1(c.filter), day(TestPlate::kReadDay), QString::fromLatin1(c.version));
        p.evaluate();
        EXPECT_EQ(p.verdict(), c.verdict);
    }
}

TEST(Filter, AGenericPlateOutsideItsRangeFailsOnTheNoteAfterShowingTheFailure)
{
    TestPlate p(QStringLiteral("Generic"));
    layOutJmv2Plate(p);
    p.read(QStringLiteral("2001"));
    EXPECT_THROW(p.evaluate(), MissingKitOperation);
    EXPECT_EQ(p.verdict(), kFilterFailed);
}

TEST(Filter, APlateWithoutAFilterCannotBeValidated)
{
    TestPlate p(kJmv2);
    layOutJmv2Plate(p);
    p.read();
    p.in.filter = QString();
    EXPECT_THROW(p.evaluate(), ConversionError);
}

// --- Required controls ------------------------------------------------------------------------------

// A plate short of a control fails with no results; an old plate's text carries its note,
// and a control excluded by hand does not count.
TEST(RequiredControls, AMissingControlFailsThePlate)
{
    TestPlate old(QStringLiteral("JMV 420"));
    old.put("A1", QStringLiteral("PC"), 0.5);
    old.put("A2", QStringLiteral("S1"), 0.7);
    old.read(QStringLiteral("450"), day(TestPlate::kReadDay), QStringLiteral("1.2.0"));
    EXPECT_FALSE(old.evaluate());
    EXPECT_EQ(old.verdict(), kControlsMissing + kOldPlateNote);
    EXPECT_TRUE(old.resultSheetEmpty());

    TestPlate current(kJmv2);
    current.put("A1", QStringLiteral("NC"), 0.1);
    current.put("B1", QStringLiteral("PC"), 1.0);
    current.setFlag("B1", 0);
    current.read();
    EXPECT_FALSE(current.evaluate());
    EXPECT_EQ(current.verdict(), kControlsMissing);
}

// --- Generic -------------------------------------------------------------------------------------------

// Neither verdict nor results, whatever the expiry; the ODs and their range still count.
TEST(GenericPlate, ShowsODsButNeitherVerdictNorResults)
{
    TestPlate p(QStringLiteral("Generic"));
    layOutJmv2Plate(p);
    p.read(QStringLiteral("630"), day("2026-12-01"), QString(), day("2020-01-01"));
    EXPECT_FALSE(p.evaluate());
    EXPECT_EQ(p.verdict(), kGeneric);
    EXPECT_TRUE(p.resultSheetEmpty());
    EXPECT_EQ(p.od("A2"), QStringLiteral("1.200"));
    p.rawOD("A1", 3.5);
    EXPECT_FALSE(p.evaluate());
    EXPECT_EQ(p.verdict(), kRangeFailed);
}

// --- Kit expiry ----------------------------------------------------------------------------------------

struct ExpiryCase {
    const char *name;
    std::optional<QDate> dateRead; // Null: the read counts as today (the clock's 2026-11-23)
    std::optional<QDate> expDate;
    QString verdict;
};

const QString kExpired22 = QStringLiteral("TEST VALIDATION FAILED: Expiration date for the test kit has been exceeded."
                                          "\r\nExpiration date for Test Kit is: 11/22/2026");

TEST(Expiry, TheKitMayBeUsedUpToItsDayOfExpiry)
{
    const ExpiryCase cases[] = {
        ExpiryCase{"OnTheDayItself", day("2026-11-23"), day("2026-11-23"), kJmv2Passed},
        ExpiryCase{"TheDayAfter", day("2026-11-23"), day("2026-11-22"), kExpired22},
        ExpiryCase{"NoExpiryDate", day("2026-11-23"), std::nullopt, kJmv2Passed},
        ExpiryCase{"LongExpired", day("2026-11-23"), day("2025-01-05"),
                   QStringLiteral("TEST VALIDATION FAILED: Expiration date for the test kit has been "
                                  "exceeded.\r\nExpiration date for Test Kit is: 1/5/2025")},
        ExpiryCase{"ReadBeforeExpiry", day("2026-11-01"), day("2026-11-22"), kJmv2Passed},
        ExpiryCase{"UnreadDateIsTodayDayAfter", std::nullopt, day("2026-11-22"), kExpired22}};
    for (const ExpiryCase &c : cases) {
        SCOPED_TRACE(c.name);
        TestPlate p(kJmv2);
        layOutJmv2Plate(p);
        p.read(QStringLiteral("450"), c.dateRead, QString(), c.expDate);
        EXPECT_EQ(p.evaluate(), c.verdict == kJmv2Passed);
        EXPECT_EQ(p.verdict(), c.verdict);
        if (c.verdict != kJmv2Passed) {
            EXPECT_TRUE(p.resultSheetEmpty());
        }
    }
}

TEST(Expiry, ComesAfterTheControlsAndBeforeTheKitsRule)
{
    TestPlate missing(kJmv2);
    missing.put("A1", QStringLiteral("PC"), 1.0);
    missing.read(QStringLiteral("450"), day("2026-11-23"), QString(), day("2026-11-22"));
    missing.evaluate();
    EXPECT_EQ(missing.verdict(), kControlsMissing);

    TestPlate failing(kJmv2);
    failing.put("A1", QStringLiteral("PC"), 0.1);
    failing.put("B1", QStringLiteral("NC"), 0.5); // fails the kit's rule
    failing.read(QStringLiteral("450"), day("2026-11-23"), QString(), day("2026-11-22"));
    failing.evaluate();
    EXPECT_EQ(failing.verdict(), kExpired22);
}

// --- The kit's rule ----------------------------------------------------------------------------------

TEST(KitRule, JudgesTheControlMeansOfTheAdjustedODs)
{
    TestPlate p(kJmv2);
    p.put({"A1", "B1"}, QStringLiteral("PC"), {1.05, 1.0504});
    p.put({"C1", "D1"}, QStringLiteral("NC"), {0.15, 0.1504});
    p.put("E1", QStringLiteral("BLANK"), 0.05);
    p.read();
    EXPECT_TRUE(p.evaluate());
    EXPECT_EQ(p.verdict(), kJmv2Passed); // 1.000 and 0.100 once the blank is taken off
}

// A plate first validated by 1.2.0 keeps the rule of that time with its note on the Info
// view, no results when it fails, and its stamp; the same ODs pass under the current rule
// and a first validation is stamped with this version.
TEST(KitRule, APinnedPlateKeepsTheRuleOfItsVersion)
{
    for (const char *version : {"1.2.0", ""}) {
        SCOPED_TRACE(version);
        TestPlate p(QStringLiteral("JMV 420"));
        p.put("A1", QStringLiteral("PC"), 0.2);
        p.put("B1", QStringLiteral("NC"), 0.1);
        p.put("A2", QStringLiteral("S1"), 0.5);
        p.read(QStringLiteral("450"), day(TestPlate::kReadDay), QString::fromLatin1(version));
        const bool pinned = *version != 0;
        EXPECT_EQ(p.evaluate(), !pinned);
        EXPECT_EQ(p.infoBox().isEmpty(), !pinned);
        EXPECT_EQ(p.result("A2"), pinned ? QString() : QStringLiteral("POS"));
        EXPECT_EQ(p.out.version, pinned ? QStringLiteral("1.2.0") : QStringLiteral("1.5.4"));
    }
}
