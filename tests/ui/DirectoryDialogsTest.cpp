// The group and technician dialogs driven through their widgets. What a rename reaches and
// when a delete is refused is the directory's (tests/directory); here the keys and buttons.
#include "DirectoryFixture.h"
#include "ModalForm.h"
#include "RunDialogWidgets.h"

#include "ui/frmAddEditGroup.h"
#include "ui/frmAddEditTech.h"
#include "ui/frmGroupManagement.h"
#include "ui/frmTechManagement.h"

#include <gtest/gtest.h>

#include <QPushButton>

#include <memory>

namespace {

using namespace RunDialogWidgets;

QString groupList(const QStringList &first)
{
    return DirectoryFixture::wellList(first);
}

template <typename T> T *child(QWidget *parent, const QString &name)
{
    T *found = parent->findChild<T *>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
}

void click(QWidget *parent, const char *button)
{
    QTest::mouseClick(child<QPushButton>(parent, QString::fromLatin1(button)), Qt::LeftButton);
}

QLineEdit *box(QWidget *form, int index)
{
    return child<QLineEdit>(form, QStringLiteral("txtGroupData_%1").arg(index));
}

// Replaces the text of a box as the user does: select everything, type.
void retype(QLineEdit *edit, const QString &text)
{
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

void selectInList(QListWidget *list, const QString &name)
{
    const QList<QListWidgetItem *> found = list->findItems(name, Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << name.toStdString();
    list->setCurrentItem(found.first());
    list->setFocus();
}

// A management dialog of either kind, shown over the plates of the run.
template <typename Dialog> struct ManagementFixture : DirectoryFixture {
    std::unique_ptr<Dialog> dialog;
    QListWidget *list = nullptr;

    void show(const RecordSet &plates, const char *listName)
    {
        dialog = std::make_unique<Dialog>(folder.folder(), prompt);
        dialog->setPlatesRecord(plates);
        dialog->show();
        list = child<QListWidget>(dialog.get(), QString::fromLatin1(listName));
    }
};

} // namespace

// Add, a double click, Enter, Edit and Delete (key and button) each reach the real form.
TEST(GroupManagementDialog, EveryButtonAndKeyOfTheListReachesItsCommand)
{
    ManagementFixture<frmGroupManagement> f;
    f.addGroup(1, "O'Brien");
    f.show(DirectoryFixture::platesInMemory({groupList({"O'Brien"})}), "lstGroupNames");

    const auto added = whenFormOpens<frmAddEditGroup>(f.dialog.get(), [](frmAddEditGroup *shown) {
        EXPECT_EQ(shown->windowTitle(), "Add New Group");
        retype(box(shown, 0), "McDonald's Farm");
        click(shown, "cmdOK");
    });
    click(f.dialog.get(), "cmdAdd");
    EXPECT_TRUE(*added);
    EXPECT_EQ(itemTexts(f.list), (QStringList{"McDonald's Farm", "O'Brien"}));

    const auto doubleClicked = whenFormOpens<frmAddEditGroup>(f.dialog.get(), [](frmAddEditGroup *shown) {
        EXPECT_EQ(box(shown, 0)->text(), "McDonald's Farm");
        retype(box(shown, 1), "Old McDonald");
        click(shown, "cmdOK");
    });
    doubleClickItem(f.list, 0);
    EXPECT_TRUE(*doubleClicked);
    EXPECT_EQ(f.folder.open().scalar("SELECT Name FROM Groups WHERE GroupName = ?", {"McDonald's Farm"}).toString(),
              "Old McDonald");

    selectInList(f.list, "O'Brien");
    const auto entered = whenFormOpens<frmAddEditGroup>(f.dialog.get(), [](frmAddEditGroup *shown) {
        EXPECT_EQ(shown->windowTitle(), "Edit Group");
        retype(box(shown, 0), "O'Neil");
        QTest::keyClick(box(shown, 0), Qt::Key_Return);
    });
    QTest::keyClick(f.list, Qt::Key_Return);
    EXPECT_TRUE(*entered);
    EXPECT_EQ(f.dialog->getPlatesRecord().valueAt(0, u"Groups").toString(), groupList({"O'Neil"}));
    EXPECT_EQ(f.list->currentItem()->text(), "O'Neil");

    const auto edited = whenFormOpens<frmAddEditGroup>(f.dialog.get(), [](frmAddEditGroup *shown) {
        // A box selects its text when it gets the focus.
        box(shown, 1)->setFocus(Qt::MouseFocusReason);
        box(shown, 0)->setFocus(Qt::MouseFocusReason);
        QTest::qWait(20);
        EXPECT_EQ(box(shown, 0)->selectedText(), "O'Neil");
        click(shown, "cmdCancel");
    });
    click(f.dialog.get(), "cmdEdit");
    EXPECT_TRUE(*edited);

    selectInList(f.list, "McDonald's Farm");
    f.prompt.queueAnswer(MsgAnswer::Yes);
    QTest::keyClick(f.list, Qt::Key_Delete);
    EXPECT_EQ(itemTexts(f.list), QStringList{"O'Neil"});
    selectInList(f.list, "O'Neil"); // on the plate of the run: kept, and the user told
    click(f.dialog.get(), "cmdDelete");
    EXPECT_EQ(f.prompt.count(), 2);
    EXPECT_EQ(f.groupNames(), QStringList{"O'Neil"});
}

TEST(GroupManagementDialog, AFailedRenameIsToldAndTheFormStaysWithNothingChanged)
{
    ManagementFixture<frmGroupManagement> f;
    f.addGroup(1, "O'Brien");
    f.insertPlate(1, 1, "Plate #1", groupList({"O'Brien"}));
    f.insertPlate(1, 2, "Plate #2", groupList({"", "O'Brien"}));
    f.failUpdatesOfPlate("Plate #2");
    f.show(DirectoryFixture::platesInMemory({groupList({"O'Brien"})}), "lstGroupNames");

    selectInList(f.list, "O'Brien");
    const auto opened = whenFormOpens<frmAddEditGroup>(f.dialog.get(), [&f](frmAddEditGroup *shown) {
        retype(box(shown, 0), "O'Neil");
        click(shown, "cmdOK");
        ASSERT_EQ(f.prompt.count(), 1);
        EXPECT_EQ(f.prompt.last().icon, MsgIcon::Critical);
        EXPECT_TRUE(f.prompt.last().text.startsWith("The command could not be completed:\r\n"));
        EXPECT_TRUE(shown->isVisible());
        click(shown, "cmdCancel");
    });
    click(f.dialog.get(), "cmdEdit");
    EXPECT_TRUE(*opened);
    EXPECT_EQ(f.savedGroups(1, 1), groupList({"O'Brien"}));
    EXPECT_EQ(itemTexts(f.list), QStringList{"O'Brien"});
    EXPECT_TRUE(f.dialog->isVisible());
}

// The list and its keys are the group dialog's too; here the technician's own form.
TEST(TechManagementDialog, AddAndRenameWorkWithApostrophes)
{
    ManagementFixture<frmTechManagement> f;
    f.addTech("Bob");
    f.insertPlate(1, 1, "Plate #1", groupList({}), "Bob");
    RecordSet plates = DirectoryFixture::platesInMemory({groupList({})});
    plates.setValueAt(0, u"TechName", "Bob");
    f.show(plates, "lstTechNames");

    const auto added = whenFormOpens<frmAddEditTech>(f.dialog.get(), [](frmAddEditTech *shown) {
        EXPECT_EQ(shown->windowTitle(), "Add New Tech");
        QLineEdit *name = child<QLineEdit>(shown, "txtTechName");
        retype(name, " D'Arcy ");
        QTest::keyClick(name, Qt::Key_Return);
    });
    click(f.dialog.get(), "cmdAdd");
    EXPECT_TRUE(*added);
    EXPECT_EQ(itemTexts(f.list), (QStringList{"Bob", "D'Arcy"}));

    selectInList(f.list, "Bob");
    const auto renamed = whenFormOpens<frmAddEditTech>(f.dialog.get(), [](frmAddEditTech *shown) {
        EXPECT_EQ(shown->windowTitle(), "Edit Tech");
        QLineEdit *name = child<QLineEdit>(shown, "txtTechName");
        EXPECT_EQ(name->text(), "Bob");
        retype(name, "O'Shea");
        click(shown, "cmdOK");
    });
    QTest::keyClick(f.list, Qt::Key_Return);
    EXPECT_TRUE(*renamed);
    EXPECT_EQ(f.savedTech(1, 1), "O'Shea");
    EXPECT_EQ(f.dialog->getPlatesRecord().valueAt(0, u"TechName").toString(), "O'Shea");
    EXPECT_EQ(itemTexts(f.list), (QStringList{"D'Arcy", "O'Shea"}));
}
