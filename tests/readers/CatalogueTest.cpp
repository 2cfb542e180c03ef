// The reader catalogue: the 26 models, the drivers they get, their first filters, and
// the well value record set the drivers fill.

#include "FakeClock.h"
#include "FakePrompt.h"
#include "TempProgramFolder.h"

#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/clsReading.h"
#include "readers/drivers/clsDemo2Reader.h"
#include "readers/drivers/clsDemoReader.h"
#include "readers/drivers/clsLabSystemsMC340.h"
#include "readers/drivers/clsLabSystemsReader.h"
#include "store/DatabaseSchema.h"

#include <gtest/gtest.h>

namespace {

struct Catalogue {
    FakePrompt prompt;
    FakeClock clock;
    FakeSleeper sleeper{clock};
    clsReading reading{ReaderEnvironment{prompt, sleeper, QString()}};
};

} // namespace

TEST(ReaderCatalogue, ModelZeroListsAllTwentySixModelsInIdOrder)
{
    RecordSet all = clsReading::getReaderModelInfo(0);
    ASSERT_EQ(all.recordCount(), 26);
    EXPECT_EQ(all.position(), 0);
    EXPECT_EQ(all.fieldNames(), QStringList({"ReaderModelID", "ReaderModelName", "DefaultSettings",
                                             "DefaultFlowControl", "DefaultFilterNo"}));
    for (int r = 0; r < 26; ++r)
        EXPECT_EQ(all.valueAt(r, u"ReaderModelID").toInt(), r + 1);
}

TEST(ReaderCatalogue, OneModelComesAlone)
{
    RecordSet mc340 = clsReading::getReaderModelInfo(8);
    ASSERT_EQ(mc340.recordCount(), 1);
    EXPECT_EQ(mc340.text(u"ReaderModelName"), QStringLiteral("LabSystems MC 340 (Older LabSystems Readers)"));
    EXPECT_EQ(mc340.text(u"DefaultSettings"), QStringLiteral("4800,N,8,1"));
    EXPECT_EQ(clsReading::getReaderModelInfo(2).text(u"DefaultSettings"), QStringLiteral("2400,N,8,1"));
}

TEST(ReaderCatalogue, AnUnknownModelFailsForItsInfoButHasNoFilters)
{
    // The asymmetry is relied on: the configuration treats a failure of the info as "no model".
    EXPECT_THROW(clsReading::getReaderModelInfo(27), RecordSetError);
    EXPECT_THROW(clsReading::getReaderModelInfo(-1), RecordSetError);
    EXPECT_EQ(clsReading::getDefaultFilters(27).recordCount(), 0);
    EXPECT_EQ(clsReading::getDefaultFilters(0).recordCount(), 0);
}

TEST(ReaderCatalogue, OnlyMolecularDevicesReadersComeWithTheirFilters)
{
    RecordSet md = clsReading::getDefaultFilters(4);
    ASSERT_EQ(md.recordCount(), 4);
    const int expected[] = {405, 450, 490, 650};
    for (int r = 0; r < 4; ++r) {
        EXPECT_EQ(md.valueAt(r, u"FilterNo").toInt(), r + 1);
        EXPECT_EQ(md.valueAt(r, u"FilterValue").toInt(), expected[r]);
    }
    for (qint16 model : {1, 5, 6, 8, 26}) {
        RecordSet one = clsReading::getDefaultFilters(model);
        ASSERT_EQ(one.recordCount(), 1) << model;
        EXPECT_EQ(one.valueAt(0, u"FilterNo").toInt(), 1);
        EXPECT_EQ(one.valueAt(0, u"FilterValue").toInt(), 0);
    }
}

TEST(ReaderCatalogue, AModelWithoutADriverLeavesTheCurrentDriver)
{
    Catalogue c;
    ASSERT_TRUE(c.reading.SetReader(8));
    ReaderDriver *before = c.reading.currentReader.get();
    EXPECT_FALSE(c.reading.SetReader(0));
    EXPECT_FALSE(c.reading.SetReader(27));
    EXPECT_EQ(c.reading.currentReader.get(), before);
}

TEST(ReaderCatalogue, TheDeliveredDemoReadersPointAtTheDemoModels)
{
    TempProgramFolder folder;
    DbConnection db = folder.open();
    QSqlQuery q = db.query(QStringLiteral("SELECT UserReaderName, ReaderModelID FROM UserReaders ORDER BY UserReaderID"));
    int seen = 0;
    while (q.next()) {
        ++seen;
        const RecordSet model = clsReading::getReaderModelInfo(qint16(q.value(1).toInt()));
        EXPECT_EQ(model.text(u"ReaderModelName"), q.value(0).toString());
    }
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(clsReading::getReaderModelInfo(kDemoReaderModelID).text(u"ReaderModelName"), QStringLiteral("Demo"));
    EXPECT_EQ(clsReading::getReaderModelInfo(kDemo2ReaderModelID).text(u"ReaderModelName"), QStringLiteral("Demo2"));
}

TEST(WellValues, AValueTooLongForItsFieldIsAReadError)
{
    RecordSet values = WellValues::create();
    WellValues::append(values, QStringLiteral("12H"), QStringLiteral("-0.1234"));
    EXPECT_EQ(values.recordCount(), 1);
    try {
        WellValues::append(values, QString(), QStringLiteral("12.34567"));
        FAIL() << "an eight-character value was taken";
    } catch (const ReadError &e) {
        EXPECT_EQ(e.description(), QStringLiteral("The value '12.34567' of the reader's data is longer than 7 characters."));
    }
    EXPECT_THROW(WellValues::append(values, QStringLiteral("12-AB"), QStringLiteral("1")), ReadError);
    EXPECT_EQ(values.recordCount(), 1);
}
