// The control report dialog driven through its widgets.
#include "FakeBrowser.h"
#include "FakeClock.h"
#include "FakePrompt.h"
#include "PlateRecordBuilder.h"
#include "QtPrinters.h"
#include "SavedPlates.h"

#include "ui/frmTrackControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

TestWell control(const char *type, const char *od)
{
    return TestWell{QString::fromLatin1(type), QString(), QString::fromLatin1(od), QString(), 1};
}

TestPlate plate(const char *name, const QDate &date, const char *nc, const char *pc)
{
    TestPlate p;
    p.plateName = QString::fromLatin1(name);
    p.testName = QStringLiteral("Orvexa 412");
    p.lotNumber = QStringLiteral("L-100");
    p.techName = QStringLiteral("Ana Ruiz");
    p.dateRead = date;
    p.timeRead = QTime(9, 0, 0);
    p.wells = {{QStringLiteral("A1"), control("NC", nc)}, {QStringLiteral("B1"), control("PC", pc)}};
    return p;
}

// A click on the box itself (the middle of a wide check box may lie past its caption).
void clickBox(QCheckBox *box)
{
    ASSERT_NE(box, nullptr);
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(6, box->height() / 2));
}

struct TrackDialog {
    SavedPlates saved;
    FakePrompt prompt;
    FakeBrowser browser;
    FakeClock clock{QDateTime(QDate(2024, 3, 9), QTime(10, 0, 0))};
    std::unique_ptr<frmTrackControls> dialog;

    TrackDialog()
    {
        saved.saveRun(QStringLiteral("Run"), {plate("Plate A", QDate(2024, 1, 5), "1.000", "0.200"),
                                              plate("Plate B", QDate(2024, 1, 6), "0.800", "0.300")});
        dialog = std::make_unique<frmTrackControls>(saved.folder(), prompt, browser, clock);
        dialog->load();
        dialog->show();
        dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }

    template <typename T> T *find(const char *name) const
    {
        T *widget = dialog->findChild<T *>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    void typeDate(int index, const char *month, const char *day, const char *year)
    {
        for (const auto &[box, text] : {std::pair{"txtMonthRange_%1", month}, std::pair{"txtDayRange_%1", day},
                                        std::pair{"txtYearRange_%1", year}}) {
            auto *edit = dialog->findChild<QLineEdit *>(QString::fromLatin1(box).arg(index));
            ASSERT_NE(edit, nullptr) << box;
            edit->selectAll();
            QTest::keyClicks(edit, QString::fromLatin1(text));
        }
    }
};

} // namespace

// What the lists, dates and options hold and which dates pass is the tracking's
// (tests/tracking); here that the widgets show it and hand the user's choices to it.
TEST(frmTrackControls, TheBoxesShowTheLoadAndTypedDatesReachTheReport)
{
    TrackDialog f;
    EXPECT_EQ(f.find<QLineEdit>("txtDayRange_0")->text(), QStringLiteral("5"));
    f.typeDate(0, "1", "6", "2024");
    f.typeDate(1, "1", "5", "2024");
    QTest::mouseClick(f.find<QPushButton>("cmdOK"), Qt::LeftButton);
    ASSERT_GE(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.boxes()[0].text, QStringLiteral("The date range is invalid"));
    EXPECT_TRUE(f.browser.opened.isEmpty());

    f.prompt.clearBoxes();
    f.typeDate(1, "1", "6", "2024");
    clickBox(f.find<QCheckBox>("chkDate"));
    clickBox(f.find<QCheckBox>("chkStdDev"));
    QTest::mouseClick(f.find<QPushButton>("cmdOK"), Qt::LeftButton);
    EXPECT_EQ(f.prompt.count(), 0);
    ASSERT_EQ(f.browser.opened.size(), 1);
    EXPECT_EQ(f.dialog->lastWorkbook(), f.browser.opened.first());
    EXPECT_TRUE(f.dialog->isVisible());
    EXPECT_TRUE(f.dialog->logic().chkDate);
    EXPECT_FALSE(f.dialog->logic().chkStdDev);

    QTest::mouseClick(f.find<QPushButton>("cmdCancel"), Qt::LeftButton);
    EXPECT_FALSE(f.dialog->isVisible());
}

TEST(frmTrackControls, ClearingEveryXAxisBoxDisablesOkWithAWarning)
{
    TrackDialog f;
    auto *ok = f.find<QPushButton>("cmdOK");
    auto *warning = f.find<QLabel>("lblWarning");
    EXPECT_FALSE(warning->isVisible());
    clickBox(f.find<QCheckBox>("chkPlateName"));
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_TRUE(warning->isVisible());
    EXPECT_EQ(warning->text(), QStringLiteral("Please select at least one chartable element."));
    clickBox(f.find<QCheckBox>("chkRunName"));
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_FALSE(warning->isVisible());
}

TEST(frmTrackControls, AFailureIsToldAndTheDialogStays)
{
    TrackDialog f;
    f.saved.saveRun(QStringLiteral("Broken"), {plate("Plate C", QDate(2024, 1, 7), "n/a", "0.100")});
    QTest::mouseClick(f.find<QPushButton>("cmdOK"), Qt::LeftButton);
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().title, QStringLiteral("Generate Control Report"));
    EXPECT_EQ(f.prompt.last().icon, MsgIcon::Critical);
    EXPECT_TRUE(f.prompt.last().text.contains(QStringLiteral("\"Plate C\" of run \"Broken\"")));
    EXPECT_TRUE(f.browser.opened.isEmpty());
    EXPECT_TRUE(f.dialog->isVisible());
}
