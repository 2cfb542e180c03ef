#include "directory/DirectoryManager.h"

#include "directory/DirectoryForm.h"
#include "directory/DirectoryKind.h"
#include "platform/Prompt.h"
#include "store/RunDatabase.h"

DirectoryManager::DirectoryManager(const DirectoryKind &kind, const ProgramFolder &folder, Prompt &prompt,
                                   FormOpener openForm)
    : mKind(kind), mFolder(folder), mPrompt(prompt), mOpenForm(std::move(openForm))
{
}

void DirectoryManager::fillList()
{
    DbConnection db = openDatabase(mFolder);
    mList.setNames(mKind.names(db));
}

void DirectoryManager::add()
{
    const int remembered = mList.listIndex();
    mOpenForm(DirectoryForm::kAdd, QString());
    fillList();
    mList.restoreIndex(remembered);
}

void DirectoryManager::edit()
{
    const QString oldName = mList.selectedText();
    if (oldName.isEmpty())
        return;
    const int remembered = mList.listIndex();
    // The form saves the entry and renames it in the saved plates in one go.
    const QString newName = mOpenForm(DirectoryForm::kEdit, oldName);
    if (!newName.isEmpty() && newName != oldName)
        mKind.renameInPlates(mPlates, oldName, newName);
    fillList();
    mList.restoreIndex(remembered);
}

void DirectoryManager::deleteEntry()
{
    const QString name = mList.selectedText();
    if (name.isEmpty())
        return;
    const int remembered = mList.listIndex();

    if (mKind.platesUse(mPlates, name)) {
        mPrompt.message(mKind.inRunText, mKind.inRunTitle, MsgIcon::None);
        return;
    }
    {
        DbConnection db = openDatabase(mFolder);
        if (mKind.savedPlatesUse(db, name)) {
            mPrompt.message(mKind.inSavedText, mKind.inSavedTitle, MsgIcon::None);
            return;
        }
    }

    const MsgAnswer answer = mPrompt.ask(mKind.deleteQuestion + name + QStringLiteral("'?"), mKind.deleteTitle,
                                         MsgButtons::YesNo, MsgIcon::None);
    if (answer == MsgAnswer::Yes) {
        {
            DbConnection db = openDatabase(mFolder);
            mKind.remove(db, name);
        }
        fillList();
    }
    mList.selectAfterDelete(remembered);
}
