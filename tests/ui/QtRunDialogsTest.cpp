// The run dialogs as the main window calls them: modal, each keeping its outcome.
#include "ModalForm.h"
#include "RunDialogWidgets.h"

#include "FakePrompt.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "ui/QtRunDialogs.h"
#include "ui/frmRunOpen.h"
#include "ui/frmRunSaveAs.h"

#include <QPushButton>

#include <gtest/gtest.h>

namespace {

struct Dialogs {
    TempProgramFolder temp;
    FakePrompt prompt;
    QtRunDialogs dialogs{temp.folder(), prompt};
};

TEST(QtRunDialogs, SaveAsThenOpenGivesBackThePlates)
{
    Dialogs f;
    f.dialogs.setPlatesRecord(RunPlates::make(4, 3));
    frmRunSaveAs *saveAs = f.dialogs.saveAsDialog();
    const auto saved = whenFormOpens<frmRunSaveAs>(saveAs, [](frmRunSaveAs *shown) {
        QTest::keyClicks(shown->findChild<QLineEdit *>(QStringLiteral("txtRunName")), QStringLiteral("Run 'X'"));
        QTest::mouseClick(shown->findChild<QPushButton *>(QStringLiteral("cmdSave")), Qt::LeftButton);
    });
    f.dialogs.showSaveAs();
    ASSERT_TRUE(*saved && f.dialogs.saveAsUserOk());
    EXPECT_EQ(f.dialogs.saveAsRunName(), "Run 'X'");
    EXPECT_EQ(f.dialogs.saveAsPlatesRecord().recordCount(), 4);

    frmRunOpen *open = f.dialogs.openDialog();
    whenFormOpens<frmRunOpen>(open, [](frmRunOpen *shown) {
        RunDialogWidgets::doubleClickItem(shown->findChild<QListWidget *>(QStringLiteral("lstRunNames")), 0);
    });
    f.dialogs.showOpen();
    ASSERT_TRUE(f.dialogs.openUserOk());
    EXPECT_EQ(f.dialogs.openRunName(), "Run 'X'");
    const RecordSet opened = f.dialogs.openPlatesRecord();
    ASSERT_EQ(opened.recordCount(), 4);
    EXPECT_EQ(opened.valueAt(3, u"Samples"), RunPlates::make(4, 3).valueAt(3, u"Samples"));
}

// A plain save shows no dialog; one that fails is told.
TEST(QtRunDialogs, APlainSaveReportsItsOutcome)
{
    Dialogs f;
    RunPlates::addRun(f.temp.open(), QStringLiteral("Known"), 1);
    f.dialogs.setPlatesRecord(RunPlates::make(2, 1));
    f.temp.open().execute(QStringLiteral("CREATE TRIGGER refuse BEFORE INSERT ON Plates "
                                         "BEGIN SELECT RAISE(ABORT, 'refused'); END"));
    f.dialogs.simpleSave();
    EXPECT_FALSE(f.dialogs.saveAsUserOk());
    EXPECT_EQ(f.prompt.last().title, "Run Not Saved");

    f.temp.open().execute(QStringLiteral("DROP TRIGGER refuse"));
    f.dialogs.simpleSave();
    EXPECT_TRUE(f.dialogs.saveAsUserOk());
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 2);
    EXPECT_EQ(QApplication::topLevelWidgets().count(), 0);
}

TEST(QtRunDialogs, DialogsGoWithTheWindowTheyAreShownOver)
{
    Dialogs f;
    auto *window = new QWidget;
    f.dialogs.setParentWindow(window);
    QPointer<frmRunSaveAs> saveAs = f.dialogs.saveAsDialog();
    EXPECT_EQ(saveAs->parentWidget(), window);
    delete window;
    EXPECT_TRUE(saveAs.isNull());
    // A new one is made for the next showing.
    EXPECT_NE(f.dialogs.saveAsDialog(), nullptr);
}

} // namespace
