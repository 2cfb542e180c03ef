// The control statistics of tracking over plates and on one plate, and how a saved
// plate's well lists are read for them.
#include "FakePrompt.h"
#include "QtPrinters.h"

#include "core/WellList.h"
#include "core/Wells.h"
#include "evaluation/clsTests.h"
#include "tracking/TrackingStatistics.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

const QString kOrvexa = QStringLiteral("Orvexa 412");

// A plate from (well, sample, OD, flag) entries; other wells empty with flag 1.
struct Well {
    const char *well;
    const char *sample;
    const char *od;
    int flag = 1;
};

TrackedPlate plateOf(std::initializer_list<Well> entries, const QString &name = QStringLiteral("P1"))
{
    QStringList samples, ods, flags;
    for (int k = 0; k < wells::kCount; ++k) {
        samples << QString();
        ods << QString();
        flags << QStringLiteral("1");
    }
    for (const Well &w : entries) {
        for (int k = 0; k < wells::kCount; ++k) {
            if (wells::name(k) == QLatin1String(w.well)) {
                samples[k] = QString::fromLatin1(w.sample);
                ods[k] = QString::fromLatin1(w.od);
                flags[k] = QString::number(w.flag);
            }
        }
    }
    TrackedPlate plate;
    plate.plateName = name;
    plate.runName = QStringLiteral("Run 1");
    plate.testName = kOrvexa;
    plate.version = QStringLiteral("1.5.4");
    plate.setWells(joinWellList(samples), joinWellList(ods), joinWellList(flags));
    return plate;
}

} // namespace

TEST(TrackingStatistics, TheSuperMeanIsAMeanOfWellsNotOfPlateMeans)
{
    const QList<TrackedPlate> plates = {plateOf({{"A1", "PC", "0.200"}}),
                                        plateOf({{"A1", "PC", "0.400"}, {"B1", "PC", "0.400"}, {"C1", "PC", "0.400"}})};
    EXPECT_DOUBLE_EQ(TrackingStatistics::trackControlMean(plates, QStringLiteral("PC")), 0.35);
    EXPECT_DOUBLE_EQ(TrackingStatistics::plateControlMean(QStringLiteral("PC"), plates[0]), 0.2);
}

TEST(TrackingStatistics, AWellCountsByItsExactNameAndAFlagOtherThanZero)
{
    const TrackedPlate plate = plateOf({{"A1", "NC", "1.000"},
                                        {"B1", "NC", "0.500", 2},  // kept by hand: counts
                                        {"C1", "NC", "9.000", 0},  // excluded
                                        {"D1", "nc", "7.000"},     // another case: not a control here
                                        {"E1", " NC", "7.000"},    // nor with a blank
                                        {"F1", "Cow", "8.000"}});
    EXPECT_DOUBLE_EQ(TrackingStatistics::plateControlMean(QStringLiteral("NC"), plate), 0.75);
    EXPECT_EQ(plate.countedODs(u"NC"), (std::vector<double>{1.0, 0.5}));
}

TEST(TrackingStatistics, NoCountedWellGivesMinusOne)
{
    const QList<TrackedPlate> plates = {plateOf({{"A1", "NC", "1.000", 0}, {"B1", "Cow", "0.300"}})};
    EXPECT_EQ(TrackingStatistics::plateControlMean(QStringLiteral("NC"), plates[0]), -1.0);
    EXPECT_EQ(TrackingStatistics::plateControlMean(QStringLiteral("PC"), plates[0]), -1.0);
    EXPECT_EQ(TrackingStatistics::trackControlMean(plates, QStringLiteral("NC")), -1.0);
    EXPECT_EQ(TrackingStatistics::trackControlMean({}, QStringLiteral("NC")), -1.0);
    // The empty name is no control: the empty wells don't count.
    EXPECT_EQ(TrackingStatistics::plateControlMean(QString(), plates[0]), -1.0);
}

TEST(TrackingStatistics, TheDeviationIsTheSampleFormAroundTheSuperMeanOfTheControl)
{
    const QList<TrackedPlate> plates = {plateOf({{"A1", "NC", "1.000"}, {"B1", "NC", "1.200"}, {"C1", "PC", "5.000"}}),
                                        plateOf({{"A1", "NC", "0.800"}})};
    // Around 1.0: squares 0, 0.04, 0.04 over 3 - 1.
    EXPECT_NEAR(TrackingStatistics::trackControlStdDev(plates, QStringLiteral("NC"), 5.0, 1.0), 0.2, 1e-12);
    // The mean given for the control is used as it is, not worked out again.
    EXPECT_NEAR(TrackingStatistics::trackControlStdDev(plates, QStringLiteral("NC"), 5.0, 0.0),
                std::sqrt((1.0 + 1.44 + 0.64) / 2), 1e-12);
    // PC takes meanPC: one well, no deviation.
    EXPECT_EQ(TrackingStatistics::trackControlStdDev(plates, QStringLiteral("PC"), 5.0, 1.0), 0.0);
}

TEST(TrackingStatistics, OneWellOrEqualWellsHaveNoDeviation)
{
    const QList<TrackedPlate> one = {plateOf({{"A1", "NC", "0.700"}})};
    EXPECT_EQ(TrackingStatistics::trackControlStdDev(one, QStringLiteral("NC"), 0, 0.7), 0.0);
    // One well each on two plates: a real deviation.
    const QList<TrackedPlate> two = {plateOf({{"A1", "NC", "0.700"}}), plateOf({{"A1", "NC", "0.900"}})};
    EXPECT_NEAR(TrackingStatistics::trackControlStdDev(two, QStringLiteral("NC"), 0, 0.8), std::sqrt(0.02), 1e-12);
    const QList<TrackedPlate> equal = {plateOf({{"A1", "NC", "0.700"}, {"B1", "NC", "0.700"}})};
    EXPECT_EQ(TrackingStatistics::trackControlStdDev(equal, QStringLiteral("NC"), 0, 0.7), 0.0);
}

