#pragma once

#include "store/RunOpenLogic.h"
#include "store/RunSaveAsLogic.h"
#include "worksheet/RunDialogs.h"

// The run dialogs without a screen: each "showing" loads the dialog's logic, picks the
// folder and types the run name the test set, and presses OK, as a user would. The logic
// objects live as long as this object, as the real dialogs do.
class LogicRunDialogs : public RunDialogs {
public:
    LogicRunDialogs(const ProgramFolder &folder, Prompt &prompt) : saveAs(folder, prompt), open(folder, prompt) {}

    // What the next showing picks and types. An empty folder keeps the first folder.
    QString saveAsFolder;
    QString saveAsName = QStringLiteral("Run 1");
    bool saveAsCancels = false;
    QString openFolder;
    QString openName = QStringLiteral("Run 1");

    RunSaveAsLogic saveAs;
    RunOpenLogic open;

    void setPlatesRecord(const RecordSet &plates) override { saveAs.setPlatesRecord(plates); }
    void showSaveAs() override
    {
        saveAs.load();
        pickFolder(saveAs, saveAsFolder);
        saveAs.setRunNameText(saveAsName);
        if (saveAsCancels)
            saveAs.cancel();
        else
            saveAs.save();
    }
    void simpleSave() override { saveAs.simpleSave(); }
    bool saveAsNewRequested() const override { return saveAs.saveAsNewRequested(); }
    bool saveAsUserOk() const override { return saveAs.getUserOk(); }
    RecordSet saveAsPlatesRecord() const override { return saveAs.getPlatesRecord(); }
    QString saveAsRunName() const override { return saveAs.getRunName(); }

    void showOpen() override
    {
        open.load();
        pickFolder(open, openFolder);
        open.setRunNameText(openName);
        open.open();
    }
    bool openUserOk() const override { return open.getUserOk(); }
    RecordSet openPlatesRecord() const override { return open.getPlatesRecord(); }
    QString openRunName() const override { return open.getRunName(); }

private:
    static void pickFolder(RunBrowser &browser, const QString &name)
    {
        if (!name.isEmpty())
            browser.selectFolder(int(browser.folderNames().indexOf(name)));
    }
};
