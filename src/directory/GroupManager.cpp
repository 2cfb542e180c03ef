#include "directory/GroupManager.h"

#include "directory/GroupDirectory.h"
#include "directory/GroupForm.h"
#include "directory/PlateNames.h"
#include "platform/Prompt.h"
#include "store/RunDatabase.h"

GroupManager::GroupManager(const ProgramFolder &folder, Prompt &prompt, FormOpener openForm)
    : mFolder(folder), mPrompt(prompt), mOpenForm(std::move(openForm))
{
}

void GroupManager::fillList()
{
    DbConnection db = openDatabase(mFolder);
    mList.setNames(GroupDirectory(db).groupNames());
}

void GroupManager::add()
{
    const int remembered = mList.listIndex();
    mOpenForm(GroupForm::kAdd, QString());
    fillList();
    mList.restoreIndex(remembered);
}

void GroupManager::edit()
{
    const QString oldName = mList.selectedText();
    if (oldName.isEmpty())
        return;
    const int remembered = mList.listIndex();
    // The form saves the group and rewrites the saved plates in one go.
    const QString newName = mOpenForm(GroupForm::kEdit, oldName);
    if (!newName.isEmpty() && newName != oldName)
        renameGroupInPlates(mPlates, oldName, newName);
    fillList();
    mList.restoreIndex(remembered);
}

void GroupManager::deleteGroup()
{
    const QString name = mList.selectedText();
    if (name.isEmpty())
        return;
    const int remembered = mList.listIndex();
    const QString title = QStringLiteral("Group Exists in Saved Runs");

    if (platesUseGroup(mPlates, name)) {
        mPrompt.message(QStringLiteral("This group exists in the current run.  If you still "
                                       "want to delete this run, please remove this group from the "
                                       "current run and try again."),
                        title, MsgIcon::None);
        return;
    }
    {
        DbConnection db = openDatabase(mFolder);
        if (GroupDirectory(db).savedPlatesUseGroup(name)) {
            mPrompt.message(QStringLiteral("This group exists in previously saved runs.  If you still "
                                           "want to delete this run, please delete any saved runs that use "
                                           "this group and try again."),
                            title, MsgIcon::None);
            return;
        }
    }

    const MsgAnswer answer =
        mPrompt.ask(QStringLiteral("Are you sure you want to delete the group '") + name + QStringLiteral("'?"),
                    QStringLiteral("Delete Group?"), MsgButtons::YesNo, MsgIcon::None);
    if (answer == MsgAnswer::Yes) {
        {
            DbConnection db = openDatabase(mFolder);
            GroupDirectory(db).deleteGroup(name);
        }
        fillList();
    }
    mList.selectAfterDelete(remembered);
}
