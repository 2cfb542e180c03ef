#include "DirectoryFixture.h"

#include "directory/DirectoryError.h"
#include "directory/GroupDirectory.h"
#include "directory/GroupForm.h"

#include <gtest/gtest.h>

namespace {

const PromptBox kNameRequired{"Group Name Required", "A group name is required.", MsgIcon::Exclamation};
const PromptBox kControlName{"Name conflicts with control sample names.",
                             "This name already exists as a control name.  Please choose another name.", MsgIcon::None};
const PromptBox kGroupExists{"Group Already Exists", "This group already exists in the database.",
                             MsgIcon::Exclamation};

struct GroupFormFixture : DirectoryFixture {
    GroupForm open(const QString &flag, const QString &name = QString())
    {
        GroupForm form(folder.folder(), prompt);
        form.setOptionFlag(flag);
        form.setGroupName(name);
        form.load();
        return form;
    }

    GroupDirectory::Fields stored(const QString &name) const
    {
        DbConnection db = folder.open();
        return GroupDirectory(db).findGroup(name).value();
    }
};

GroupDirectory::Fields contactFields(const QString &name)
{
    return {name,       "Mary O'Hara", "O'Hara Farms", "1 Dairy Lane", "Unit 2", "Cork", "Munster",
            "T12",      "Ireland",     "021 555",      "021 556",      "m@o.ie", "Dr. Ruth"};
}

} // namespace

TEST(AddGroup, ANameWithAnApostropheIsStoredAsTypedWithAllItsFields)
{
    GroupFormFixture f;
    GroupForm form = f.open(GroupForm::kAdd);
    EXPECT_EQ(form.caption(), "Add New Group");
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

TEST(AddGroup, AnEmptyOrBlankNameIsRefusedAndTheFormStays)
{
    GroupFormFixture f;
    GroupForm form = f.open(GroupForm::kAdd);
    form.setField(0, "   ");
    form.setField(1, "Somebody");
    EXPECT_FALSE(form.ok());
    EXPECT_FALSE(form.getUserOk());
    EXPECT_EQ(f.prompt.boxes(), QList<PromptBox>{kNameRequired});
    EXPECT_EQ(form.field(1), "Somebody"); // what was typed stays
    EXPECT_TRUE(f.groupNames().isEmpty());
}

TEST(AddGroup, TheFourControlNamesAreRefused)
{
    GroupFormFixture f;
    for (const char *control : {"PC", "NC", "AUX", "BLANK", " PC "}) {
        f.prompt.clearBoxes();
        GroupForm form = f.open(GroupForm::kAdd);
        form.setField(0, control);
        EXPECT_FALSE(form.ok()) << control;
        EXPECT_EQ(f.prompt.boxes(), QList<PromptBox>{kControlName}) << control;
    }
    EXPECT_TRUE(f.groupNames().isEmpty());
}

TEST(AddGroup, ANameThatExistsInAnyCaseOfAnyLetterIsRefused)
{
    for (const auto &[stored, typed] : {std::pair{"O'Brien", "o'BRIEN"}, std::pair{"Ødegård Farm", "ødegÅrd farm"}}) {
        GroupFormFixture f;
        f.addGroup(1, QString::fromUtf8(stored));
        GroupForm form = f.open(GroupForm::kAdd);
        form.setField(0, QString::fromUtf8(typed));
        EXPECT_FALSE(form.ok()) << typed;
        EXPECT_EQ(f.prompt.boxes(), QList<PromptBox>{kGroupExists});
        EXPECT_EQ(f.groupNames(), QStringList{QString::fromUtf8(stored)});
        EXPECT_EQ(f.stored(QString::fromUtf8(typed))[0], QString::fromUtf8(stored));
    }
}

TEST(AddGroup, TheWellListDelimiterCannotBeInAName)
{
    GroupFormFixture f;
    GroupForm form = f.open(GroupForm::kAdd);
    form.setField(0, QStringLiteral("Half¬Half"));
    EXPECT_FALSE(form.ok());
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().title, "Group Name Not Allowed");
    EXPECT_EQ(f.prompt.last().text, QStringLiteral("A group name cannot contain the character \"¬\".  Please choose another name."));
    EXPECT_TRUE(f.groupNames().isEmpty());
}

