#pragma once

#include <QString>
#include <QStringList>

struct DirectoryKind;
class ProgramFolder;
class Prompt;

// The work of the form for one directory entry (frmAddEditGroup, frmAddEditTech): its
// boxes, the name first, in the order of the kind's table columns.
//
// Modes, by the option flag: "ADD" a blank new entry, "ADDNAME" a new entry with the name
// preset, "EDIT" an existing entry. After OK getName is the name as saved; after Cancel it
// is the name as it was set. In "EDIT" a new name reaches the saved plates in the same
// transaction as the entry itself; the plates of the run in memory are the caller's.
class DirectoryForm {
public:
    static inline const QString kAdd = QStringLiteral("ADD");
    static inline const QString kAddName = QStringLiteral("ADDNAME");
    static inline const QString kEdit = QStringLiteral("EDIT");

    DirectoryForm(const DirectoryKind &kind, const ProgramFolder &folder, Prompt &prompt);

    void setOptionFlag(const QString &flag) { mOptionFlag = flag; }
    QString optionFlag() const { return mOptionFlag; }
    void setName(const QString &name) { mName = name; }
    QString getName() const { return mName; }
    // True when the form was closed by OK; false after Cancel (and before either).
    bool getUserOk() const { return mUserOk; }

    // The opening of the form: the caption, and the boxes (the name for "ADDNAME", the
    // stored entry for "EDIT"). Throws DatabaseError, or DirectoryError when the entry to
    // edit is no longer there.
    void load();
    QString caption() const { return mCaption; }

    int fieldCount() const { return int(mFields.size()); }
    QString field(int index) const { return mFields.at(index); }
    void setField(int index, const QString &text) { mFields[index] = text; }

    // OK: trims every box in place, checks the name and saves. Returns true when the form
    // closes; false when it stays, after a box has told why. An unexpected database
    // failure throws, with nothing written.
    bool ok();
    // Cancel (also Escape and closing the window).
    void cancel() { mUserOk = false; }

private:
    bool nameIsAcceptable();

    const DirectoryKind &mKind;
    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    QString mOptionFlag;
    QString mName;
    QString mCaption;
    QStringList mFields;
    bool mUserOk = false;
};
