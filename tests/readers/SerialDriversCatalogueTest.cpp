// The catalogue gives the Molecular Devices, BioWhittaker and MS2 models their drivers, and
// with the Bio-Tek driver every model of the catalogue can be read.

#include "FakeClock.h"
#include "FakePrompt.h"

#include "readers/clsReading.h"
#include "readers/drivers/clsBioTekReaders.h"
#include "readers/drivers/clsBioWhittakerReader.h"
#include "readers/drivers/clsMS2_Reader.h"
#include "readers/drivers/clsTHERMOmaxReader.h"

#include <gtest/gtest.h>

namespace {

struct Catalogue {
    FakePrompt prompt;
    FakeClock clock;
    FakeSleeper sleeper{clock};
    clsReading reading{ReaderEnvironment{prompt, sleeper, QString()}};
};

} // namespace

TEST(SerialDriversCatalogue, TheFramedAndEchoingReadersGetTheirDrivers)
{
    Catalogue c;
    ASSERT_TRUE(c.reading.SetReader(2));
    EXPECT_NE(dynamic_cast<clsMS2_Reader *>(c.reading.currentReader.get()), nullptr);
    ASSERT_TRUE(c.reading.SetReader(3));
    EXPECT_NE(dynamic_cast<clsBioWhittakerReader *>(c.reading.currentReader.get()), nullptr);
    ASSERT_TRUE(c.reading.SetReader(4));
    EXPECT_NE(dynamic_cast<clsTHERMOmaxReader *>(c.reading.currentReader.get()), nullptr);
}

TEST(SerialDriversCatalogue, EveryModelOfTheCatalogueHasADriver)
{
    Catalogue c;
    for (int model = 1; model <= clsReading::kModelCount; ++model)
        EXPECT_TRUE(c.reading.SetReader(model)) << model;
    // A Bio-Tek driver made by the catalogue is told its number before anything else.
    ASSERT_TRUE(c.reading.SetReader(26));
    EXPECT_EQ(dynamic_cast<clsBioTekReaders &>(*c.reading.currentReader).readerType, 19);
}

TEST(SerialDriversCatalogue, EachSetReaderMakesAFreshDriverSoTheSilenceCountStartsAgain)
{
    Catalogue c;
    ASSERT_TRUE(c.reading.SetReader(3));
    dynamic_cast<clsBioWhittakerReader &>(*c.reading.currentReader).retryCount = 21;
    ASSERT_TRUE(c.reading.SetReader(3));
    EXPECT_EQ(dynamic_cast<clsBioWhittakerReader &>(*c.reading.currentReader).retryCount, 0);
}
