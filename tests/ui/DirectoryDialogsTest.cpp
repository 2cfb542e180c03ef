#include "DirectoryFixture.h"

#include "ui/frmAddEditGroup.h"
#include "ui/frmAddEditTech.h"
#include "ui/frmGroupManagement.h"
#include "ui/frmTechManagement.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

QString wells(const QStringList &first) { return DirectoryFixture::wellList(first); }

// Acts on a modal form as soon as it is on the screen (inside its own event loop). A form
// that the action leaves open is a failure, and is closed so that the test goes on. The
// flag returned tells whether the form opened; the wait ends with the context object, so
// that a form that never opened can't act in a later test.
template <typename Form>
std::shared_ptr<bool> whenFormOpens(QObject *context, std::function<void(Form *)> act)
{
    auto opened = std::make_shared<bool>(false);
    QTimer::singleShot(0, context, [act, opened] {
        Form *form = nullptr;
        for (QWidget *w : QApplication::topLevelWidgets()) {
            if (auto *candidate = qobject_cast<Form *>(w); candidate && candidate->isVisible())
                form = candidate;
        }
        if (!form)
            return;
        *opened = true;
        act(form);
        if (form->isVisible()) {
            ADD_FAILURE() << "the form is still open";
            form->reject();
        }
    });
    return opened;
}

// A double click on a list entry, as the system delivers it.
void doubleClick(QListWidget *list, QListWidgetItem *item)
{
    const QPoint at = list->visualItemRect(item).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
}

template <typename T>
T *child(QWidget *parent, const QString &name)
{
    T *found = parent->findChild<T *>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
}

QLineEdit *box(QWidget *form, int index) { return child<QLineEdit>(form, QStringLiteral("txtGroupData_%1").arg(index)); }

// Replaces the text of a box as the user does: select everything, type.
void retype(QLineEdit *edit, const QString &text)
{
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

QListWidgetItem *itemNamed(QListWidget *list, const QString &name)
{
    const QList<QListWidgetItem *> found = list->findItems(name, Qt::MatchExactly);
    EXPECT_EQ(found.size(), 1) << name.toStdString();
    return found.isEmpty() ? nullptr : found.first();
}

void selectInList(QListWidget *list, const QString &name)
{
    list->setCurrentItem(itemNamed(list, name));
    list->setFocus();
}

} // namespace

// ---------------------------------------------------------------------------------------
// frmAddEditGroup on its own, as the worksheet opens it for a new group name.

TEST(AddEditGroupDialog, AddNameShowsTheNameAndEnterSavesIt)
{
    DirectoryFixture f;
    frmAddEditGroup form(f.folder.folder(), f.prompt);
    form.setOptionFlag("ADDNAME");
    form.setGroupName("O'Brien");
    const auto opened1 = whenFormOpens<frmAddEditGroup>(&form, [](frmAddEditGroup *shown) {
        EXPECT_EQ(shown->windowTitle(), "Add New Group");
        EXPECT_EQ(box(shown, 0)->text(), "O'Brien");
        retype(box(shown, 5), "Cork");
        QTest::keyClick(box(shown, 5), Qt::Key_Return);
    });
    EXPECT_EQ(form.exec(), QDialog::Accepted);
    EXPECT_TRUE(*opened1);
    EXPECT_TRUE(form.getUserOk());
    EXPECT_EQ(form.getGroupName(), "O'Brien");
    EXPECT_EQ(f.groupNames(), QStringList{"O'Brien"});
    DbConnection db = f.folder.open();
    EXPECT_EQ(db.scalar("SELECT City FROM Groups").toString(), "Cork");
    EXPECT_EQ(f.prompt.count(), 0);
}

TEST(AddEditGroupDialog, EscapeCancelsAndTheNameStaysAsItWasSet)
{
    DirectoryFixture f;
    frmAddEditGroup form(f.folder.folder(), f.prompt);
    form.setOptionFlag("ADDNAME");
    form.setGroupName("Newcomer");
    const auto opened2 = whenFormOpens<frmAddEditGroup>(&form, [](frmAddEditGroup *shown) {
        retype(box(shown, 0), "Something else");
        QTest::keyClick(box(shown, 0), Qt::Key_Escape);
    });
    EXPECT_EQ(form.exec(), QDialog::Rejected);
    EXPECT_TRUE(*opened2);
    EXPECT_FALSE(form.getUserOk());
    EXPECT_EQ(form.getGroupName(), "Newcomer");
    EXPECT_TRUE(f.groupNames().isEmpty());
}

