// Guide sets: figured from a baseline, kept in the database, the one in force for a plate;
// and a kit's saved plates judged against them, live and from the command line.
#include "TrackingFixture.h"

#include "store/AddedTables.h"
#include "store/AuditQuery.h"
#include "store/DbConnection.h"
#include "tracking/GuideSetStore.h"
#include "tracking/QcHistory.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace {

GuideSet guideSet(const char *quantity, double mean, double sd, QDate start, const char *lot = "")
{
    GuideSet set;
    set.testName = kOrvexa;
    set.quantity = QString::fromLatin1(quantity);
    set.lotNumber = QString::fromLatin1(lot);
    set.mean = mean;
    set.sd = sd;
    set.start = start;
    set.setBy = QStringLiteral("Ana Ruiz");
    set.setAt = QDateTime(QDate(2024, 1, 2), QTime(8, 30));
    return set;
}

// An Orvexa plate whose NC wells read od, and whose PC wells read 0.300.
TestPlate ncPlate(const char *name, QDate day, const char *od)
{
    return readPlate(QString::fromLatin1(name), kOrvexa, day,
                     {{"A1", control("NC", od)}, {"B1", control("NC", od)}, {"C1", control("PC", "0.300")}});
}

} // namespace

TEST(GuideSetBaseline, GivesMeanAndSampleSDWarningUnderTwentyPlates)
{
    QString error;
    const auto b = GuideSet::fromBaseline({1.0, 1.2, 1.4}, &error);
    ASSERT_TRUE(b);
    EXPECT_DOUBLE_EQ(b->mean, 1.2);
    EXPECT_NEAR(b->sd, 0.2, 1e-12);
    EXPECT_TRUE(b->warning.contains(QStringLiteral("figured from 3 plates")));
    EXPECT_TRUE(GuideSet::fromBaseline(std::vector<double>(20, 1.0 + 0.0), &error) == std::nullopt);
    EXPECT_TRUE(error.contains(QStringLiteral("SD is 0")));
    EXPECT_FALSE(GuideSet::fromBaseline({}, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("needs plates")));
}

TEST(GuideSets, TheOneInForceIsTheLatestStartOnOrBeforeTheDayAndTheLotsOwnFirst)
{
    SavedPlates saved;
    DbConnection db(saved.temp().databaseLocation());
    GuideSetStore::add(db, guideSet("NC", 1.0, 0.1, QDate(2024, 1, 1)));
    GuideSetStore::add(db, guideSet("NC", 2.0, 0.1, QDate(2024, 2, 1)));
    GuideSetStore::add(db, guideSet("NC", 3.0, 0.1, QDate(2024, 1, 15), "L-7"));
    GuideSetStore::add(db, guideSet("NC", 2.5, 0.1, QDate(2024, 2, 1))); // a correction of the one before
    GuideSetStore::add(db, guideSet("PC", 9.0, 0.1, QDate(2023, 1, 1)));

    const GuideSetBook book = GuideSetStore::read(db, kOrvexa);
    ASSERT_EQ(book.all().size(), 5);
    EXPECT_EQ(book.all().first().setBy, QStringLiteral("Ana Ruiz"));
    EXPECT_EQ(book.all().first().setAt, QDateTime(QDate(2024, 1, 2), QTime(8, 30)));
    auto mean = [&](const char *lot, QDate day) {
        const auto set = book.inForce(QStringLiteral("NC"), QString::fromLatin1(lot), day);
        return set ? set->mean : 0.0;
    };
    EXPECT_EQ(mean("L-1", QDate(2023, 12, 31)), 0.0);
    EXPECT_EQ(mean("L-1", QDate(2024, 1, 1)), 1.0);
    EXPECT_EQ(mean("L-7", QDate(2024, 1, 14)), 1.0);
    EXPECT_EQ(mean("L-7", QDate(2024, 1, 15)), 3.0);
    EXPECT_EQ(mean("L-7", QDate(2024, 3, 1)), 3.0);
    EXPECT_EQ(mean("L-1", QDate(2024, 2, 1)), 2.5);
    EXPECT_TRUE(GuideSetStore::read(db, kKestrin).isEmpty());
}

TEST(GuideSets, ThatCantServeAreRefusedAndNothingIsStored)
{
    SavedPlates saved;
    DbConnection db(saved.temp().databaseLocation());
    for (double sd : {0.0, -0.05}) {
        try {
            GuideSetStore::add(db, guideSet("NC", 1.0, sd, QDate(2024, 1, 1)));
            ADD_FAILURE() << "an SD of " << sd << " was kept";
        } catch (const std::invalid_argument &e) {
            EXPECT_TRUE(QString::fromUtf8(e.what()).contains(QStringLiteral("the SD must be above 0")));
        }
    }
    EXPECT_FALSE(AddedTables::exists(db, QStringLiteral("QcGuideSets")));
}

