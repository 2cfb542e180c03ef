// The demo readers: the captures delivered in data/, their parse, and how a missing or
// broken capture is told.

#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeSerialPort.h"
#include "ReaderTestData.h"
#include "TempProgramFolder.h"

#include "core/Wells.h"
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

    QString read(ReaderDriver &driver)
    {
        QString data;
        EXPECT_TRUE(driver.readData(port, QStringLiteral("1"), QStringLiteral("630"), data));
        return data;
    }
    RecordSet values(ReaderDriver &driver) { return parse(read(driver)); }
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

QByteArray header(int frames)
{
    QByteArray h;
    for (int i = 0; i < frames; ++i)
        h += "\x02" "FRAME\x03\r\n";
    return h;
}

// A capture of 96 records; the value of each well is its index / 1000.
QByteArray capture(int frames = 6)
{
    QByteArray bytes = header(frames);
    for (int col = 1; col <= 12; ++col) {
        for (int row = 1; row <= 8; ++row) {
            const int k = wells::index(row, col);
            bytes += QStringLiteral("%1-%2   %3\r\n")
                         .arg(col, 2)
                         .arg(wells::rowLetter(row))
                         .arg(k / 1000.0, 6, 'f', 3)
                         .toLatin1();
        }
        bytes += "-\r\n";
    }
    return bytes;
}

} // namespace

TEST(DemoReaders, TheDeliveredCaptureOfDemoHoldsAPlateInWellOrder)
{
    DemoBench b;
    clsDemoReader demo(b.env);
    RecordSet values = b.values(demo);
    ASSERT_EQ(values.recordCount(), 96);
    const QStringList vals = wellVals(values);
    const QStringList pos = wellPositions(values);
    EXPECT_EQ(pos[0], QStringLiteral("1A"));
    EXPECT_EQ(pos[1], QStringLiteral("1B"));
    EXPECT_EQ(pos[8], QStringLiteral("2A"));
    EXPECT_EQ(pos[95], QStringLiteral("12H"));
    // The layout of the plate: PC in A1 and B1, NC in C1 to E1, a blank in F1.
    EXPECT_EQ(vals.mid(0, 6), QStringList({" 0.182", " 0.197", " 1.214", " 1.187", " 1.251", " 0.048"}));
    EXPECT_EQ(vals[wells::index(7, 1)], QStringLiteral(" 0.342"));
    EXPECT_EQ(b.prompt.count(), 0);
}

TEST(DemoReaders, TheDeliveredCaptureOfDemo2IsAPlateOfItsOwn)
{
    DemoBench b;
    clsDemo2Reader demo2(b.env);
    clsDemoReader demo(b.env);
    const QStringList vals2 = wellVals(b.values(demo2));
    ASSERT_EQ(vals2.size(), 96);
    EXPECT_EQ(vals2.mid(0, 6), QStringList({" 0.781", " 0.806", " 0.958", " 0.921", " 0.986", " 0.051"}));
    EXPECT_NE(vals2, wellVals(b.values(demo)));
}

TEST(DemoReaders, LineBreaksDontCount)
{
    const QByteArray bytes = capture();
    QByteArray moved = bytes;
    moved.replace("\r\n", "");
    for (int i = 37; i < moved.size(); i += 53)
        moved.insert(i, "\r\n");
    EXPECT_EQ(wellVals(DemoBench::parse(QString::fromLatin1(moved).remove(u'\r').remove(u'\n'))),
              wellVals(DemoBench::parse(QString::fromLatin1(bytes).remove(u'\r').remove(u'\n'))));

    DemoBench b;
    b.writeCapture(clsDemoReader::kFileName, moved);
    clsDemoReader demo(b.env);
    const QStringList vals = wellVals(b.values(demo));
    EXPECT_EQ(vals[wells::index(8, 12)], QStringLiteral(" 0.095"));
    EXPECT_EQ(vals[wells::index(2, 1)], QStringLiteral(" 0.001"));
}

TEST(DemoReaders, EachReadTakesTheFileAfreshAndAddsToTheData)
{
    DemoBench b;
    clsDemoReader demo(b.env);
    const QString first = b.read(demo);
    b.writeCapture(clsDemoReader::kFileName, capture());
    QString data = QStringLiteral("before:");
    ASSERT_TRUE(demo.readData(b.port, QStringLiteral("1"), QStringLiteral("630"), data));
    EXPECT_TRUE(data.startsWith(QStringLiteral("before:")));
    EXPECT_NE(data.mid(7), first);
    EXPECT_EQ(b.port.opens(), 0);
}

TEST(DemoReaders, WithFewerThanSixFramesTheSearchStartsOverAtTheTop)
{
    // Without a header the search finds nothing and starts at the first character: the
    // records are read as they stand.
    RecordSet bare = DemoBench::parse(QString::fromLatin1(capture(0)).remove(u'\r').remove(u'\n'));
    EXPECT_EQ(wellPositions(bare)[0], QStringLiteral("1A"));
    EXPECT_EQ(wellVals(bare)[wells::index(8, 12)], QStringLiteral(" 0.095"));

    // With four frames the search passes them, starts over and stops after the first: the
    // parse runs over the header as if it were records, and breaks on a record boundary.
    try {
        DemoBench::parse(QString::fromLatin1(capture(4)).remove(u'\r').remove(u'\n'));
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
        DemoBench::parse(QString::fromLatin1(bytes).remove(u'\r').remove(u'\n'));
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
    b.writeCapture(QStringLiteral("Results.INI"), header(6) + noise);
    clsDemoReader demo(b.env);
    QString data;
    EXPECT_FALSE(demo.readData(b.port, QStringLiteral("1"), QStringLiteral("630"), data));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("The demo reader's data file \"Results.INI\" does not hold a plate "
                                                   "of 96 values.  The plate has not been read and stays as it was."));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Could not Read Plate"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Exclamation);
}

TEST(DemoReaders, TheCommunicationTestIsNotNeeded)
{
    DemoBench b;
    clsDemoReader demo(b.env);
    EXPECT_TRUE(demo.testCommunication(b.port));
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("Communication test not required for demo readers."));
    EXPECT_EQ(b.prompt.last().title, QString());
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Information);
    EXPECT_EQ(b.port.opens(), 0);
}
