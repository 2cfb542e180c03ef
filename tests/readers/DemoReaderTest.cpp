// The demo readers: the captures delivered in data/, their parse, and how a missing or
// broken capture is told.

#include "ReaderTestData.h"
#include "TempProgramFolder.h"

#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/drivers/clsDemo2Reader.h"
#include "readers/drivers/clsDemoReader.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {

struct DemoBench {
    TempProgramFolder folder;
    FakePrompt prompt;
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakeSerialPort port{clock};
    ReaderEnvironment env{prompt, sleeper, folder.path()};

    RecordSet values(ReaderDriver &driver)
    {
        QString data;
        EXPECT_TRUE(driver.readData(port, QStringLiteral("1"), QStringLiteral("630"), data));
        return parse(data);
    }
    static RecordSet parse(const QString &data)
    {
        RecordSet set = WellValues::create();
        DemoResultsReader::parse(set, data);
        return set;
    }
    void writeCapture(const QString &fileName, const QByteArray &bytes)
    {
        TempProgramFolder::writeFile(QDir(folder.path()).filePath(fileName), bytes);
    }
};

// A capture of 96 records; the value of each well is its index / 1000.
QByteArray capture(int frames = 6)
{
    QStringList values;
    for (int k = 0; k < wells::kCount; ++k)
        values << QString::number(k / 1000.0, 'f', 3);
    return demoCapture(values, frames);
}

QString withoutLineEnds(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes).remove(u'\r').remove(u'\n');
}

} // namespace

TEST(DemoReaders, TheDeliveredCapturesHoldTwoPlatesInWellOrder)
{
    DemoBench b;
    clsDemoReader demo(b.env);
    RecordSet values = b.values(demo);
    ASSERT_EQ(values.recordCount(), 96);
    const QStringList pos = wellVals(values, u"Pos");
    EXPECT_EQ(pos.mid(0, 2) + pos.mid(8, 1) + pos.mid(95), QStringList({"1A", "1B", "2A", "12H"}));
    // The layout of the plate: PC in A1 and B1, NC in C1 to E1, a blank in F1.
    const QStringList vals = wellVals(values);
    EXPECT_EQ(vals.mid(0, 6), QStringList({" 0.182", " 0.197", " 1.214", " 1.187", " 1.251", " 0.048"}));
    clsDemo2Reader demo2(b.env);
    EXPECT_EQ(wellVals(b.values(demo2)).mid(0, 6),
              QStringList({" 0.781", " 0.806", " 0.958", " 0.921", " 0.986", " 0.051"}));
    EXPECT_EQ(b.prompt.count(), 0);
    EXPECT_EQ(b.port.opens(), 0);
}

TEST(DemoReaders, LineBreaksDontCountAndEachReadTakesTheFileAfresh)
{
    QByteArray moved = capture();
    moved.replace("\r\n", "");
    for (int i = 37; i < moved.size(); i += 53)
        moved.insert(i, "\r\n");
    DemoBench b;
    b.writeCapture(clsDemoReader::kFileName, moved);
    clsDemoReader demo(b.env);
    const QStringList vals = wellVals(b.values(demo));
    EXPECT_EQ(vals[wells::index(8, 12)], QStringLiteral(" 0.095"));
    EXPECT_EQ(vals[wells::index(2, 1)], QStringLiteral(" 0.001"));
}

TEST(DemoReaders, WithFewerThanSixFramesTheSearchStartsOverAtTheTop)
{
    // Without a header the search finds nothing and starts at the first character: the
    // records are read as they stand.
    RecordSet bare = DemoBench::parse(withoutLineEnds(capture(0)));
    EXPECT_EQ(wellVals(bare, u"Pos")[0], QStringLiteral("1A"));
    EXPECT_EQ(wellVals(bare)[wells::index(8, 12)], QStringLiteral(" 0.095"));

    // With four frames the search passes them, starts over and stops after the first: the
    // parse runs over the header as if it were records, and breaks on a record boundary.
    try {
        DemoBench::parse(withoutLineEnds(capture(4)));
        FAIL() << "a header of four frames was parsed as a plate";
    } catch (const ReadError &e) {
        EXPECT_EQ(e.description(),
                  QStringLiteral("The reader's data ends too early: there is no position of well C1 at character 34."));
    }
}

TEST(DemoReaders, AShortCaptureIsAReadErrorNamingTheWell)
{
    QByteArray bytes = capture();
    bytes.truncate(bytes.indexOf(" 5-C"));
    try {
        DemoBench::parse(withoutLineEnds(bytes));
        FAIL() << "a short capture was parsed";
    } catch (const ReadError &e) {
        EXPECT_TRUE(e.description().startsWith(QStringLiteral("The reader's data ends too early: there is no position "
                                                              "of well C5 at character ")))
            << e.description().toStdString();
    }
}

TEST(DemoReaders, AMissingCaptureIsAReadErrorNamingTheFile)
{
    DemoBench b;
    QFile::remove(QDir(b.folder.path()).filePath(QStringLiteral("Results2.INI")));
    clsDemo2Reader demo2(b.env);
    QString data;
    try {
        demo2.readData(b.port, QStringLiteral("1"), QStringLiteral("450"), data);
        FAIL() << "a missing capture was read";
    } catch (const ReadError &e) {
        EXPECT_EQ(e.description(), QStringLiteral("The demo reader's data file \"Results2.INI\" is missing from the "
                                                  "program's folder %1.")
                                       .arg(QDir::toNativeSeparators(b.folder.path())));
    }
    EXPECT_TRUE(data.isEmpty());
}

// Random bytes, long enough to parse, gave 96 values of nonsense: records that don't name
// their wells are not a plate. The read fails with a box and the data goes no further.
TEST(DemoReaders, AFileThatIsNoCaptureOfAPlateIsToldAndNotRead)
{
    DemoBench b;
    QByteArray noise(4000, 'x');
    quint32 r = 7;
    for (char &c : noise) {
        r = r * 1103515245u + 12345u;
        c = char(32 + (r >> 16) % 95);
    }
    b.writeCapture(QStringLiteral("Results.INI"), capture().left(capture().indexOf(" 1-A")) + noise);
    clsDemoReader demo(b.env);
    QString data;
    EXPECT_FALSE(demo.readData(b.port, QStringLiteral("1"), QStringLiteral("630"), data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("The demo reader's data file \"Results.INI\" does not hold a plate "
                                                   "of 96 values.  The plate has not been read and stays as it was."));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Could not Read Plate"));
}

TEST(DemoReaders, TheCommunicationTestIsNotNeeded)
{
    DemoBench b;
    clsDemoReader demo(b.env);
    EXPECT_TRUE(demo.testCommunication(b.port));
    EXPECT_EQ(b.prompt.texts(), QStringList({"Communication test not required for demo readers."}));
    EXPECT_EQ(b.port.opens(), 0);
}
