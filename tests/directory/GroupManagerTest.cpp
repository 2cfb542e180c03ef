#include "DirectoryFixture.h"

#include "directory/GroupForm.h"
#include "directory/GroupManager.h"
#include "store/DatabaseError.h"

#include <gtest/gtest.h>

namespace {

const QString kInCurrentRun = "This group exists in the current run.  If you still want to delete this run, please "
                              "remove this group from the current run and try again.";
const QString kInSavedRuns = "This group exists in previously saved runs.  If you still want to delete this run, "
                             "please delete any saved runs that use this group and try again.";

QString groupList(const QStringList &first)
{
    return DirectoryFixture::wellList(first);
}

using GroupManagerFixture = ManagerFixture<GroupManager, GroupForm>;

} // namespace

TEST(GroupList, ListsEveryGroupAlphabeticallyWithoutRegardToCase)
{
    GroupManagerFixture f;
    f.addGroup(1, "smith");
    f.addGroup(2, "O'Brien");
    f.addGroup(3, "Acme");
    f.manager.fillList();
    EXPECT_EQ(f.manager.list().names(), (QStringList{"Acme", "O'Brien", "smith"}));
    EXPECT_EQ(f.manager.list().listIndex(), -1);
}

TEST(GroupList, AddShowsTheBlankFormAndKeepsTheSelection)
{
    GroupManagerFixture f;
    f.addGroup(1, "Bravo");
    f.addGroup(2, "Delta");
    f.select("Delta");
    f.typedName = "Alpha";
    f.manager.add();
    EXPECT_EQ(f.formsOpened, QStringList{"ADD:"});
    EXPECT_EQ(f.manager.list().names(), (QStringList{"Alpha", "Bravo", "Delta"}));
    EXPECT_EQ(f.manager.list().listIndex(), 1);
}

TEST(GroupRename, ReachesEverySavedPlateAndThePlatesInMemory)
{
    GroupManagerFixture f;
    f.addGroup(1, "O'Brien");
    f.addGroup(2, "Smith");
    f.insertPlate(1, 1, "Plate #1", groupList({"O'Brien", "Smith", "O'Brien"}));
    f.insertPlate(1, 2, "Bob's plate", groupList({"Smith"}));
    f.insertPlate(7, 1, "Plate #1", groupList({"", "", "", "O'Brien", "o'brien"}));
    f.manager.setPlatesRecord(DirectoryFixture::platesInMemory({groupList({"O'Brien"})}));

    f.select("O'Brien");
    f.typedName = "O'Neil";
    f.manager.edit();

    EXPECT_EQ(f.formsOpened, QStringList{"EDIT:O'Brien"});
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.groupNames(), (QStringList{"O'Neil", "Smith"}));
    EXPECT_EQ(f.savedGroups(1, 1), groupList({"O'Neil", "Smith", "O'Neil"}));
    EXPECT_EQ(f.savedGroups(1, 2), groupList({"Smith"}));
    EXPECT_EQ(f.savedGroups(7, 1), groupList({"", "", "", "O'Neil", "o'brien"}));

    // Which items of the plates in hand change is the plate names' rule; here that they do.
    EXPECT_EQ(f.manager.getPlatesRecord().valueAt(0, u"Groups").toString(), groupList({"O'Neil"}));
    EXPECT_EQ(f.manager.list().names(), (QStringList{"O'Neil", "Smith"}));
    EXPECT_EQ(f.manager.list().listIndex(), 0);
}

TEST(GroupRename, TwoPlatesWhoseNamesDifferOnlyInCaseKeepTheirOwnLists)
{
    GroupManagerFixture f;
    f.addGroup(1, "Acme");
    f.insertPlate(3, 1, "Plate A", groupList({"Acme"}));
    f.insertPlate(3, 2, "plate a", groupList({"", "Other"}));
    f.select("Acme");
    f.typedName = "Zenith";
    f.manager.edit();
    EXPECT_EQ(f.savedGroups(3, 1), groupList({"Zenith"}));
    EXPECT_EQ(f.savedGroups(3, 2), groupList({"", "Other"}));
}

TEST(GroupRename, CancelOrTheSameNameChangesNoPlate)
{
    GroupManagerFixture f;
    f.addGroup(1, "Acme");
    const QString shortList = QStringLiteral("Acme¬");
    f.insertPlate(1, 1, "Plate #1", shortList);
    f.manager.setPlatesRecord(DirectoryFixture::platesInMemory({shortList}));

    f.select("Acme");
    f.typedName.reset();
    f.manager.edit();
    f.typedName = " Acme ";
    f.manager.edit();

    EXPECT_EQ(f.formsOpened, (QStringList{"EDIT:Acme", "EDIT:Acme"}));
    EXPECT_EQ(f.savedGroups(1, 1), shortList); // not even rewritten
    EXPECT_EQ(f.manager.plates().valueAt(0, u"Groups").toString(), shortList);
    EXPECT_EQ(f.manager.list().listIndex(), 0);
}

