// The LabSystems readers' replies and plate data as pure text: how replies accumulate,
// when a wait ends, the words for each error, and the parse of captured plates.

#include "ReaderTestData.h"

#include "core/Wells.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/drivers/LabSystemsReplies.h"
#include "readers/drivers/clsLabSystemsMC340.h"
#include "readers/drivers/clsLabSystemsReader.h"

#include <gtest/gtest.h>

using namespace LabSystemsReplies;

namespace {

QString accumulate(const QStringList &polls)
{
    QString reply;
    for (const QString &input : polls)
        reply = addCommandInput(reply, input);
    return reply;
}

QStringList parseMultiscan(const QString &data)
{
    RecordSet values = WellValues::create();
    clsLabSystemsReader::parse(values, data);
    return wellVals(values);
}

QStringList parseMC340(const QString &data)
{
    RecordSet values = WellValues::create();
    clsLabSystemsMC340::parse(values, data);
    return wellVals(values);
}

} // namespace

TEST(LabSystemsReplies, ACommandReplyGathersItsPiecesWithoutLineEndsAndBlanks)
{
    EXPECT_EQ(accumulate({QStringLiteral("O"), QStringLiteral("K\r\n")}), QStringLiteral("OK"));
    EXPECT_EQ(accumulate({QString(), QStringLiteral(" OK \r\n")}), QStringLiteral("OK"));
    EXPECT_EQ(accumulate({QStringLiteral("E"), QStringLiteral("R"), QStringLiteral("1\r\n")}), QStringLiteral("ER1"));
    // A CR and its LF in different polls are not a pair: they stay, and the reply is no "OK".
    EXPECT_EQ(accumulate({QStringLiteral("OK\r"), QStringLiteral("\n")}), QStringLiteral("OK\r\n"));
}

TEST(LabSystemsReplies, TheWaitForACommandEndsOnOKOrAnErrorOfThreeCharacters)
{
    EXPECT_TRUE(commandReplyComplete(QStringLiteral("OK")));
    EXPECT_FALSE(commandReplyComplete(QStringLiteral("O")));
    EXPECT_FALSE(commandReplyComplete(QStringLiteral("ER")));
    EXPECT_TRUE(commandReplyComplete(QStringLiteral("ER1")));
    EXPECT_TRUE(commandReplyComplete(QStringLiteral("xERx")));
    EXPECT_FALSE(commandReplyComplete(QStringLiteral("OKOK")));
    EXPECT_FALSE(commandReplyComplete(QStringLiteral("er1")));
}

TEST(LabSystemsReplies, TheWaitForAReadEndsOnEnoughDataOrAnyER)
{
    EXPECT_FALSE(readReplyComplete(QString(575, u'1'), 576));
    EXPECT_TRUE(readReplyComplete(QString(576, u'1'), 576));
    EXPECT_FALSE(readReplyComplete(QString(690, u'1'), 691));
    EXPECT_TRUE(readReplyComplete(QStringLiteral("ER"), 576));
    // Read data keeps its blanks; only CR LF pairs go.
    EXPECT_EQ(addReadInput(QStringLiteral(" 0.1"), QStringLiteral("23 0.4\r\n56")), QStringLiteral(" 0.123 0.456"));
}

TEST(LabSystemsReplies, SetFilterFailuresNameTheCauseByTheReply)
{
    EXPECT_EQ(setFilterFailure(QStringLiteral("ER1")),
              QStringLiteral("An instrument malfunction was encountered when attempting to set the filter.  Possible "
                             "causes of this error include: \r\n\t* Incorrect reader selected\r\n\t* Light bulb has "
                             "failed\r\n\t* Selected filter is damaged / not available"));
    EXPECT_EQ(setFilterFailure(QStringLiteral("ER2")),
              QStringLiteral("An invalid command sequence error was encountered when attempting to set the filter.  "
                             "This is probably due either to a problem with the instrument or the use of an instrument "
                             "incompatible with the driver that you selected."));
    const QString unknown = QStringLiteral("An unknown error occurred when attempting to set the filter.  Please make "
                                           "sure that you have selected the correct driver for the instrument you are "
                                           "using.");
    EXPECT_EQ(setFilterFailure(QString()), unknown);
    EXPECT_EQ(setFilterFailure(QStringLiteral("ER1ER1")), unknown);
}

