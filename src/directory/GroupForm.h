#pragma once

#include "directory/GroupDirectory.h"

#include <QString>

class ProgramFolder;
class Prompt;

// The work of frmAddEditGroup, the form for one group's name and contact data (boxes
// txtGroupData 0 to 12, in the order of GroupDirectory::columns()).
//
// Modes, by the option flag: "ADD" a blank new group, "ADDNAME" a new group with the name
// preset, "EDIT" an existing group. After OK getGroupName is the name as saved; after
// Cancel it is the name as it was set.
//
// In "EDIT" a new name reaches the Groups lists of the saved plates in the same
// transaction as the group itself; the plates of the run in memory are the caller's.
class GroupForm {
public:
    static inline const QString kAdd = QStringLiteral("ADD");
    static inline const QString kAddName = QStringLiteral("ADDNAME");
    static inline const QString kEdit = QStringLiteral("EDIT");
    static constexpr int kFieldCount = GroupDirectory::kFieldCount;

    GroupForm(const ProgramFolder &folder, Prompt &prompt);

    void setOptionFlag(const QString &flag) { mOptionFlag = flag; }
    QString optionFlag() const { return mOptionFlag; }
    void setGroupName(const QString &name) { mGroupName = name; }
    QString getGroupName() const { return mGroupName; }
    // True when the form was closed by OK; false after Cancel (and before either).
    bool getUserOk() const { return mUserOk; }

    // The opening of the form: the caption, and the boxes (the name for "ADDNAME", the
    // stored group for "EDIT"). Throws DatabaseError, or DirectoryError when the group to
    // edit is no longer there.
    void load();
    QString caption() const { return mCaption; }

    QString field(int index) const { return mFields.at(index); }
    void setField(int index, const QString &text) { mFields.at(index) = text; }
    const GroupDirectory::Fields &fields() const { return mFields; }

    // OK: trims every box in place, checks the name and saves. Returns true when the form
    // closes; false when it stays, after a box has told why. An unexpected database
    // failure throws, with nothing written.
    bool ok();
    // Cancel (also Escape and closing the window).
    void cancel() { mUserOk = false; }

private:
    bool nameIsAcceptable();

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    QString mOptionFlag;
    QString mGroupName;
    QString mCaption;
    GroupDirectory::Fields mFields;
    bool mUserOk = false;
};
