// The arguments of the command-line "track" and its JSON rows.
#include "TrackingFixture.h"

#include "tracking/TrackRequest.h"

#include <gtest/gtest.h>

#include <QJsonObject>

namespace {

QStringList args(const QString &line)
{
    return line.split(u' ', Qt::SkipEmptyParts);
}

QString refusal(const QStringList &arguments)
{
    QString error;
    const std::optional<TrackRequest> request = TrackRequest::parse(arguments, &error);
    EXPECT_FALSE(request.has_value()) << arguments.join(u' ').toStdString();
    return error;
}

const QString kBase = QStringLiteral("--db run.db --from 1/1/2024 --to 1/31/2024 --out t.xlsx --test");

} // namespace

TEST(TrackRequest, TheOptionsBecomeCriteriaAndChartOptions)
{
    QString error;
    QStringList a = args(kBase);
    a << QStringLiteral("TSC 6174.20 (Bovine Milk)") << QStringLiteral("--lot") << QStringLiteral("L 1")
      << QStringLiteral("--tech") << QStringLiteral("Ana Ruiz") << QStringLiteral("--x") << QStringLiteral("date,time")
      << QStringLiteral("--no-stddev");
    const std::optional<TrackRequest> r = TrackRequest::parse(a, &error);
    ASSERT_TRUE(r.has_value()) << error.toStdString();
    EXPECT_EQ(r->databasePath, QStringLiteral("run.db"));
    EXPECT_EQ(r->outPath, QStringLiteral("t.xlsx"));
    EXPECT_EQ(r->criteria.testName, QStringLiteral("TSC 6174.20 (Bovine Milk)"));
    EXPECT_EQ(r->criteria.lotNumber, QStringLiteral("L 1"));
    EXPECT_EQ(r->criteria.techName, QStringLiteral("Ana Ruiz"));
    EXPECT_EQ(r->criteria.start, QDate(2024, 1, 1));
    EXPECT_EQ(r->criteria.end, QDate(2024, 1, 31));
    EXPECT_FALSE(r->chart.plateName || r->chart.runName);
    EXPECT_TRUE(r->chart.date && r->chart.time);
    EXPECT_FALSE(r->chart.stdDev);

    // By default: any lot and technician, the plate name on the X axis, the deviations.
    const std::optional<TrackRequest> d = TrackRequest::parse(args(kBase) << QStringLiteral("KSV 414"), &error);
    ASSERT_TRUE(d.has_value()) << error.toStdString();
    EXPECT_FALSE(d->criteria.lotNumber.has_value());
    EXPECT_FALSE(d->criteria.techName.has_value());
    EXPECT_TRUE(d->chart.plateName && d->chart.stdDev);
    EXPECT_EQ(d->chart.numChecked(), 1);
}

TEST(TrackRequest, BadArgumentsAreRefusedWithTheReason)
{
    EXPECT_EQ(refusal(args(QStringLiteral("--db run.db --test x"))), QStringLiteral("option --from is required"));
    EXPECT_EQ(refusal(args(kBase)), QStringLiteral("option --test needs a value"));
    EXPECT_EQ(refusal(args(kBase + QStringLiteral(" Generic"))),
              QStringLiteral("\"Generic\" is not a test kit that can be tracked"));
    EXPECT_EQ(refusal(args(kBase + QStringLiteral(" orvexa"))),
              QStringLiteral("\"orvexa\" is not a test kit that can be tracked"));
    EXPECT_EQ(refusal(args(kBase + QStringLiteral(" PZV --colour red"))), QStringLiteral("unknown option --colour"));
    EXPECT_EQ(refusal(args(QStringLiteral("extra ") + kBase + QStringLiteral(" PZV"))),
              QStringLiteral("unexpected argument 'extra'"));

    QStringList a = args(kBase) << QStringLiteral("PZV 419");
    a[3] = QStringLiteral("2/30/2024");
    EXPECT_EQ(refusal(a), QStringLiteral("--from \"2/30/2024\" is not a date (M/D/YYYY)"));
    a[3] = QStringLiteral("2/1/2024");
    EXPECT_EQ(refusal(a), QStringLiteral("The date range is invalid: --from is after --to"));
    a[3] = QStringLiteral("1/31/2024");
    a[5] = QStringLiteral("2024-01-31");
    EXPECT_EQ(refusal(a), QStringLiteral("--to \"2024-01-31\" is not a date (M/D/YYYY)"));
    a[5] = QStringLiteral("1/31/2024");
    EXPECT_EQ(refusal(a + QStringList{QStringLiteral("--x"), QStringLiteral("plate,week")}),
              QStringLiteral("--x: \"week\" is none of plate, run, date, time"));
    EXPECT_EQ(refusal(a + QStringList{QStringLiteral("--x"), QStringLiteral(",")}),
              QStringLiteral("--x must name at least one of plate, run, date, time"));
    QString error;
    EXPECT_TRUE(TrackRequest::parse(a, &error).has_value()) << error.toStdString();
}

TEST(TrackRequest, RowsBecomeJsonInTableOrder)
{
    TrackingBench bench;
    const TrackingData data = bench.gather(orvexaPlates());
    ASSERT_TRUE(data.ok);
    const QJsonArray rows = TrackRequest::rowsJson(data.rows);
    ASSERT_EQ(rows.size(), 2);
    const QJsonObject second = rows[1].toObject();
    EXPECT_EQ(second.keys().size(), 12);
    EXPECT_EQ(second.value(QStringLiteral("PlateName")).toString(), QStringLiteral("Plate B"));
    EXPECT_EQ(second.value(QStringLiteral("DateRead")).toString(), QStringLiteral("2024-01-06"));
    EXPECT_EQ(second.value(QStringLiteral("TimeRead")).toString(), QStringLiteral("14:30:05"));
    EXPECT_EQ(second.value(QStringLiteral("MeanControl")).toString(), QStringLiteral(".800"));
    EXPECT_EQ(second.value(QStringLiteral("SuperMeanCalcRatio")).toString(), QStringLiteral("70.000"));
    EXPECT_EQ(rows[0].toObject().value(QStringLiteral("PlateName")).toString(), QStringLiteral("Plate A"));
}