TEST(AddEditGroupDialog, ABoxSelectsItsTextWhenItGetsTheFocus)
{
    DirectoryFixture f;
    f.addGroup(1, "Acme");
    frmAddEditGroup form(f.folder.folder(), f.prompt);
    form.setOptionFlag("EDIT");
    form.setGroupName("Acme");
    form.load();
    form.show();
    QApplication::setActiveWindow(&form);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    box(&form, 1)->setFocus(Qt::MouseFocusReason);
    box(&form, 0)->setFocus(Qt::MouseFocusReason);
    QTest::qWait(20);
    EXPECT_EQ(form.windowTitle(), "Edit Group");
    EXPECT_EQ(box(&form, 0)->selectedText(), "Acme");
    form.reject();
}

// ---------------------------------------------------------------------------------------
// frmGroupManagement driving the real frmAddEditGroup.

namespace {

struct GroupDialogFixture : DirectoryFixture {
    std::unique_ptr<frmGroupManagement> dialog;
    QListWidget *list = nullptr;

    frmGroupManagement &show(const RecordSet &plates)
    {
        dialog = std::make_unique<frmGroupManagement>(folder.folder(), prompt);
        dialog->setPlatesRecord(plates);
        dialog->show();
        list = child<QListWidget>(dialog.get(), "lstGroupNames");
        return *dialog;
    }
    QStringList listed() const
    {
        QStringList names;
        for (int i = 0; i < list->count(); ++i)
            names << list->item(i)->text();
        return names;
    }
    QString current() const { return list->currentItem() ? list->currentItem()->text() : QString(); }
};

} // namespace

// How renames reach the plates and when a delete is refused is the manager's; here the
// keys and buttons of the list.
TEST(GroupManagementDialog, EnterOnANameEditsItAndThePlatesComeBackRenamed)
{
    GroupDialogFixture f;
    f.addGroup(1, "O'Brien");
    f.addGroup(2, "Smith");
    RecordSet plates = DirectoryFixture::platesInMemory({wells({"O'Brien"}), wells({"Smith"})});
    f.show(plates);
    EXPECT_EQ(f.listed(), (QStringList{"O'Brien", "Smith"}));

    selectInList(f.list, "O'Brien");
    const auto opened = whenFormOpens<frmAddEditGroup>(f.dialog.get(), [](frmAddEditGroup *shown) {
        EXPECT_EQ(shown->windowTitle(), "Edit Group");
        EXPECT_EQ(box(shown, 0)->text(), "O'Brien");
        retype(box(shown, 0), "O'Neil");
        QTest::keyClick(box(shown, 0), Qt::Key_Return);
    });
    QTest::keyClick(f.list, Qt::Key_Return);
    EXPECT_TRUE(*opened);
    EXPECT_EQ(f.dialog->getPlatesRecord().valueAt(0, u"Groups").toString(), wells({"O'Neil"}));
    EXPECT_EQ(f.listed(), (QStringList{"O'Neil", "Smith"}));
    EXPECT_EQ(f.current(), "O'Neil");
}