TEST(GroupRename, AFailureHalfWayLeavesTheDatabaseAndThePlatesAsTheyWere)
{
    GroupManagerFixture f;
    f.addGroup(1, "O'Brien");
    f.insertPlate(1, 1, "Plate #1", groupList({"O'Brien"}));
    f.insertPlate(1, 2, "Plate #2", groupList({"", "O'Brien"}));
    f.insertPlate(1, 3, "Plate #3", groupList({"", "", "O'Brien"}));
    f.failUpdatesOfPlate("Plate #2");
    const RecordSet inMemory = DirectoryFixture::platesInMemory({groupList({"O'Brien"})});
    f.manager.setPlatesRecord(inMemory);

    f.select("O'Brien");
    f.typedName = "O'Neil";
    EXPECT_THROW(f.manager.edit(), DatabaseError);

    EXPECT_EQ(f.groupNames(), QStringList{"O'Brien"});
    EXPECT_EQ(f.savedGroups(1, 1), groupList({"O'Brien"}));
    EXPECT_EQ(f.savedGroups(1, 2), groupList({"", "O'Brien"}));
    EXPECT_EQ(f.savedGroups(1, 3), groupList({"", "", "O'Brien"}));
    EXPECT_EQ(f.manager.plates().valueAt(0, u"Groups").toString(), groupList({"O'Brien"}));
}

TEST(GroupRename, ASavedListThatCannotBeReadStopsTheRenameWithNothingChanged)
{
    GroupManagerFixture f;
    f.addGroup(1, "Acme");
    f.insertPlate(1, 1, "Plate #1", groupList({"Acme"}));
    f.insertPlate(1, 2, "Plate #2", QString(97, kWellDelimiter));
    f.select("Acme");
    f.typedName = "Zenith";
    EXPECT_THROW(f.manager.edit(), WellListOverflow);
    EXPECT_EQ(f.groupNames(), QStringList{"Acme"});
    EXPECT_EQ(f.savedGroups(1, 1), groupList({"Acme"}));
}

TEST(GroupDelete, AGroupInUseIsKeptAndAnUnusedOneGoesAfterYes)
{
    const PromptBox asked{"Delete Group?", "Are you sure you want to delete the group 'O'Brien'?", MsgIcon::None,
                          MsgButtons::YesNo};
    struct Case {
        const char *label;
        QString savedList;    // of a saved plate of another run
        QStringList inMemory; // the group lists of the run in hand
        MsgAnswer answer;
        QList<PromptBox> boxes;
        bool deleted;
    };
    const Case cases[] = {
        {"used only in an unsaved plate of the run",
         groupList({}),
         {groupList({}), groupList({"", "O'Brien"})},
         MsgAnswer::Yes,
         {PromptBox{"Group Exists in Saved Runs", kInCurrentRun}},
         false},
        {"used in a saved plate",
         groupList({"", "", "O'Brien"}),
         {groupList({"Smith"})},
         MsgAnswer::Yes,
         {PromptBox{"Group Exists in Saved Runs", kInSavedRuns}},
         false},
        {"names in plates compared exactly",
         groupList({"o'brien", "O'Brien "}),
         {groupList({"O'BRIEN"})},
         MsgAnswer::Yes,
         {asked},
         true},
        {"unused, answered No", groupList({}), {groupList({})}, MsgAnswer::No, {asked}, false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        GroupManagerFixture f;
        f.addGroup(1, "Acme");
        f.addGroup(2, "O'Brien");
        f.addGroup(3, "Smith");
        f.insertPlate(5, 2, "Plate #2", c.savedList);
        RecordSet inMemory = DirectoryFixture::platesInMemory(c.inMemory);
        inMemory.setPosition(0);
        f.manager.setPlatesRecord(inMemory);
        f.select("O'Brien");
        f.prompt.queueAnswer(c.answer);
        f.manager.deleteGroup();
        EXPECT_EQ(f.prompt.boxes(), c.boxes);
        const QStringList left = c.deleted ? QStringList{"Acme", "Smith"} : QStringList{"Acme", "O'Brien", "Smith"};
        EXPECT_EQ(f.groupNames(), left);
        EXPECT_EQ(f.manager.list().names(), left);
        // A group kept by the check stays selected; after a delete, the entry above the deleted one is.
        if (c.answer == MsgAnswer::Yes) {
            EXPECT_EQ(f.manager.list().listIndex(), c.deleted ? 0 : 1);
        }
        EXPECT_EQ(f.manager.plates().position(), 0);
    }
}

TEST(GroupDelete, TheSelectionGoesToTheFirstEntryWhenTheFirstWasDeleted)
{
    GroupManagerFixture f;
    f.addGroup(1, "Acme");
    f.addGroup(2, "Bravo");
    f.select("Acme");
    f.manager.deleteGroup(); // the fake answers Yes
    EXPECT_EQ(f.manager.list().names(), QStringList{"Bravo"});
    EXPECT_EQ(f.manager.list().listIndex(), 0);

    f.select("Bravo");
    f.manager.deleteGroup();
    EXPECT_TRUE(f.manager.list().names().isEmpty());
    EXPECT_EQ(f.manager.list().listIndex(), -1);
}

TEST(GroupList, CommandsWithoutASelectionDoNothing)
{
    GroupManagerFixture f;
    f.addGroup(1, "Acme");
    f.manager.fillList();
    f.manager.edit();
    f.manager.deleteGroup();
    EXPECT_TRUE(f.formsOpened.isEmpty());
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.groupNames(), QStringList{"Acme"});
}
