// The control statistics of tracking over plates and on one plate, and how a saved
// plate's well lists are read for them.
#include "QtPrinters.h"

#include "core/WellList.h"
#include "core/Wells.h"
#include "tracking/TrackingStatistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

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
    QStringList samples(wells::kCount), ods(wells::kCount), flags(wells::kCount, QStringLiteral("1"));
    for (const Well &w : entries) {
        const int k = wells::index(w.well[0] - 'A' + 1, std::atoi(w.well + 1));
        samples[k] = QString::fromLatin1(w.sample);
        ods[k] = QString::fromLatin1(w.od);
        flags[k] = QString::number(w.flag);
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

TEST(TrackingStatistics, AWellCountsByItsExactNameAndAFlagOtherThanZero)
{
    const TrackedPlate plate = plateOf({{"A1", "NC", "1.000"},
                                        {"B1", "NC", "0.500", 2}, // kept by hand: counts
                                        {"C1", "NC", "9.000", 0}, // excluded
                                        {"D1", "nc", "7.000"},    // another case: not a control here
                                        {"E1", " NC", "7.000"},   // nor with a blank
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

    const auto problem = [&](const QString &sampleList) -> QString {
        try {
            plate.setWells(sampleList, joinWellList(ods), joinWellList(flags));
        } catch (const TrackingDataError &e) {
            return QString::fromUtf8(e.what());
        }
        return u"accepted"_qs;
    };
    flags[9] = QStringLiteral("x");
    EXPECT_EQ(problem(joinWellList(samples)),
              QStringLiteral("The plate \"Plate #3\" of run \"O'Brien herd\" can't be tracked: "
                             "the include flag of well B2 (\"x\") is not a number."));
    flags[9] = QStringLiteral("1");
    samples[2] = QStringLiteral("PC");
    EXPECT_TRUE(problem(joinWellList(samples)).endsWith(u"the OD of control well C1 (\"\") is not a number."_qs));
    EXPECT_TRUE(problem(joinWellList(samples) + kWellDelimiter).contains(u"more than 96 items"_qs));
}
