#include "WorkbenchFixture.h"

#include "platform/Browser.h"
#include "ui/frmMain.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

namespace {

class NullBrowser : public Browser {
public:
    QStringList opened;
    bool openFile(const QString &path) override
    {
        opened << path;
        return true;
    }
};

struct MainWindowFixture : WorkbenchFixture {
    NullBrowser browser;
    std::unique_ptr<frmMain> window;

    frmMain &show()
    {
        start();
        window = std::make_unique<frmMain>(*wb, prompt, browser);
        window->show();
        return *window;
    }
    template <typename T>
    T *find(const char *name) const
    {
        return window->findChild<T *>(QString::fromLatin1(name));
    }
};

} // namespace

TEST(MainWindow, OpensOnANewUnnamedRun)
{
    MainWindowFixture f;
    frmMain &w = f.show();
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Qorn Tavimetra 1.5.4"));
    EXPECT_EQ(f.find<QLabel>("sbPanel_4")->text(), QStringLiteral("Run: No Name"));
    EXPECT_EQ(f.find<QLabel>("sbPanel_1")->text(), QStringLiteral("Plate: Plate #1"));
    EXPECT_EQ(f.find<QComboBox>("cboTests")->currentText(), QStringLiteral("Generic"));
    EXPECT_EQ(f.find<QComboBox>("cboPlates")->currentText(), QStringLiteral("Plate #1"));
    EXPECT_GE(f.find<QComboBox>("cboReaders")->findText(QStringLiteral("Demo")), 0);
    EXPECT_EQ(f.find<QTabWidget>("ssDataSheetTab")->currentIndex(), 1);
    EXPECT_EQ(f.find<QLabel>("lblPlateName")->text(), QStringLiteral("Plate #1"));
    QTableView *grid = f.find<QTableView>("fgDataSheet_0");
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->model()->rowCount(), 8);
    EXPECT_EQ(grid->model()->columnCount(), 12);
    EXPECT_EQ(grid->model()->headerData(0, Qt::Vertical).toString(), QStringLiteral("A"));
    EXPECT_EQ(grid->model()->headerData(11, Qt::Horizontal).toString(), QStringLiteral("12"));
    EXPECT_FALSE(f.find<QAction>("mnuEditUndo")->isEnabled());
}

TEST(MainWindow, ViewKeysChangeTabsAndCutPasteFollowTheSheet)
{
    MainWindowFixture f;
    f.show();
    auto *tabs = f.find<QTabWidget>("ssDataSheetTab");
    f.find<QAction>("mnuViewOpticalDensities")->trigger();
    EXPECT_EQ(tabs->currentIndex(), 2);
    EXPECT_FALSE(f.find<QAction>("mnuEditCut")->isEnabled());
    EXPECT_FALSE(f.find<QAction>("mnuEditPaste")->isEnabled());
    EXPECT_TRUE(f.find<QAction>("mnuEditCopy")->isEnabled());
    f.find<QAction>("mnuViewGroups")->trigger();
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_TRUE(f.find<QAction>("mnuEditCut")->isEnabled());
    f.find<QAction>("mnuViewInfo")->trigger();
    EXPECT_EQ(tabs->currentIndex(), 4);
}

TEST(MainWindow, SelectionIsLockedAcrossTheFourSheets)
{
    MainWindowFixture f;
    f.show();
    QTableView *samples = f.find<QTableView>("fgDataSheet_1");
    QTest::mouseClick(samples->viewport(), Qt::LeftButton, {}, samples->visualRect(samples->model()->index(2, 3)).center());
    QTest::mouseClick(samples->viewport(), Qt::LeftButton, Qt::ShiftModifier,
                      samples->visualRect(samples->model()->index(4, 5)).center());
    const PlateSheet &s = f.wb->sheet();
    EXPECT_EQ(s.row(), 3);
    EXPECT_EQ(s.col(), 4);
    EXPECT_EQ(s.rowSel(), 5);
    EXPECT_EQ(s.colSel(), 6);
    for (const char *name : {"fgDataSheet_0", "fgDataSheet_2", "fgDataSheet_3"}) {
        QTableView *other = f.find<QTableView>(name);
        EXPECT_EQ(other->selectionModel()->selectedIndexes().size(), 9) << name;
        EXPECT_EQ(other->currentIndex(), other->model()->index(4, 5)) << name;
    }
}

TEST(MainWindow, PickingATestRefreshesPanelAndStatus)
{
    MainWindowFixture f;
    f.show();
    QComboBox *tests = f.find<QComboBox>("cboTests");
    const int orvexa = tests->findText(QStringLiteral("Orvexa 412"));
    tests->setCurrentIndex(orvexa);
    Q_EMIT tests->activated(orvexa);
    EXPECT_EQ(f.find<QLabel>("sbPanel_3")->text(), QStringLiteral("Test: Orvexa 412"));
    EXPECT_EQ(f.find<QLabel>("lblPCRequired_2")->text(), QStringLiteral("1"));
    EXPECT_EQ(f.find<QLabel>("lblNCRecommended_0")->text(), QStringLiteral("3"));
    EXPECT_EQ(f.find<QLabel>("lblFilterRequired_1")->text(), QStringLiteral("620 nm  - 650 nm"));
    EXPECT_EQ(f.find<QLabel>("pctPCMark_1")->toolTip(), QStringLiteral("xmark"));
}

TEST(MainWindow, AFailingCommandIsToldAndTheWindowGoesOn)
{
    MainWindowFixture f;
    frmMain &w = f.show();
    w.setCommand(QStringLiteral("mnuFileNew"), [] { throw std::runtime_error("disk on fire"); });
    f.find<QAction>("mnuFileNew")->trigger();
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().icon, MsgIcon::Critical);
    EXPECT_TRUE(f.prompt.last().text.contains(QStringLiteral("disk on fire")));
    EXPECT_TRUE(w.isVisible());
}

TEST(MainWindow, ClosingADirtyRunAsksAndCancelKeepsTheWindow)
{
    MainWindowFixture f;
    frmMain &w = f.show();
    f.wb->setDirty(true);
    f.prompt.queueAnswer(MsgAnswer::Cancel);
    EXPECT_FALSE(w.close());
    EXPECT_TRUE(w.isVisible());
    EXPECT_EQ(f.prompt.last().title, QStringLiteral("Save Changes?"));
    f.prompt.queueAnswer(MsgAnswer::No);
    EXPECT_TRUE(w.close());
}

TEST(MainWindow, AboutAndHelp)
{
    MainWindowFixture f;
    f.show();
    f.find<QAction>("mnuAbout_Qorn_Tavimetra")->trigger();
    EXPECT_EQ(f.prompt.last().text, QStringLiteral("Qorn Tavimetra 1.5.4"));
    f.find<QAction>("mnuHelpTavimetraHelp")->trigger();
    ASSERT_EQ(f.browser.opened.size(), 1);
    EXPECT_TRUE(f.browser.opened[0].endsWith(QStringLiteral("help/index.html")));
}

// Writes a picture of the window when TAVIMETRA_SCREENSHOT_DIR names a folder, so that a
// person can look at it.
TEST(MainWindow, RendersAPicture)
{
    MainWindowFixture f;
    frmMain &w = f.show();
    w.resize(1180, 720);
    const QImage image = w.grab().toImage();
    EXPECT_FALSE(image.isNull());
    const QString dir = qEnvironmentVariable("TAVIMETRA_SCREENSHOT_DIR");
    if (!dir.isEmpty())
        image.save(QDir(dir).filePath(QStringLiteral("main-window.png")));
}
