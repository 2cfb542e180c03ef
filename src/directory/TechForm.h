#pragma once

#include <QString>

class ProgramFolder;
class Prompt;

// The work of frmAddEditTech, the form for one technician's name (txtTechName).
//
// Modes, by the option flag: "ADD", "ADDNAME" (name preset) and "EDIT". After OK
// getTechName is the name as saved; after Cancel it is the name as it was set. In "EDIT"
// a new name reaches the saved plates in the same transaction as the technician; the
// plates of the run in memory are the caller's.
class TechForm {
public:
    static inline const QString kAdd = QStringLiteral("ADD");
    static inline const QString kAddName = QStringLiteral("ADDNAME");
    static inline const QString kEdit = QStringLiteral("EDIT");

    TechForm(const ProgramFolder &folder, Prompt &prompt);

    void setOptionFlag(const QString &flag) { mOptionFlag = flag; }
    QString optionFlag() const { return mOptionFlag; }
    void setTechName(const QString &name) { mTechName = name; }
    QString getTechName() const { return mTechName; }
    // True when the form was closed by OK; false after Cancel (and before either).
    bool getUserOk() const { return mUserOk; }

    // The opening: caption and the box. Throws DatabaseError, or DirectoryError when the
    // technician to edit is no longer there.
    void load();
    QString caption() const { return mCaption; }

    // txtTechName.
    QString text() const { return mText; }
    void setText(const QString &text) { mText = text; }

    // OK: trims the box in place, checks it and saves. Returns true when the form closes;
    // false when it stays, after a box has told why. An unexpected database failure
    // throws, with nothing written.
    bool ok();
    void cancel() { mUserOk = false; }

private:
    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    QString mOptionFlag;
    QString mTechName;
    QString mCaption;
    QString mText;
    bool mUserOk = false;
};
