#include "directory/TechForm.h"

#include "core/WellList.h"

#include "directory/DirectoryError.h"
#include "directory/TechDirectory.h"
#include "platform/Prompt.h"
#include "store/RunDatabase.h"

TechForm::TechForm(const ProgramFolder &folder, Prompt &prompt) : mFolder(folder), mPrompt(prompt)
{
}

void TechForm::load()
{
    mText.clear();
    if (mOptionFlag == kAdd) {
        mCaption = QStringLiteral("Add New Tech");
    } else if (mOptionFlag == kAddName) {
        mCaption = QStringLiteral("Add New Tech");
        mText = mTechName;
    } else {
        mCaption = QStringLiteral("Edit Tech");
        DbConnection db = openDatabase(mFolder);
        const std::optional<QString> stored = TechDirectory(db).findTech(mTechName);
        if (!stored)
            throw DirectoryError(QStringLiteral("The technician '") + mTechName
                                 + QStringLiteral("' is no longer in the database."));
        mText = *stored;
    }
}

bool TechForm::ok()
{
    mText = mText.trimmed();
    if (mText.isEmpty()) {
        mPrompt.message(QStringLiteral("A valid technician name is required."),
                        QStringLiteral("Technician Name Required"), MsgIcon::Exclamation);
        return false;
    }
    // The technician's name stands beside the plate's well lists in the record and in
    // reports; like a group name it never holds their delimiter.
    if (mText.contains(kWellDelimiter)) {
        mPrompt.message(QStringLiteral("A technician name cannot contain the character \"") + kWellDelimiter
                            + QStringLiteral("\".  Please choose another name."),
                        QStringLiteral("Technician Name Not Allowed"), MsgIcon::Exclamation);
        return false;
    }
    DbConnection db = openDatabase(mFolder);
    const TechDirectory techs(db);
    const bool saved = mOptionFlag == kEdit ? techs.updateTech(mTechName, mText) : techs.insertTech(mText);
    if (!saved) {
        mPrompt.message(QStringLiteral("This Tech already exists in the database."),
                        QStringLiteral("Tech Already Exists"), MsgIcon::Exclamation);
        return false;
    }
    mTechName = mText;
    mUserOk = true;
    return true;
}
