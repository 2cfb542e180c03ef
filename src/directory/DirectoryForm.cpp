#include "directory/DirectoryForm.h"

#include "core/WellList.h"
#include "directory/DirectoryError.h"
#include "directory/DirectoryKind.h"
#include "platform/Prompt.h"
#include "store/RunDatabase.h"
#include "worksheet/PlateSheet.h"

DirectoryForm::DirectoryForm(const DirectoryKind &kind, const ProgramFolder &folder, Prompt &prompt)
    : mKind(kind), mFolder(folder), mPrompt(prompt)
{
    mFields.resize(mKind.fieldCount);
}

void DirectoryForm::load()
{
    mFields.fill(QString());
    mCaption = mOptionFlag == kAdd || mOptionFlag == kAddName ? mKind.addCaption : mKind.editCaption;
    if (mOptionFlag == kAddName) {
        mFields[0] = mName;
    } else if (mOptionFlag != kAdd) {
        DbConnection db = openDatabase(mFolder);
        const std::optional<QStringList> stored = mKind.find(db, mName);
        if (!stored)
            throw DirectoryError(mKind.missingText.arg(mName));
        for (int i = 0; i < fieldCount(); ++i)
            mFields[i] = stored->value(i);
    }
}

bool DirectoryForm::nameIsAcceptable()
{
    const QString &name = mFields[0];
    if (name.isEmpty()) {
        mPrompt.message(mKind.nameRequiredText, mKind.nameRequiredTitle, MsgIcon::Exclamation);
        return false;
    }
    if (mKind.refusesControlNames && isControlName(name)) {
        mPrompt.message(QStringLiteral("This name already exists as a control name.  Please choose another name."),
                        QStringLiteral("Name conflicts with control sample names."), MsgIcon::None);
        return false;
    }
    // The delimiter of the well lists can't be part of a name that goes into a plate: every
    // later well of a list would move one place on.
    if (name.contains(kWellDelimiter)) {
        mPrompt.message(mKind.delimiterText.arg(kWellDelimiter), mKind.delimiterTitle, MsgIcon::Exclamation);
        return false;
    }
    return true;
}

bool DirectoryForm::ok()
{
    for (QString &field : mFields)
        field = field.trimmed();
    if (!nameIsAcceptable())
        return false;

    DbConnection db = openDatabase(mFolder);
    const bool saved = mOptionFlag == kEdit ? mKind.update(db, mName, mFields) : mKind.insert(db, mFields);
    if (!saved) {
        mPrompt.message(mKind.existsText, mKind.existsTitle, MsgIcon::Exclamation);
        return false;
    }
    mName = mFields[0];
    mUserOk = true;
    return true;
}
