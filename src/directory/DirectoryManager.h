#pragma once

#include "core/RecordSet.h"
#include "directory/DirectoryList.h"

#include <QString>

#include <functional>

struct DirectoryKind;
class ProgramFolder;
class Prompt;

// The work of a management dialog (frmGroupManagement, frmTechManagement): the list of the
// directory's names with Add, Edit and Delete.
//
// It holds a copy of the plates of the run in hand (setPlatesRecord / getPlatesRecord):
// a rename reaches them as it reaches the saved plates, and a delete is refused while any
// of them, or any saved plate, uses the entry. Their cursor stays on the plate it was on.
//
// Commands throw on an unexpected database failure; what they had begun is undone.
class DirectoryManager {
public:
    // Shows the form for one entry modally with an option flag and a name, and returns the
    // name it ends with once it has closed.
    using FormOpener = std::function<QString(const QString &optionFlag, const QString &name)>;

    DirectoryManager(const DirectoryKind &kind, const ProgramFolder &folder, Prompt &prompt, FormOpener openForm);

    void setPlatesRecord(const RecordSet &plates) { mPlates = copyRecordset(plates); }
    RecordSet getPlatesRecord() const { return copyRecordset(mPlates); }
    const RecordSet &plates() const { return mPlates; }

    // The list box.
    DirectoryList &list() { return mList; }
    const DirectoryList &list() const { return mList; }
    // Fills the list from the database (the form's load and every refill).
    void fillList();

    // cmdAdd: a new entry; the selection stays on its index.
    void add();
    // cmdEdit, with a selected name: edits the entry; a new name reaches every saved plate
    // and the plates in hand.
    void edit();
    // cmdDelete, with a selected name: refused while a plate uses the entry, otherwise
    // asked and done.
    void deleteEntry();

private:
    const DirectoryKind &mKind;
    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    FormOpener mOpenForm;
    RecordSet mPlates;
    DirectoryList mList;
};
