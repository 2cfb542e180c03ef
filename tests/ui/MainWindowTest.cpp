#include "MainWindowFixture.h"
#include "ui/DeferredStyleIcon.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPainter>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

#include <memory>

// What a new run holds is the workbench's; here that the window shows it.
TEST(MainWindow, OpensOnANewUnnamedRun)
{
    MainWindowFixture f;
    frmMain &w = f.show();
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Qorn Tavimetra 1.5.4"));
    EXPECT_EQ(f.find<QLabel>("sbPanel_4")->text(), QStringLiteral("Run: No Name"));
    EXPECT_EQ(f.find<QComboBox>("cboPlates")->currentText(), QStringLiteral("Plate #1"));
    EXPECT_EQ(f.find<QTabWidget>("ssDataSheetTab")->currentIndex(), 1);
    EXPECT_EQ(f.find<QTableView>("fgDataSheet_0")->model()->headerData(7, Qt::Vertical).toString(),
              QStringLiteral("H"));
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
    QTest::mouseClick(samples->viewport(), Qt::LeftButton, {},
                      samples->visualRect(samples->model()->index(2, 3)).center());
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
    EXPECT_EQ(f.find<QLabel>("lblFilterRequired_1")->text(), QStringLiteral("620 nm  - 650 nm"));
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

// The tool bar's icons are made at their first drawing: they must draw as the style's own.
TEST(MainWindow, ADeferredStyleIconDrawsAsTheStylesOwn)
{
    for (const QStyle::StandardPixmap which : {QStyle::SP_DialogSaveButton, QStyle::SP_FileDialogListView}) {
        const QIcon own = QApplication::style()->standardIcon(which);
        const QIcon deferred = DeferredStyleIcon::icon(QApplication::style(), which);
        EXPECT_FALSE(deferred.isNull());
        for (const int size : {16, 24, 48})
            for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled})
                for (const qreal ratio : {1.0, 1.5, 2.0}) {
                    QImage a(64, 64, QImage::Format_ARGB32_Premultiplied), b = a;
                    a.fill(Qt::white), b.fill(Qt::white);
                    a.setDevicePixelRatio(ratio), b.setDevicePixelRatio(ratio);
                    own.paint(std::make_unique<QPainter>(&a).get(), QRect(1, 2, size, size), Qt::AlignCenter, mode);
                    deferred.paint(std::make_unique<QPainter>(&b).get(), QRect(1, 2, size, size), Qt::AlignCenter,
                                   mode);
                    EXPECT_EQ(a, b) << which << " " << size << " " << mode << " " << ratio;
                    EXPECT_EQ(own.pixmap(QSize(size, size), ratio, mode).toImage(),
                              deferred.pixmap(QSize(size, size), ratio, mode).toImage());
                }
    }
}
