#include "directory/GroupForm.h"

#include "directory/DirectoryError.h"
#include "core/WellList.h"
#include "platform/Prompt.h"
#include "store/RunDatabase.h"
#include "worksheet/PlateSheet.h"

GroupForm::GroupForm(const ProgramFolder &folder, Prompt &prompt) : mFolder(folder), mPrompt(prompt)
{
}

void GroupForm::load()
{
    mFields.fill(QString());
    if (mOptionFlag == kAdd) {
        mCaption = QStringLiteral("Add New Group");
    } else if (mOptionFlag == kAddName) {
        mCaption = QStringLiteral("Add New Group");
        mFields[0] = mGroupName;
    } else {
        mCaption = QStringLiteral("Edit Group");
        DbConnection db = openDatabase(mFolder);
        const std::optional<GroupDirectory::Fields> stored = GroupDirectory(db).findGroup(mGroupName);
        if (!stored)
            throw DirectoryError(QStringLiteral("The group '") + mGroupName
                                 + QStringLiteral("' is no longer in the database."));
        mFields = *stored;
    }
}

bool GroupForm::nameIsAcceptable()
{
    const QString &name = mFields[0];
    if (name.isEmpty()) {
        mPrompt.message(QStringLiteral("A group name is required."), QStringLiteral("Group Name Required"),
                        MsgIcon::Exclamation);
        return false;
    }
    if (isControlName(name)) {
        mPrompt.message(QStringLiteral("This name already exists as a control name.  Please choose another name."),
                        QStringLiteral("Name conflicts with control sample names."), MsgIcon::None);
        return false;
    }
    // The delimiter of the well lists can't be part of a name that goes into them: every
    // later well of a plate would move one place on.
    if (name.contains(kWellDelimiter)) {
        mPrompt.message(QStringLiteral("A group name cannot contain the character \"") + kWellDelimiter
                            + QStringLiteral("\".  Please choose another name."),
                        QStringLiteral("Group Name Not Allowed"), MsgIcon::Exclamation);
        return false;
    }
    return true;
}

bool GroupForm::ok()
{
    for (QString &field : mFields)
        field = field.trimmed();
    if (!nameIsAcceptable())
        return false;

    DbConnection db = openDatabase(mFolder);
    const GroupDirectory groups(db);
    const bool saved = mOptionFlag == kEdit ? groups.updateGroup(mGroupName, mFields) : groups.insertGroup(mFields);
    if (!saved) {
        mPrompt.message(QStringLiteral("This group already exists in the database."),
                        QStringLiteral("Group Already Exists"), MsgIcon::Exclamation);
        return false;
    }
    mGroupName = mFields[0];
    mUserOk = true;
    return true;
}
