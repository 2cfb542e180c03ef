// The warnings before a read: controls short of the kit's minimum and a filter outside
// the kit's range, each with the choice to read anyway.

#include "TestPlate.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

const QString kTail = QStringLiteral(" for test validation and for test results to be calculated.  Optical densities "
                                     "can still be read, but validation will fail and calculations will not be "
                                     "performed.\r\n\r\nDo you want to continue?");

PromptBox controlsBox(const char *minimum, const char *what)
{
    PromptBox box{QStringLiteral("Essential Controls Missing"),
                  QStringLiteral("You must have at least ") + QString::fromLatin1(minimum) + QString::fromLatin1(what) +
                      kTail,
                  MsgIcon::Exclamation};
    box.buttons = MsgButtons::YesNo;
    return box;
}

PromptBox filterBox()
{
    PromptBox box{QStringLiteral("Invalid Filter"),
                  QStringLiteral("The selected filter is invalid for this test. Optical densities can still be read, "
                                 "but validation will fail and calculations will not be performed.\r\n\r\nDo you want "
                                 "to continue?"),
                  MsgIcon::None};
    box.buttons = MsgButtons::YesNo;
    return box;
}

const PromptBox kNoPC = controlsBox("1", " positive controls");
const PromptBox kNoNC = controlsBox("1", " negative controls");
const QList<PromptBox> kShortOfBoth{controlsBox("2", " positive controls"), controlsBox("3", " negative controls")};

} // namespace

struct ConfirmCase {
    const char *name;
    const char *test;
    int pcs, ncs;
    qint16 filter;
    std::vector<MsgAnswer> answers;
    QList<PromptBox> boxes;
    bool readGoesOn;
};

TEST(ConfirmBeforeRead, WarnsOfWhatWillFailValidation)
{
    const ConfirmCase cases[] = {
        ConfirmCase{"AllThere", "JMV v2 6615.01-1", 1, 1, 450, {}, {}, true},
        ConfirmCase{"NoNcStop", "JMV v2 6615.01-1", 1, 0, 450, {MsgAnswer::No}, {kNoNC}, false},
        ConfirmCase{"ShortOfBoth", "WQD 6WQ0.20", 1, 2, 450, {MsgAnswer::Yes, MsgAnswer::Yes}, kShortOfBoth, true},
        ConfirmCase{
            "ShortOfBothStopAtSecond", "WQD 6WQ0.20", 1, 2, 450, {MsgAnswer::Yes, MsgAnswer::No}, kShortOfBoth, false},
        ConfirmCase{"WrongFilterStop", "JMV v2 6615.01-1", 1, 1, 630, {MsgAnswer::No}, {filterBox()}, false},
        ConfirmCase{"EverythingWrong",
                    "JMV v2 6615.01-1",
                    0,
                    0,
                    630,
                    {MsgAnswer::Yes, MsgAnswer::Yes, MsgAnswer::Yes},
                    {kNoPC, kNoNC, filterBox()},
                    true},
        ConfirmCase{"StopAtTheFirst", "JMV v2 6615.01-1", 0, 0, 630, {MsgAnswer::No}, {kNoPC}, false},
        ConfirmCase{"GenericNeedsNothing", "Generic", 0, 0, 630, {}, {}, true}};
    for (const ConfirmCase &c : cases) {
        SCOPED_TRACE(c.name);
        TestPlate p(QString::fromLatin1(c.test));
        const char *const pcWells[] = {"A1", "B1", "C1"};
        const char *const ncWells[] = {"A2", "B2", "C2"};
        for (int i = 0; i < c.pcs; ++i)
            p.put(pcWells[i], QStringLiteral("PC"), 0.0);
        for (int i = 0; i < c.ncs; ++i)
            p.put(ncWells[i], QStringLiteral("NC"), 0.0);
        FakePrompt prompt;
        for (MsgAnswer answer : c.answers)
            prompt.queueAnswer(answer);

        EXPECT_EQ(PlateEvaluator::confirmControlsBeforeRead(p.in, c.filter, prompt), c.readGoesOn);
        EXPECT_EQ(prompt.boxes(), c.boxes);
        EXPECT_EQ(prompt.pendingAnswers(), 0);
    }
}

TEST(ConfirmBeforeRead, ControlsExcludedOrInAnotherCaseAreCountedAsTheCountsShowThem)
{
    TestPlate p(kJmv2);
    p.put("A1", QStringLiteral("PC"), 1.0);
    p.setFlag("A1", 0);
    p.put("A2", QStringLiteral("nc"), 0.1); // counted without regard to case
    FakePrompt prompt;
    prompt.queueAnswer(MsgAnswer::No);
    EXPECT_FALSE(PlateEvaluator::confirmControlsBeforeRead(p.in, 450, prompt));
    EXPECT_EQ(prompt.boxes(), QList<PromptBox>{kNoPC});
}
