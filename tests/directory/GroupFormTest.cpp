#include "DirectoryFixture.h"

#include "directory/DirectoryError.h"
#include "directory/GroupDirectory.h"
#include "directory/GroupForm.h"
#include "directory/GroupManager.h"

#include <gtest/gtest.h>

namespace {

const PromptBox kNameRequired{"Group Name Required", "A group name is required.", MsgIcon::Exclamation};
const PromptBox kControlName{"Name conflicts with control sample names.",
                             "This name already exists as a control name.  Please choose another name.", MsgIcon::None};
const PromptBox kGroupExists{"Group Already Exists", "This group already exists in the database.",
                             MsgIcon::Exclamation};

struct GroupFormFixture : ManagerFixture<GroupManager, GroupForm> {
    GroupDirectory::Fields stored(const QString &name) const
    {
        DbConnection db = folder.open();
        return GroupDirectory(db).findGroup(name).value();
    }
};

GroupDirectory::Fields contactFields(const QString &name)
{
    return {name,  "Mary O'Hara", "O'Hara Farms", "1 Dairy Lane", "Unit 2", "Cork",    "Munster",
            "T12", "Ireland",     "021 555",      "021 556",      "m@o.ie", "Dr. Ruth"};
}

} // namespace

TEST(AddGroup, ANameWithAnApostropheIsStoredAsTypedWithAllItsFields)
{
    GroupFormFixture f;
    GroupForm form = f.open(GroupForm::kAdd);
    const GroupDirectory::Fields typed = contactFields("O'Brien");
    for (int i = 0; i < GroupForm::kFieldCount; ++i)
        form.setField(i, typed[i]);
    EXPECT_TRUE(form.ok());
    EXPECT_TRUE(form.getUserOk());
    EXPECT_EQ(form.getGroupName(), "O'Brien");
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.stored("O'Brien"), typed);
    EXPECT_EQ(f.groupNames(), QStringList{"O'Brien"});
}

TEST(AddGroup, EveryBoxIsTrimmedBeforeItIsSaved)
{
    GroupFormFixture f;
    GroupForm form = f.open(GroupForm::kAdd);
    form.setField(0, "  Acme  ");
    form.setField(12, "\tDr. Who ");
    ASSERT_TRUE(form.ok());
    EXPECT_EQ(form.field(0), "Acme");
    EXPECT_EQ(form.getGroupName(), "Acme");
    EXPECT_EQ(f.stored("Acme")[12], "Dr. Who");
}

TEST(AGroupForm, RefusesABadNameWithABoxAndWritesNothing)
{
    const PromptBox delimiter{"Group Name Not Allowed",
                              "A group name cannot contain the character \"¬\".  Please choose another name.",
                              MsgIcon::Exclamation};
    struct Case {
        QString flag;
        QString editing; // the group edited, or none
        QString typed;
        QList<PromptBox> boxes;
    };
    const Case cases[] = {
        {GroupForm::kAdd, {}, "   ", {kNameRequired}},
        {GroupForm::kEdit, "Acme", "", {kNameRequired}},
        {GroupForm::kAdd, {}, "PC", {kControlName}},
        {GroupForm::kAdd, {}, " BLANK ", {kControlName}},
        {GroupForm::kEdit, "Acme", "NC", {kControlName}},
        {GroupForm::kAdd, {}, "o'BRIEN", {kGroupExists}},
        {GroupForm::kAdd, {}, "ødegÅrd farm", {kGroupExists}},
        {GroupForm::kEdit, "Acme", "SMITH", {kGroupExists}},
        // The database finds the group itself under a name that differs only in case, and
        // the program sees a different name: the rename is refused, as it always was.
        {GroupForm::kEdit, "O'Brien", "o'brien", {kGroupExists}},
        {GroupForm::kAdd, {}, "Half¬Half", {delimiter}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.typed.toStdString());
        GroupFormFixture f;
        f.addGroup(1, "Acme");
        f.addGroup(2, "O'Brien");
        f.addGroup(3, "Smith");
        f.addGroup(4, QStringLiteral("Ødegård Farm"));
        f.insertPlate(1, 1, "Plate #1", DirectoryFixture::wellList({"O'Brien"}));
        GroupForm form = f.open(c.flag, c.editing);
        form.setField(0, c.typed);
        form.setField(1, "Somebody");
        EXPECT_FALSE(form.ok());
        EXPECT_FALSE(form.getUserOk());
        EXPECT_EQ(f.prompt.boxes(), c.boxes);
        EXPECT_EQ(form.field(1), "Somebody"); // what was typed stays
        if (!c.editing.isEmpty()) {
            EXPECT_EQ(form.getGroupName(), c.editing);
        }
        EXPECT_EQ(f.groupNames(), (QStringList{"Acme", "O'Brien", "Smith", QStringLiteral("Ødegård Farm")}));
        EXPECT_EQ(f.savedGroups(1, 1), DirectoryFixture::wellList({"O'Brien"}));
    }
}

TEST(AddGroupWithName, TheNameIsPresetAndTheTypedNameComesBackOrCancelKeepsIt)
{
    GroupFormFixture f;
    GroupForm form = f.open(GroupForm::kAddName, "McDonald's");
    EXPECT_EQ(form.field(0), "McDonald's");
    EXPECT_EQ(form.field(1), "");
    form.setField(0, "McDonald's Farm");
    ASSERT_TRUE(form.ok());
    EXPECT_TRUE(form.getUserOk());
    EXPECT_EQ(form.getGroupName(), "McDonald's Farm");

    GroupForm cancelled = f.open(GroupForm::kAddName, "Newcomer");
    cancelled.setField(0, "Changed my mind");
    cancelled.cancel();
    EXPECT_FALSE(cancelled.getUserOk());
    EXPECT_EQ(cancelled.getGroupName(), "Newcomer");
    EXPECT_EQ(f.groupNames(), QStringList{"McDonald's Farm"});
}

TEST(EditGroup, TheStoredFieldsFillTheBoxesAndChangesAreSavedUnderTheSameID)
{
    GroupFormFixture f;
    f.addGroup(4, "O'Brien"); // contact columns Null
    GroupForm form = f.open(GroupForm::kEdit, "O'Brien");
    EXPECT_EQ(form.field(0), "O'Brien");
    for (int i = 1; i < GroupForm::kFieldCount; ++i)
        EXPECT_TRUE(form.field(i).isEmpty());
    const GroupDirectory::Fields typed = contactFields("O'Brien");
    for (int i = 0; i < GroupForm::kFieldCount; ++i)
        form.setField(i, typed[i]);
    ASSERT_TRUE(form.ok());
    EXPECT_EQ(f.stored("O'Brien"), typed);
    EXPECT_EQ(f.folder.open().scalar("SELECT GroupID FROM Groups").toInt(), 4);
}

TEST(EditGroup, AGroupThatIsGoneCannotBeOpened)
{
    GroupFormFixture f;
    EXPECT_THROW(f.open(GroupForm::kEdit, "Nobody"), DirectoryError);
}