TEST(GroupManagementDialog, AddThenDoubleClickEditsTheNewGroup)
{
    GroupDialogFixture f;
    f.show(DirectoryFixture::platesInMemory({wells({})}));
    EXPECT_TRUE(f.listed().isEmpty());

    const auto opened5 = whenFormOpens<frmAddEditGroup>(f.dialog.get(), [](frmAddEditGroup *shown) {
        EXPECT_EQ(shown->windowTitle(), "Add New Group");
        EXPECT_EQ(box(shown, 0)->text(), "");
        retype(box(shown, 0), "McDonald's Farm");
        QTest::mouseClick(child<QPushButton>(shown, "cmdOK"), Qt::LeftButton);
    });
    QTest::mouseClick(child<QPushButton>(f.dialog.get(), "cmdAdd"), Qt::LeftButton);
    EXPECT_TRUE(*opened5);
    EXPECT_EQ(f.listed(), QStringList{"McDonald's Farm"});

    QListWidgetItem *item = itemNamed(f.list, "McDonald's Farm");
    ASSERT_NE(item, nullptr);
    const auto opened6 = whenFormOpens<frmAddEditGroup>(f.dialog.get(), [](frmAddEditGroup *shown) {
        EXPECT_EQ(box(shown, 0)->text(), "McDonald's Farm");
        retype(box(shown, 1), "Old McDonald");
        QTest::mouseClick(child<QPushButton>(shown, "cmdOK"), Qt::LeftButton);
    });
    doubleClick(f.list, item);
    EXPECT_TRUE(*opened6);
    DbConnection db = f.folder.open();
    EXPECT_EQ(db.scalar("SELECT Name FROM Groups WHERE GroupName = ?", {"McDonald's Farm"}).toString(), "Old McDonald");
}

TEST(GroupManagementDialog, TheDeleteKeyAndButtonDeleteAfterYes)
{
    GroupDialogFixture f;
    f.addGroup(1, "Acme");
    f.addGroup(2, "O'Brien");
    f.show(DirectoryFixture::platesInMemory({wells({})}));
    selectInList(f.list, "O'Brien");
    f.prompt.queueAnswer(MsgAnswer::Yes);
    QTest::keyClick(f.list, Qt::Key_Delete);
    selectInList(f.list, "Acme");
    f.prompt.queueAnswer(MsgAnswer::Yes);
    QTest::mouseClick(child<QPushButton>(f.dialog.get(), "cmdDelete"), Qt::LeftButton);
    EXPECT_EQ(f.prompt.count(), 2);
    EXPECT_TRUE(f.groupNames().isEmpty());
    EXPECT_TRUE(f.listed().isEmpty());
}

TEST(GroupManagementDialog, AFailedRenameIsToldAndLeavesTheDatabaseAndThePlatesAsTheyWere)
{
    GroupDialogFixture f;
    f.addGroup(1, "O'Brien");
    f.insertPlate(1, 1, "Plate #1", wells({"O'Brien"}));
    f.insertPlate(1, 2, "Plate #2", wells({"", "O'Brien"}));
    f.failUpdatesOfPlate("Plate #2");
    f.show(DirectoryFixture::platesInMemory({wells({"O'Brien"})}));

    selectInList(f.list, "O'Brien");
    const auto opened7 = whenFormOpens<frmAddEditGroup>(f.dialog.get(), [&f](frmAddEditGroup *shown) {
        retype(box(shown, 0), "O'Neil");
        QTest::mouseClick(child<QPushButton>(shown, "cmdOK"), Qt::LeftButton);
        ASSERT_EQ(f.prompt.count(), 1);
        EXPECT_EQ(f.prompt.last().icon, MsgIcon::Critical);
        EXPECT_EQ(f.prompt.last().title, "Error");
        EXPECT_TRUE(f.prompt.last().text.startsWith("The command could not be completed:\r\n"));
        EXPECT_TRUE(f.prompt.last().text.contains("injected failure"));
        EXPECT_TRUE(shown->isVisible());
        QTest::mouseClick(child<QPushButton>(shown, "cmdCancel"), Qt::LeftButton);
    });
    QTest::mouseClick(child<QPushButton>(f.dialog.get(), "cmdEdit"), Qt::LeftButton);
    EXPECT_TRUE(*opened7);

    EXPECT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.groupNames(), QStringList{"O'Brien"});
    EXPECT_EQ(f.savedGroups(1, 1), wells({"O'Brien"}));
    EXPECT_EQ(f.savedGroups(1, 2), wells({"", "O'Brien"}));
    EXPECT_EQ(f.dialog->getPlatesRecord().valueAt(0, u"Groups").toString(), wells({"O'Brien"}));
    EXPECT_EQ(f.listed(), QStringList{"O'Brien"});
    EXPECT_TRUE(f.dialog->isVisible());
}

