#include "directory/TechManager.h"

#include "directory/PlateNames.h"
#include "directory/TechDirectory.h"
#include "directory/TechForm.h"
#include "platform/Prompt.h"
#include "store/RunDatabase.h"

TechManager::TechManager(const ProgramFolder &folder, Prompt &prompt, FormOpener openForm)
    : mFolder(folder), mPrompt(prompt), mOpenForm(std::move(openForm))
{
}

void TechManager::fillList()
{
    DbConnection db = openDatabase(mFolder);
    mList.setNames(TechDirectory(db).techNames());
}

void TechManager::add()
{
    const int remembered = mList.listIndex();
    mOpenForm(TechForm::kAdd, QString());
    fillList();
    mList.restoreIndex(remembered);
}

void TechManager::edit()
{
    const QString oldName = mList.selectedText();
    if (oldName.isEmpty())
        return;
    const int remembered = mList.listIndex();
    // The form saves the technician and renames the saved plates in one go.
    const QString newName = mOpenForm(TechForm::kEdit, oldName);
    if (!newName.isEmpty() && newName != oldName)
        renameTechInPlates(mPlates, oldName, newName);
    fillList();
    mList.restoreIndex(remembered);
}

void TechManager::deleteTech()
{
    const QString name = mList.selectedText();
    if (name.isEmpty())
        return;
    const int remembered = mList.listIndex();

    if (platesUseTech(mPlates, name)) {
        mPrompt.message(QStringLiteral("This technician exists in the current run.  If you still "
                                       "want to delete this run, please remove this technician from the "
                                       "current run and try again."),
                        QStringLiteral("Tech Exists in Saved Runs"), MsgIcon::None);
        return;
    }
    {
        DbConnection db = openDatabase(mFolder);
        if (TechDirectory(db).savedPlatesUseTech(name)) {
            mPrompt.message(QStringLiteral("This technician exists in previously saved runs.  If you still "
                                           "want to delete this run, please delete any saved runs that use "
                                           "this technician and try again."),
                            QStringLiteral("Technician Exists in Saved Runs"), MsgIcon::None);
            return;
        }
    }

    const MsgAnswer answer = mPrompt.ask(QStringLiteral("Are you sure you want to delete the technician '") + name
                                             + QStringLiteral("'?"),
                                         QStringLiteral("Delete Technician?"), MsgButtons::YesNo, MsgIcon::None);
    if (answer == MsgAnswer::Yes) {
        {
            DbConnection db = openDatabase(mFolder);
            TechDirectory(db).deleteTech(name);
        }
        fillList();
    }
    mList.selectAfterDelete(remembered);
}
