#include "store/RunBrowser.h"

#include "platform/Prompt.h"
#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"
#include "store/RunDatabase.h"

#include <algorithm>

namespace {

const QString kDatabaseErrorTitle = QStringLiteral("Database Error");
const QString kDeleteRunTitle = QStringLiteral("Delete Run?");

QStringList namesOf(const QVector<CatalogEntry> &entries)
{
    QStringList names;
    names.reserve(entries.size());
    for (const CatalogEntry &e : entries)
        names.append(e.name);
    return names;
}

// A rename that changes nothing but blanks or case is no rename.
bool isNoRename(const QString &newText, const QString &oldText)
{
    const QString trimmed = newText.trimmed();
    return trimmed.isEmpty() || trimmed.toUpper() == oldText.toUpper();
}

QString detailOf(const std::exception &error)
{
    if (const auto *db = dynamic_cast<const DatabaseError *>(&error))
        return db->message();
    return QString::fromUtf8(error.what());
}

} // namespace

RunBrowser::RunBrowser(const ProgramFolder &folder, Prompt &prompt) : mFolder(folder), mPrompt(prompt)
{
}

RunBrowser::~RunBrowser() = default;

DbConnection RunBrowser::openDatabase() const
{
    return ::openDatabase(mFolder);
}

void RunBrowser::reportFailure(const QString &whatFailed, const std::exception &error, const QString &title) const
{
    const QString detail = detailOf(error);
    // The in-use text says itself that nothing was changed: once is enough.
    static const QString kNothingChanged = QStringLiteral(" Nothing was changed.");
    QString what = whatFailed;
    if (detail.contains(kNothingChanged.trimmed()) && what.endsWith(kNothingChanged))
        what.chop(kNothingChanged.size());
    mPrompt.message(what + kCrLf + kCrLf + detail, title.isEmpty() ? kDatabaseErrorTitle : title, MsgIcon::Critical);
}

void RunBrowser::load()
{
    mFolders.clear();
    mFolderIndex = -1;
    mRuns.clear();
    mRunIndex = -1;
    mRunNameText.clear();
    mActiveList = ActiveList::Folders;
    try {
        const DbConnection db = openDatabase();
        const RunCatalog catalog(db);
        mFolders = catalog.folders();
        if (!mFolders.isEmpty()) {
            mFolderIndex = 0;
            fillRuns(catalog);
        }
    } catch (const std::exception &e) {
        mFolders.clear();
        mFolderIndex = -1;
        mRuns.clear();
        reportFailure(QStringLiteral("The folders and runs could not be read from the database."), e);
    }
}

QStringList RunBrowser::folderNames() const
{
    return namesOf(mFolders);
}

QStringList RunBrowser::runNames() const
{
    return namesOf(mRuns);
}

const CatalogEntry *RunBrowser::currentFolder() const
{
    if (mFolderIndex < 0 || mFolderIndex >= mFolders.size())
        return nullptr;
    return &mFolders[mFolderIndex];
}

void RunBrowser::fillRuns(const RunCatalog &catalog)
{
    mRuns.clear();
    mRunIndex = -1;
    if (const CatalogEntry *folder = currentFolder())
        mRuns = catalog.runsInFolder(folder->id);
}

void RunBrowser::selectFolder(int index)
{
    if (index < 0 || index >= mFolders.size())
        return;
    mFolderIndex = index;
    try {
        const DbConnection db = openDatabase();
        fillRuns(RunCatalog(db));
    } catch (const std::exception &e) {
        mRuns.clear();
        mRunIndex = -1;
        reportFailure(QStringLiteral("The runs of this folder could not be read from the database."), e);
    }
}

void RunBrowser::selectRun(int index)
{
    if (index < 0 || index >= mRuns.size())
        return;
    mRunIndex = index;
    mRunNameText = mRuns[index].name;
}

bool RunBrowser::renameFolder(int index, const QString &newText)
{
    if (index < 0 || index >= mFolders.size() || isNoRename(newText, mFolders[index].name))
        return false;
    try {
        const DbConnection db = openDatabase();
        const RunCatalog catalog(db);
        if (catalog.findFolder(newText)) {
            mPrompt.message(QStringLiteral("This folder name already exists.  Please choose another."),
                            QStringLiteral("Folder Name Already Exists"), MsgIcon::Exclamation);
            return false;
        }
        catalog.renameFolder(mFolders[index].id, newText);
    } catch (const std::exception &e) {
        reportFailure(QStringLiteral("The folder could not be renamed. Nothing was changed."), e);
        return false;
    }
    mFolders[index].name = newText;
    return true;
}