TEST(TrackingStatistics, RatiosComeFromTheKitWithTheMeansGiven)
{
    FakePrompt prompt;
    clsTests tests(prompt);
    TrackingStatistics stats(tests);
    const QList<TrackedPlate> plates = {plateOf({{"A1", "PC", "0.200"}, {"B1", "PC", "0.400"}, {"C1", "NC", "1.000"}}),
                                        plateOf({{"A1", "PC", "0.300"}, {"B1", "NC", "0.800"}})};
    // %I = (1 - OD / meanNC) x 100 with the super NC 1.0: 80, 60, 70.
    const double mean = stats.trackRatioMean(plates, QStringLiteral("PC"), 0.3, 1.0, kOrvexa, QStringLiteral("1.5.4"));
    EXPECT_NEAR(mean, 70.0, 1e-9);
    EXPECT_NEAR(stats.trackRatioStdDev(plates, 0.3, 1.0, mean, kOrvexa, QStringLiteral("1.5.4")), 10.0, 1e-9);
    // On one plate with its own NC mean 0.8: (1 - 0.3 / 0.8) x 100.
    EXPECT_NEAR(stats.plateRatioMean(plates[1], 0.3, 0.8, kOrvexa, QStringLiteral("1.5.4")), 62.5, 1e-9);
    EXPECT_EQ(stats.trackRatioMean(plates, QStringLiteral("AUX"), 0.3, 1.0, kOrvexa, QStringLiteral("1.5.4")), -1.0);
    EXPECT_EQ(prompt.count(), 0);
}

TEST(TrackingStatistics, CountsGoFarBeyondSixteenBits)
{
    // 400 plates of 96 counted PC wells: 38,400 wells.
    QStringList samples, ods, flags;
    for (int k = 0; k < wells::kCount; ++k) {
        samples << QStringLiteral("PC");
        ods << (k % 2 ? QStringLiteral("0.300") : QStringLiteral("0.100"));
        flags << QStringLiteral("1");
    }
    TrackedPlate plate;
    plate.setWells(joinWellList(samples), joinWellList(ods), joinWellList(flags));
    const QList<TrackedPlate> plates(400, plate);
    EXPECT_NEAR(TrackingStatistics::trackControlMean(plates, QStringLiteral("PC")), 0.2, 1e-12);
    EXPECT_NEAR(TrackingStatistics::trackControlStdDev(plates, QStringLiteral("PC"), 0.2, 0),
                std::sqrt(38400 * 0.01 / 38399), 1e-12);
}

TEST(TrackedPlate, FlagsAreReadInEitherStoredForm)
{
    QStringList samples, ods;
    for (int k = 0; k < wells::kCount; ++k) {
        samples << (k < 2 ? QStringLiteral("PC") : QString());
        ods << QStringLiteral("0.500");
    }
    TrackedPlate plate;
    // A plate never stored: 96 digits and no delimiter; the second well excluded.
    plate.setWells(joinWellList(samples), joinWellList(ods), QStringLiteral("10") + QString(94, u'1'));
    EXPECT_EQ(plate.countedODs(u"PC"), (std::vector<double>{0.5}));
}

TEST(TrackedPlate, AFlagOrControlOdThatIsNoNumberIsToldWithThePlateAndWell)
{
    QStringList samples, ods, flags;
    for (int k = 0; k < wells::kCount; ++k) {
        samples << QString();
        ods << QString();
        flags << QStringLiteral("1");
    }
    TrackedPlate plate;
    plate.plateName = QStringLiteral("Plate #3");
    plate.runName = QStringLiteral("O'Brien herd");

    // A sample well or an excluded control needs no OD.
    samples[0] = QStringLiteral("Cow");
    samples[1] = QStringLiteral("NC");
    flags[1] = QStringLiteral("0");
    EXPECT_NO_THROW(plate.setWells(joinWellList(samples), joinWellList(ods), joinWellList(flags)));

    flags[9] = QStringLiteral("x");
    try {
        plate.setWells(joinWellList(samples), joinWellList(ods), joinWellList(flags));
        FAIL();
    } catch (const TrackingDataError &e) {
        EXPECT_EQ(QString::fromUtf8(e.what()), QStringLiteral("The plate \"Plate #3\" of run \"O'Brien herd\" can't be "
                                                              "tracked: the include flag of well B2 (\"x\") is not a number."));
    }
    flags[9] = QStringLiteral("1");
    samples[2] = QStringLiteral("PC");
    try {
        plate.setWells(joinWellList(samples), joinWellList(ods), joinWellList(flags));
        FAIL();
    } catch (const TrackingDataError &e) {
        EXPECT_TRUE(QString::fromUtf8(e.what()).endsWith(QStringLiteral("the OD of control well C1 (\"\") is not a number.")));
    }
    try {
        plate.setWells(joinWellList(samples) + kWellDelimiter, joinWellList(ods), joinWellList(flags));
        FAIL();
    } catch (const TrackingDataError &e) {
        EXPECT_TRUE(QString::fromUtf8(e.what()).contains(QStringLiteral("more than 96 items")));
    }
}
