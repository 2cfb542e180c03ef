#pragma once

#include "store/RunCatalog.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <exception>

class DbConnection;
class ProgramFolder;
class Prompt;

// What the Save As and Open dialogs have in common, without a screen: the folder list and
// the run list of the selected folder, the run name box, renaming folders and runs in
// place, New Folder, Delete, Cancel, and the outcome the main window reads (getUserOk,
// getRunName). The object lives as long as the program; load() is the dialog's load at
// each showing, and the outcome keeps its value between showings: only OK and Cancel
// change it, so a dialog closed by its window frame reports what the last one did.
//
// Changes to the database are each one transaction: a failure leaves the database as it
// was and is told in a critical box.
class RunBrowser {
public:
    enum class ActiveList { Folders, Runs };
    // How a command of the dialog ends.
    enum class CommandEnd {
        Stay,         // the dialog stays open
        FocusRunName, // the dialog stays open and the run name box takes the focus
        Close,        // the dialog closes
    };

    RunBrowser(const ProgramFolder &folder, Prompt &prompt);
    virtual ~RunBrowser();

    RunBrowser(const RunBrowser &) = delete;
    RunBrowser &operator=(const RunBrowser &) = delete;

    // The dialog's load: the folders, the first one selected with its runs, an empty run
    // name box, the folder list active.
    void load();

    // The lists (-1: nothing selected).
    QStringList folderNames() const;
    int selectedFolder() const { return mFolderIndex; }
    QStringList runNames() const;
    int selectedRun() const { return mRunIndex; }

    // The run name box (txtRunName).
    QString runNameText() const { return mRunNameText; }
    void setRunNameText(const QString &text) { mRunNameText = text; }

    // The list that had the focus last: the one Delete acts on.
    ActiveList activeList() const { return mActiveList; }
    void setActiveList(ActiveList list) { mActiveList = list; }

    // A click on a folder: its runs fill the run list.
    void selectFolder(int index);
    // A click on a run: its name goes into the run name box.
    void selectRun(int index);

    // The end of an edit in place. True when the new name is taken; false when the edit
    // is to be cancelled (the item keeps its name): an empty name or a change of case
    // only (silently), a name in use (with a box), a failure (with a box).
    bool renameFolder(int index, const QString &newText);
    bool renameRun(int index, const QString &newText);

    // cmdNewFolder: makes "New Folder n" and selects it.
    void newFolder();
    // cmdDelete: the Delete key on the active list.
    void deleteActive();
    // The Delete key on the folder list / the run list: asks, then deletes the selected
    // item with what it holds.
    void deleteFolder();
    void deleteRun();

    // cmdCancel.
    void cancel() { mUserOk = false; }

    bool getUserOk() const { return mUserOk; }
    QString getRunName() const { return mRunName; }
    int getNewFolderID() const;

protected:
    DbConnection openDatabase() const;
    Prompt &prompt() const { return mPrompt; }

    // The selected folder; none when the list is empty.
    const CatalogEntry *currentFolder() const;

    // A successful OK: the run name box becomes the run's name.
    void succeed();
    void setUserOk(bool ok) { mUserOk = ok; }

    // Tells in a critical box that a change to the database failed: what failed, then
    // the database's own words.
    void reportFailure(const QString &whatFailed, const std::exception &error, const QString &title = QString()) const;

private:
    void fillRuns(const RunCatalog &catalog);

    const ProgramFolder &mFolder;
    Prompt &mPrompt;

    QVector<CatalogEntry> mFolders;
    int mFolderIndex = -1;
    QVector<CatalogEntry> mRuns;
    int mRunIndex = -1;
    QString mRunNameText;
    ActiveList mActiveList = ActiveList::Folders;

    bool mUserOk = false;
    QString mRunName;
};
