// The LabSystems readers' replies as pure text: how replies accumulate, when a wait ends,
// and which words each error reply chooses.

#include "readers/drivers/LabSystemsReplies.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace LabSystemsReplies;

TEST(LabSystemsReplies, ACommandReplyGathersItsPiecesWithoutLineEndsAndBlanks)
{
    const struct {
        QStringList polls;
        const char *reply;
    } cases[] = {
        {{"O", "K\r\n"}, "OK"},
        {{"", " OK \r\n"}, "OK"},
        {{"E", "R", "1\r\n"}, "ER1"},
        // A CR and its LF in different polls are not a pair: they stay, and the reply is no "OK".
        {{"OK\r", "\n"}, "OK\r\n"},
    };
    for (const auto &c : cases) {
        QString reply;
        for (const QString &input : c.polls)
            reply = addCommandInput(reply, input);
        EXPECT_EQ(reply, QString::fromLatin1(c.reply));
    }
    // Read data keeps its blanks; only CR LF pairs go.
    EXPECT_EQ(addReadInput(QStringLiteral(" 0.1"), QStringLiteral("23 0.4\r\n56")), QStringLiteral(" 0.123 0.456"));
}

TEST(LabSystemsReplies, TheWaitForACommandEndsOnOKOrAnErrorOfThreeCharacters)
{
    for (const char *complete : {"OK", "ER1", "xERx"})
        EXPECT_TRUE(commandReplyComplete(QString::fromLatin1(complete))) << complete;
    for (const char *waiting : {"O", "ER", "OKOK", "er1"})
        EXPECT_FALSE(commandReplyComplete(QString::fromLatin1(waiting))) << waiting;
}

TEST(LabSystemsReplies, TheWaitForAReadEndsOnEnoughDataOrAnyER)
{
    EXPECT_FALSE(readReplyComplete(QString(575, u'1'), 576));
    EXPECT_TRUE(readReplyComplete(QString(576, u'1'), 576));
    EXPECT_TRUE(readReplyComplete(QStringLiteral("ER"), 576));
}

TEST(LabSystemsReplies, TheWordsOfAFailureFollowTheErrorReplied)
{
    using Words = QString (*)(const QString &);
    for (Words words : {Words(setFilterFailure), Words(blankOnAirFailure), Words(readPlateFailure)}) {
        const QString er1 = words(QStringLiteral("ER1"));
        const QString er2 = words(QStringLiteral("ER2"));
        const QString unknown = words(QStringLiteral("??"));
        EXPECT_TRUE(er1.contains(QStringLiteral("malfunction"))) << er1.toStdString();
        EXPECT_TRUE(er2.contains(QStringLiteral("invalid command sequence"))) << er2.toStdString();
        EXPECT_TRUE(unknown.contains(QStringLiteral("unknown error"))) << unknown.toStdString();
        // Only a reply that is the error alone names it.
        EXPECT_EQ(words(QStringLiteral("ER1ER1")), unknown);
    }
    // An ER3 of the read has no words: an empty box.
    EXPECT_EQ(readPlateFailure(QStringLiteral("ER3")), QString());
}
