#pragma once

#include "core/RecordSet.h"
#include "directory/DirectoryList.h"

#include <QString>

#include <functional>

class ProgramFolder;
class Prompt;

// The work of frmGroupManagement, the list of client groups with Add, Edit and Delete.
//
// It holds a copy of the plates of the run in hand (setPlatesRecord / getPlatesRecord):
// a rename reaches them as it reaches the saved plates, and a delete is refused while any
// of them, or any saved plate, uses the group. Their cursor stays on the plate it was on.
//
// Commands throw on an unexpected database failure; what they had begun is undone.
class GroupManager {
public:
    // Shows frmAddEditGroup modally with an option flag and a group name, and returns its
    // getGroupName once it has closed.
    using FormOpener = std::function<QString(const QString &optionFlag, const QString &groupName)>;

    GroupManager(const ProgramFolder &folder, Prompt &prompt, FormOpener openForm);

    void setPlatesRecord(const RecordSet &plates) { mPlates = copyRecordset(plates); }
    RecordSet getPlatesRecord() const { return copyRecordset(mPlates); }
    const RecordSet &plates() const { return mPlates; }

    // lstGroupNames.
    DirectoryList &list() { return mList; }
    const DirectoryList &list() const { return mList; }
    // Fills the list from the database (the form's load and every refill).
    void fillList();

    // cmdAdd: a new group; the selection stays on its index.
    void add();
    // cmdEdit, with a selected name: edits the group; a new name reaches every saved plate
    // and the plates in hand.
    void edit();
    // cmdDelete, with a selected name: refused while a plate uses the group, otherwise
    // asked and done.
    void deleteGroup();

private:
    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    FormOpener mOpenForm;
    RecordSet mPlates;
    DirectoryList mList;
};