// ---------------------------------------------------------------------------------------
// frmTechManagement with frmAddEditTech.

namespace {

struct TechDialogFixture : DirectoryFixture {
    std::unique_ptr<frmTechManagement> dialog;
    QListWidget *list = nullptr;

    void show(const RecordSet &plates)
    {
        dialog = std::make_unique<frmTechManagement>(folder.folder(), prompt);
        dialog->setPlatesRecord(plates);
        dialog->show();
        list = child<QListWidget>(dialog.get(), "lstTechNames");
    }
    QStringList listed() const
    {
        QStringList names;
        for (int i = 0; i < list->count(); ++i)
            names << list->item(i)->text();
        return names;
    }
    static RecordSet platesOf(const QStringList &techs)
    {
        RecordSet plates = platesInMemory(QStringList(techs.size(), wells({})));
        for (int i = 0; i < techs.size(); ++i)
            plates.setValueAt(i, u"TechName", techs[i]);
        return plates;
    }
};

} // namespace

TEST(TechManagementDialog, AddRenameAndDeleteWorkWithApostrophes)
{
    TechDialogFixture f;
    f.addTech("Bob");
    f.insertPlate(1, 1, "Plate #1", wells({}), "Bob");
    RecordSet plates = TechDialogFixture::platesOf({"Bob", "<No Technician Selected>"});
    plates.setPosition(0);
    f.show(plates);
    EXPECT_EQ(f.listed(), QStringList{"Bob"});

    // Add.
    const auto opened8 = whenFormOpens<frmAddEditTech>(f.dialog.get(), [](frmAddEditTech *shown) {
        EXPECT_EQ(shown->windowTitle(), "Add New Tech");
        QLineEdit *name = child<QLineEdit>(shown, "txtTechName");
        retype(name, " D'Arcy ");
        QTest::keyClick(name, Qt::Key_Return);
    });
    QTest::mouseClick(child<QPushButton>(f.dialog.get(), "cmdAdd"), Qt::LeftButton);
    EXPECT_TRUE(*opened8);
    EXPECT_EQ(f.listed(), (QStringList{"Bob", "D'Arcy"}));

    // Rename Bob, who is on a saved plate and on a plate of the run.
    selectInList(f.list, "Bob");
    const auto opened9 = whenFormOpens<frmAddEditTech>(f.dialog.get(), [](frmAddEditTech *shown) {
        EXPECT_EQ(shown->windowTitle(), "Edit Tech");
        QLineEdit *name = child<QLineEdit>(shown, "txtTechName");
        EXPECT_EQ(name->text(), "Bob");
        retype(name, "O'Shea");
        QTest::mouseClick(child<QPushButton>(shown, "cmdOK"), Qt::LeftButton);
    });
    QTest::keyClick(f.list, Qt::Key_Return);
    EXPECT_TRUE(*opened9);
    EXPECT_EQ(f.techNames(), (QStringList{"D'Arcy", "O'Shea"}));
    EXPECT_EQ(f.savedTech(1, 1), "O'Shea");
    const RecordSet back = f.dialog->getPlatesRecord();
    EXPECT_EQ(back.valueAt(0, u"TechName").toString(), "O'Shea");
    EXPECT_EQ(back.valueAt(1, u"TechName").toString(), "<No Technician Selected>");
    EXPECT_EQ(back.position(), 0);
    EXPECT_EQ(f.listed(), (QStringList{"D'Arcy", "O'Shea"}));

    // O'Shea is in use; D'Arcy is not.
    selectInList(f.list, "O'Shea");
    QTest::keyClick(f.list, Qt::Key_Delete);
    EXPECT_EQ(f.prompt.last().title, "Tech Exists in Saved Runs");
    selectInList(f.list, "D'Arcy");
    f.prompt.queueAnswer(MsgAnswer::Yes);
    QTest::keyClick(f.list, Qt::Key_Delete);
    EXPECT_EQ(f.prompt.last().text, "Are you sure you want to delete the technician 'D'Arcy'?");
    EXPECT_EQ(f.techNames(), QStringList{"O'Shea"});
    EXPECT_EQ(f.listed(), QStringList{"O'Shea"});
}

