// The reader catalogue and the well value record set the drivers fill.

#include "FakeClock.h"
#include "FakePrompt.h"
#include "TempProgramFolder.h"

#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/clsReading.h"

#include <gtest/gtest.h>

TEST(ReaderCatalogue, AnUnknownModelFailsForItsInfoButHasNoFilters)
{
    // The asymmetry is relied on: the configuration treats a failure of the info as "no model".
    EXPECT_THROW(clsReading::getReaderModelInfo(27), RecordSetError);
    EXPECT_THROW(clsReading::getReaderModelInfo(-1), RecordSetError);
    EXPECT_EQ(clsReading::getDefaultFilters(27).recordCount(), 0);
    EXPECT_EQ(clsReading::getDefaultFilters(0).recordCount(), 0);
}

TEST(ReaderCatalogue, AModelWithoutADriverLeavesTheCurrentDriver)
{
    FakePrompt prompt;
    FakeClock clock;
    FakeSleeper sleeper(clock);
    clsReading reading(ReaderEnvironment{prompt, sleeper, QString()});
    ASSERT_TRUE(reading.SetReader(8));
    ReaderDriver *before = reading.currentReader.get();
    EXPECT_FALSE(reading.SetReader(0));
    EXPECT_FALSE(reading.SetReader(27));
    EXPECT_EQ(reading.currentReader.get(), before);
}

TEST(ReaderCatalogue, TheDeliveredDemoReadersPointAtTheDemoModels)
{
    TempProgramFolder folder;
    DbConnection db = folder.open();
    QSqlQuery q =
        db.query(QStringLiteral("SELECT UserReaderName, ReaderModelID FROM UserReaders ORDER BY UserReaderID"));
    int seen = 0;
    while (q.next()) {
        ++seen;
        EXPECT_EQ(clsReading::getReaderModelInfo(qint16(q.value(1).toInt())).text(u"ReaderModelName"),
                  q.value(0).toString());
    }
    EXPECT_EQ(seen, 2);
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
        EXPECT_EQ(e.description(),
                  QStringLiteral("The value '12.34567' of the reader's data is longer than 7 characters."));
    }
    EXPECT_THROW(WellValues::append(values, QStringLiteral("12-AB"), QStringLiteral("1")), ReadError);
    EXPECT_EQ(values.recordCount(), 1);
}
