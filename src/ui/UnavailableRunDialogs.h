#pragma once

#include "platform/Prompt.h"
#include "worksheet/RunDialogs.h"

// Stands in for the run dialogs until they are built: each says so and ends cancelled.
class UnavailableRunDialogs : public RunDialogs {
public:
    explicit UnavailableRunDialogs(Prompt &prompt) : mPrompt(prompt) {}

    void setPlatesRecord(const RecordSet &plates) override { mPlates = plates; }
    void showSaveAs() override { tell(); }
    void simpleSave() override { tell(); }
    bool saveAsUserOk() const override { return false; }
    RecordSet saveAsPlatesRecord() const override { return mPlates; }
    QString saveAsRunName() const override { return QString(); }
    void showOpen() override { tell(); }
    bool openUserOk() const override { return false; }
    RecordSet openPlatesRecord() const override { return RecordSet(); }
    QString openRunName() const override { return QString(); }

private:
    void tell()
    {
        mPrompt.message(QStringLiteral("Saving and opening runs is not available yet in this version."), QString(),
                        MsgIcon::Information);
    }
    Prompt &mPrompt;
    RecordSet mPlates;
};