TEST(KitRules, AreTheDefaultsUntilChosen)
{
    SavedPlates saved;
    DbConnection db(saved.temp().databaseLocation());
    EXPECT_EQ(GuideSetStore::rules(db, kOrvexa), westgard::defaultRules());
    const QList<WestgardRule> chosen = {WestgardRule::OneThreeS, WestgardRule::TwelveX};
    GuideSetStore::setRules(db, kOrvexa, chosen);
    EXPECT_EQ(GuideSetStore::rules(db, kOrvexa), chosen);
    EXPECT_EQ(GuideSetStore::rules(db, kKestrin), westgard::defaultRules());

    // Guide sets and rule choices are in the audit trail, with what they were before.
    GuideSetStore::add(db, guideSet("NC", 1.25, 0.5, QDate(2024, 1, 1), "L-7"));
    QStringList trail;
    for (const AuditRow &row : AuditQuery::rows(db))
        trail << QStringList{row.action, row.recordID, row.field, row.oldValue, row.newValue}.join(u'|');
    EXPECT_EQ(trail, (QStringList{QStringLiteral("QC rules changed|") + kOrvexa + "|Rules|" +
                                      westgard::names(westgard::defaultRules()).join(u',') + "|1-3s,12x",
                                  "Guide set added|1|||" + QString(kOrvexa) +
                                      " NC, lot L-7: mean 1.25, SD 0.5 from 2024-01-01 (0 plates)"}));
}

class AKitsHistory : public testing::Test {
protected:
    SavedPlates saved;
    FakePrompt prompt;
    TrackingCriteria criteria{kOrvexa, std::nullopt, std::nullopt, QDate(2024, 1, 1), QDate(2024, 12, 31)};

    void SetUp() override
    {
        saved.saveRun(QStringLiteral("January"),
                      {ncPlate("P1", QDate(2024, 1, 5), "1.200"), ncPlate("P2", QDate(2024, 1, 6), "1.200"),
                       ncPlate("P3", QDate(2024, 1, 7), "1.200")});
        DbConnection db(saved.temp().databaseLocation());
        GuideSetStore::add(db, guideSet("NC", 1.0, 0.1, QDate(2024, 1, 1)));
        GuideSetStore::add(db, guideSet("NC", 1.2, 0.1, QDate(2024, 1, 7))); // P3 on: NC at the mean
    }
};

TEST_F(AKitsHistory, IsJudgedAgainstTheGuideSetInForceWhenEachPlateWasRead)
{
    DbConnection db(saved.temp().databaseLocation(), DbConnection::Mode::ReadOnly);
    const QcHistory history = QcHistory::gather(db, criteria, prompt);
    EXPECT_EQ(history.quantities, QStringList({"PC", "NC", "%I"}));
    ASSERT_EQ(history.runs.size(), 3u);
    // P1 and P2 at +2 SD: 1-2s on both, 2-2s on P2; P3 at the newer mean: nothing. PC has no guide set.
    const std::vector<QcFlag> expected = {{0, 1, WestgardRule::OneTwoS, false},
                                          {1, 1, WestgardRule::TwoTwoS, true},
                                          {1, 1, WestgardRule::OneTwoS, false}};
    EXPECT_EQ(history.flags, expected);
}

TEST_F(AKitsHistory, TakesAPlateReadAgainInPlaceOfItsSavedRow)
{
    DbConnection db(saved.temp().databaseLocation(), DbConnection::Mode::ReadOnly);
    criteria.end = QDate(2024, 1, 6);
    const QList<TrackedPlate> plates = ControlTracking::readPlates(db, criteria);
    TrackedPlate again = plates.at(1);
    again.setWells(QStringLiteral("NC¬NC¬"), QStringLiteral("1.000¬1.000¬"), QString(96, u'1'));
    const QcHistory history = QcHistory::gather(db, criteria, prompt, again);
    ASSERT_EQ(history.runs.size(), 2u);
    EXPECT_TRUE(history.flagsOf(1).empty());
}

TEST_F(AKitsHistory, IsJudgedByTheCommandLineWithThePlateIds)
{
    QProcess cli;
    cli.start(
        QCoreApplication::applicationDirPath() + QStringLiteral("/../tavimetra-cli"),
        {"qc", "--db", saved.temp().databaseLocation(), "--test", kOrvexa, "--from", "1/1/2024", "--to", "1/31/2024"});
    ASSERT_TRUE(cli.waitForFinished(60000));
    ASSERT_EQ(cli.exitCode(), 0) << cli.readAllStandardError().toStdString();
    const QJsonArray flags = QJsonDocument::fromJson(cli.readAllStandardOutput()).object().value("flags").toArray();
    ASSERT_EQ(flags.size(), 3);
    const QJsonObject rejected = flags.at(1).toObject();
    EXPECT_EQ(rejected, (QJsonObject{{"run", 2},
                                     {"runId", rejected.value("runId")},
                                     {"plateId", 2},
                                     {"plateName", "P2"},
                                     {"runName", "January"},
                                     {"quantity", "NC"},
                                     {"rule", "2-2s"},
                                     {"reject", true}}));
}
