#pragma once

#include "worksheet/RunDialogs.h"

// Run dialogs for tests: each "dialog" ends as the test says, and the plates handed over
// are kept for inspection.
class FakeRunDialogs : public RunDialogs {
public:
    // What the next Save As / Open ends with.
    bool saveAsOk = true;
    QString saveAsName = QStringLiteral("Saved Run");
    bool openOk = true;
    RecordSet platesToOpen;
    QString openName = QStringLiteral("Opened Run");

    // What happened.
    int saveAsShown = 0;
    int simpleSaves = 0;
    int openShown = 0;
    RecordSet handedOver;

    void setPlatesRecord(const RecordSet &plates) override { handedOver = copyRecordset(plates); }
    void showSaveAs() override
    {
        ++saveAsShown;
        mUserOk = saveAsOk;
        if (mUserOk)
            mSaveAsName = saveAsName;
    }
    void simpleSave() override
    {
        ++simpleSaves;
        mUserOk = true;
    }
    bool saveAsUserOk() const override { return mUserOk; }
    RecordSet saveAsPlatesRecord() const override { return copyRecordset(handedOver); }
    QString saveAsRunName() const override { return mSaveAsName; }

    void showOpen() override
    {
        ++openShown;
        mOpenOk = openOk;
    }
    bool openUserOk() const override { return mOpenOk; }
    RecordSet openPlatesRecord() const override { return copyRecordset(platesToOpen); }
    QString openRunName() const override { return openName; }

private:
    bool mUserOk = false;
    bool mOpenOk = false;
    QString mSaveAsName;
};