bool RunBrowser::renameRun(int index, const QString &newText)
{
    const CatalogEntry *folder = currentFolder();
    if (!folder || index < 0 || index >= mRuns.size() || isNoRename(newText, mRuns[index].name))
        return false;
    try {
        const DbConnection db = openDatabase();
        const RunCatalog catalog(db);
        if (catalog.findRun(folder->id, newText)) {
            mPrompt.message(
                QStringLiteral("A run with this name already exists in this folder.  Please choose another."),
                QStringLiteral("Name Already Exists"), MsgIcon::Exclamation);
            return false;
        }
        catalog.renameRun(mRuns[index].id, newText);
    } catch (const std::exception &e) {
        reportFailure(QStringLiteral("The run could not be renamed. Nothing was changed."), e);
        return false;
    }
    mRuns[index].name = newText;
    return true;
}

int RunBrowser::getNewFolderID() const
{
    const DbConnection db = openDatabase();
    return ::getNewFolderID(db);
}

void RunBrowser::newFolder()
{
    try {
        const DbConnection db = openDatabase();
        const RunCatalog catalog(db);
        qint64 id = 0;
        {
            DbTransaction transaction(db);
            id = ::getNewFolderID(db);
            catalog.addFolder(id, catalog.getNewFolderName());
            transaction.commit();
        }
        mFolders = catalog.folders();
        mFolderIndex = -1;
        for (int i = 0; i < mFolders.size(); ++i) {
            if (mFolders[i].id == id)
                mFolderIndex = i;
        }
        fillRuns(catalog);
    } catch (const std::exception &e) {
        reportFailure(QStringLiteral("The new folder could not be made. Nothing was changed."), e);
    }
}

void RunBrowser::deleteActive()
{
    if (mActiveList == ActiveList::Folders)
        deleteFolder();
    else
        deleteRun();
}

void RunBrowser::deleteRun()
{
    if (mRunIndex < 0 || mRunIndex >= mRuns.size())
        return;
    const CatalogEntry run = mRuns[mRunIndex];
    if (mPrompt.ask(QStringLiteral("Are you sure you want to delete '") + run.name + QStringLiteral("'?"),
                    kDeleteRunTitle, MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    try {
        const DbConnection db = openDatabase();
        DbTransaction transaction(db);
        RunCatalog(db).deleteRun(run.id);
        transaction.commit();
    } catch (const std::exception &e) {
        reportFailure(QStringLiteral("The run could not be deleted. Nothing was changed."), e);
        return;
    }
    mRuns.removeAt(mRunIndex);
    mRunIndex = -1;
}

void RunBrowser::deleteFolder()
{
    const CatalogEntry *selected = currentFolder();
    if (!selected)
        return;
    const CatalogEntry folder = *selected;
    if (mPrompt.ask(QStringLiteral("Are you sure you want to delete '") + folder.name + QStringLiteral("'?"),
                    kDeleteRunTitle, MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    try {
        const DbConnection db = openDatabase();
        const RunCatalog catalog(db);
        if (catalog.folderHasRuns(folder.id) &&
            mPrompt.ask(QStringLiteral("There are existing runs in this folder.  Delete this folder and runs "
                                       "contained in it as well?"),
                        QStringLiteral("Delete Contents of Folder?"), MsgButtons::YesNo) != MsgAnswer::Yes)
            return;
        DbTransaction transaction(db);
        catalog.deleteFolder(folder.id);
        transaction.commit();
    } catch (const std::exception &e) {
        reportFailure(QStringLiteral("The folder could not be deleted. Nothing was changed."), e);
        return;
    }
    mFolders.removeAt(mFolderIndex);
    mRuns.clear();
    mRunIndex = -1;
    if (mFolders.isEmpty()) {
        mFolderIndex = -1;
        return;
    }
    selectFolder(std::min(mFolderIndex, int(mFolders.size()) - 1));
}

void RunBrowser::succeed()
{
    mUserOk = true;
    mRunName = mRunNameText;
}
