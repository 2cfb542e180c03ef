#pragma once

#include "FakePrompt.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/DatabaseSchema.h"
#include "store/RunSaveAsLogic.h"

#include <gtest/gtest.h>

// A program folder with the Save As dialog's logic on it and a fake prompt: where the tests
// of saving, opening and failing saves begin.
struct RunSaveDesk {
    TempProgramFolder temp;
    FakePrompt prompt;
    RunSaveAsLogic dialog{temp.folder(), prompt};

    // Shows the dialog, picks the folder, types the name and presses Save.
    RunBrowser::CommandEnd saveAs(const RecordSet &plates, const QString &name,
                                  const QString &folder = kDeliveryFolderName)
    {
        dialog.setPlatesRecord(plates);
        dialog.load();
        dialog.selectFolder(int(dialog.folderNames().indexOf(folder)));
        dialog.setRunNameText(name);
        return dialog.save();
    }

    // Run "A" saved with count plates tagged "old" (run id 1), the plates in hand retagged
    // "new", and no box left in the prompt.
    void saveOldRun(int count = 3)
    {
        ASSERT_EQ(saveAs(RunPlates::make(count, 1, QStringLiteral("old")), QStringLiteral("A")),
                  RunBrowser::CommandEnd::Close);
        RecordSet plates = dialog.getPlatesRecord();
        RunPlates::retag(plates, QStringLiteral("new"));
        dialog.setPlatesRecord(plates);
        prompt.clearBoxes();
    }

    // The one box of a save that failed, with the reason in it.
    void expectNotSavedBox(const QString &detail) const
    {
        ASSERT_EQ(prompt.count(), 1);
        EXPECT_EQ(prompt.last().title, "Run Not Saved");
        EXPECT_EQ(prompt.last().icon, MsgIcon::Critical);
        EXPECT_TRUE(prompt.last().text.startsWith(
            "The run was not saved. Nothing in the database was changed by this save.\r\n\r\n"))
            << prompt.last().text.toStdString();
        EXPECT_TRUE(prompt.last().text.contains(detail)) << prompt.last().text.toStdString();
    }

    // A number the database answers ("SELECT COUNT(*) ...").
    int count(const QString &sql, const QVariantList &values = {}) const
    {
        return temp.open().scalar(sql, values).toInt();
    }
};