TEST(AddGroupWithName, TheNameIsPresetAndTheTypedNameComesBack)
{
    GroupFormFixture f;
    GroupForm form = f.open(GroupForm::kAddName, "McDonald's");
    EXPECT_EQ(form.caption(), "Add New Group");
    EXPECT_EQ(form.field(0), "McDonald's");
    EXPECT_EQ(form.field(1), "");
    ASSERT_TRUE(form.ok());
    EXPECT_TRUE(form.getUserOk());
    EXPECT_EQ(form.getGroupName(), "McDonald's");
    EXPECT_EQ(f.groupNames(), QStringList{"McDonald's"});
}

TEST(AddGroupWithName, CancelKeepsTheNameAsSetAndWritesNothing)
{
    GroupFormFixture f;
    GroupForm form = f.open(GroupForm::kAddName, "Newcomer");
    form.setField(0, "Changed my mind");
    form.cancel();
    EXPECT_FALSE(form.getUserOk());
    EXPECT_EQ(form.getGroupName(), "Newcomer");
    EXPECT_TRUE(f.groupNames().isEmpty());
}

TEST(EditGroup, TheStoredFieldsFillTheBoxesAndNullReadsEmpty)
{
    GroupFormFixture f;
    f.addGroup(4, "O'Brien"); // contact columns Null
    GroupForm form = f.open(GroupForm::kEdit, "O'Brien");
    EXPECT_EQ(form.caption(), "Edit Group");
    EXPECT_EQ(form.field(0), "O'Brien");
    for (int i = 1; i < GroupForm::kFieldCount; ++i)
        EXPECT_TRUE(form.field(i).isEmpty());
}

TEST(EditGroup, ChangedContactFieldsAreSavedUnderTheSameID)
{
    GroupFormFixture f;
    f.addGroup(4, "O'Brien");
    GroupForm form = f.open(GroupForm::kEdit, "O'Brien");
    const GroupDirectory::Fields typed = contactFields("O'Brien");
    for (int i = 0; i < GroupForm::kFieldCount; ++i)
        form.setField(i, typed[i]);
    ASSERT_TRUE(form.ok());
    EXPECT_EQ(form.getGroupName(), "O'Brien");
    EXPECT_EQ(f.stored("O'Brien"), typed);
    DbConnection db = f.folder.open();
    EXPECT_EQ(db.scalar("SELECT GroupID FROM Groups").toInt(), 4);
}

TEST(EditGroup, ARenameOntoAnotherGroupIsRefused)
{
    GroupFormFixture f;
    f.addGroup(1, "Acme");
    f.addGroup(2, "Smith");
    GroupForm form = f.open(GroupForm::kEdit, "Acme");
    form.setField(0, "SMITH");
    EXPECT_FALSE(form.ok());
    EXPECT_EQ(f.prompt.boxes(), QList<PromptBox>{kGroupExists});
    EXPECT_EQ(f.groupNames(), (QStringList{"Acme", "Smith"}));
}

// The database finds the group itself under a name that differs only in case, and the
// program sees a different name: the rename is refused, as it always was.
TEST(EditGroup, ARenameThatChangesOnlyTheCaseIsRefused)
{
    GroupFormFixture f;
    f.addGroup(1, "o'brien");
    f.insertPlate(1, 1, "Plate #1", DirectoryFixture::wellList({"o'brien"}));
    GroupForm form = f.open(GroupForm::kEdit, "o'brien");
    form.setField(0, "O'Brien");
    EXPECT_FALSE(form.ok());
    EXPECT_EQ(f.prompt.boxes(), QList<PromptBox>{kGroupExists});
    EXPECT_EQ(form.getGroupName(), "o'brien");
    EXPECT_EQ(f.groupNames(), QStringList{"o'brien"});
    EXPECT_EQ(f.savedGroups(1, 1), DirectoryFixture::wellList({"o'brien"}));
}

TEST(EditGroup, TheControlNameAndEmptyNameChecksComeFirst)
{
    GroupFormFixture f;
    f.addGroup(1, "Acme");
    GroupForm form = f.open(GroupForm::kEdit, "Acme");
    form.setField(0, "NC");
    EXPECT_FALSE(form.ok());
    form.setField(0, "");
    EXPECT_FALSE(form.ok());
    EXPECT_EQ(f.prompt.boxes(), (QList<PromptBox>{kControlName, kNameRequired}));
    EXPECT_EQ(f.groupNames(), QStringList{"Acme"});
}

TEST(EditGroup, AGroupThatIsGoneCannotBeOpened)
{
    GroupFormFixture f;
    GroupForm form(f.folder.folder(), f.prompt);
    form.setOptionFlag(GroupForm::kEdit);
    form.setGroupName("Nobody");
    EXPECT_THROW(form.load(), DirectoryError);
}