TEST(LabSystemsReplies, BlankOnAirFailuresKeepTheirWording)
{
    EXPECT_EQ(blankOnAirFailure(QStringLiteral("ER1")),
              QStringLiteral("An instrument malfunction was encountered when attempting to set the instrument to blank "
                             "on air. Please make sure that you have selected the correct driver for the instrument that "
                             "you are trying to use."));
    EXPECT_EQ(blankOnAirFailure(QStringLiteral("ER2")),
              QStringLiteral("An invalid command sequence error was encountered when attempting to set the instrument "
                             "to blank on air.  This is probably due either to a problem with the instrument or the use "
                             "of an instrument incompatible with the driver you selected.  "));
    EXPECT_EQ(blankOnAirFailure(QStringLiteral("??")),
              QStringLiteral("An unknown error occurred when attempting to set the instrument  to blank on air. Please "
                             "make sure that you have selected the correct driver for the instrument you are using."));
}

TEST(LabSystemsReplies, ReadFailuresKeepTheirWordingAndER3HasNone)
{
    EXPECT_EQ(readPlateFailure(QStringLiteral("ER1")),
              QStringLiteral("An instrument malfunction was encountered when attempting to read the plate. Possible "
                             "causes of this error include: \r\n\t* Incorrect reader selected\r\n\t* Plate carriage is "
                             "obstructed or broken \r\n\t* Light bulb has failed\r\n\t* Selected filter is damaged / not "
                             "available"));
    EXPECT_EQ(readPlateFailure(QStringLiteral("ER2")),
              QStringLiteral("An invalid command sequence error was encountered when attempting read the plate.  This "
                             "is probably due either to a problem with the instrument or the use of an instrument "
                             "incompatible with the driver you selected.  "));
    EXPECT_EQ(readPlateFailure(QStringLiteral("ER3")), QString());
    EXPECT_EQ(readPlateFailure(QString(120, u'1')),
              QStringLiteral("An unknown error occurred when attempting to read the plate.  Please make sure that you "
                             "have selected the correct driver for the instrument you are using."));
}

TEST(LabSystemsPlateData, AMultiscanPlateIsReadRowAfterRowIntoWellOrder)
{
    const QString capture = readerTestData(QStringLiteral("clsLabSystemsReader/plate.cap"));
    const QStringList vals = parseMultiscan(removeLineEnds(capture));
    ASSERT_EQ(vals.size(), 96);
    EXPECT_EQ(vals[wells::index(1, 1)], QStringLiteral(" 0.357"));  // A1: first field of the first row
    EXPECT_EQ(vals[wells::index(2, 1)], QStringLiteral(" 1.839"));  // B1: first field of the second row
    EXPECT_EQ(vals[wells::index(8, 1)], QStringLiteral(" 1.253"));  // H1
    EXPECT_EQ(vals[wells::index(1, 12)], QStringLiteral(" 1.061")); // A12: last field of the first row
    EXPECT_EQ(vals[wells::index(8, 12)], QStringLiteral(" 1.788")); // H12
}

TEST(LabSystemsPlateData, AnMC340PlateIsReadColumnRecordsWithoutTheirHeaders)
{
    const QString capture = readerTestData(QStringLiteral("clsLabSystemsMC340/plate.cap"));
    const QStringList vals = parseMC340(capture);
    ASSERT_EQ(vals.size(), 96);
    EXPECT_EQ(vals[wells::index(1, 1)], QStringLiteral("  0.898"));
    EXPECT_EQ(vals[wells::index(2, 1)], QStringLiteral("  0.236"));
    EXPECT_EQ(vals[wells::index(8, 1)], QStringLiteral("  1.549"));
    EXPECT_EQ(vals[wells::index(4, 6)], QStringLiteral(" -0.004"));
    EXPECT_EQ(vals[wells::index(1, 12)], QStringLiteral("  1.434"));
    EXPECT_EQ(vals[wells::index(8, 12)], QStringLiteral("  1.128"));
    // The line ends may or may not have been removed before.
    EXPECT_EQ(parseMC340(removeLineEnds(capture)), vals);
}

