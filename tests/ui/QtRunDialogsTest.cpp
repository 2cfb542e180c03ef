// The run dialogs as the main window calls them: modal, each keeping its outcome.
#include "RunDialogWidgets.h"

#include "FakePrompt.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "ui/QtRunDialogs.h"
#include "ui/frmRunOpen.h"
#include "ui/frmRunSaveAs.h"

#include <QPushButton>
#include <QTimer>

#include <functional>

#include <gtest/gtest.h>

namespace {

// Runs the gesture once the modal dialog is on the screen.
void whenShown(QDialog *dialog, std::function<void()> gesture)
{
    QTimer::singleShot(0, dialog, [dialog, gesture] {
        if (!QTest::qWaitForWindowExposed(dialog)) {
            ADD_FAILURE() << "the dialog was not shown";
            dialog->reject();
            return;
        }
        gesture();
    });
}

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
    whenShown(saveAs, [saveAs] {
        QTest::keyClicks(saveAs->findChild<QLineEdit *>(QStringLiteral("txtRunName")), QStringLiteral("Run 'X'"));
        QTest::mouseClick(saveAs->findChild<QPushButton *>(QStringLiteral("cmdSave")), Qt::LeftButton);
    });
    f.dialogs.showSaveAs();
    ASSERT_TRUE(f.dialogs.saveAsUserOk());
    EXPECT_EQ(f.dialogs.saveAsRunName(), "Run 'X'");
    EXPECT_EQ(f.dialogs.saveAsPlatesRecord().recordCount(), 4);

    frmRunOpen *open = f.dialogs.openDialog();
    whenShown(open, [open] {
        RunDialogWidgets::doubleClickItem(open->findChild<QListWidget *>(QStringLiteral("lstRunNames")), 0);
    });
    f.dialogs.showOpen();
    ASSERT_TRUE(f.dialogs.openUserOk());
    EXPECT_EQ(f.dialogs.openRunName(), "Run 'X'");
    const RecordSet opened = f.dialogs.openPlatesRecord();
    ASSERT_EQ(opened.recordCount(), 4);
    EXPECT_EQ(opened.valueAt(3, u"Samples"), RunPlates::make(4, 3).valueAt(3, u"Samples"));
}

TEST(QtRunDialogs, APlainSaveThatFailsIsToldAndReportsNotOk)
{
    Dialogs f;
    f.dialogs.setPlatesRecord(RunPlates::make(2, 1));
    f.temp.open().execute(QStringLiteral("CREATE TRIGGER refuse BEFORE INSERT ON Plates "
                                         "BEGIN SELECT RAISE(ABORT, 'refused'); END"));
    f.dialogs.simpleSave();
    EXPECT_FALSE(f.dialogs.saveAsUserOk());
    EXPECT_EQ(f.prompt.last().title, "Run Not Saved");
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
