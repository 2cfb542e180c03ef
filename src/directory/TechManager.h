#pragma once

#include "core/RecordSet.h"
#include "directory/DirectoryList.h"

#include <QString>

#include <functional>

class ProgramFolder;
class Prompt;

// The work of frmTechManagement, the list of technicians with Add, Edit and Delete.
//
// It holds a copy of the plates of the run in hand (setPlatesRecord / getPlatesRecord):
// a rename reaches them as it reaches the saved plates, and a delete is refused while any
// of them, or any saved plate, names the technician. Their cursor stays on the plate it
// was on.
//
// Commands throw on an unexpected database failure; what they had begun is undone.
class TechManager {
public:
    // Shows frmAddEditTech modally with an option flag and a name, and returns its
    // getTechName once it has closed.
    using FormOpener = std::function<QString(const QString &optionFlag, const QString &techName)>;

    TechManager(const ProgramFolder &folder, Prompt &prompt, FormOpener openForm);

    void setPlatesRecord(const RecordSet &plates) { mPlates = copyRecordset(plates); }
    RecordSet getPlatesRecord() const { return copyRecordset(mPlates); }
    const RecordSet &plates() const { return mPlates; }

    // lstTechNames.
    DirectoryList &list() { return mList; }
    const DirectoryList &list() const { return mList; }
    void fillList();

    // cmdAdd, cmdEdit, cmdDelete.
    void add();
    void edit();
    void deleteTech();

private:
    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    FormOpener mOpenForm;
    RecordSet mPlates;
    DirectoryList mList;
};
