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
#include <QGroupBox>
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

    template<typename T>
    T *find(const char *name) const
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

TEST(frmTrackControls, TheControlsStartAsTheLoadLeavesThem)
{
    TrackDialog f;
    EXPECT_EQ(f.dialog->windowTitle(), QStringLiteral("Generate Control Report"));
    EXPECT_EQ(f.find<QComboBox>("cboTests")->currentText(), QStringLiteral("Orvexa 412"));
    EXPECT_EQ(f.find<QComboBox>("cboTests")->findText(QStringLiteral("Generic")), -1);
    EXPECT_EQ(f.find<QComboBox>("cboLotNumbers")->currentText(), QStringLiteral("Any Lot Number"));
    EXPECT_EQ(f.find<QComboBox>("cboTechnicians")->currentText(), QStringLiteral("Any Technician"));
    EXPECT_EQ(f.find<QLineEdit>("txtMonthRange_0")->text(), QStringLiteral("1"));
    EXPECT_EQ(f.find<QLineEdit>("txtDayRange_0")->text(), QStringLiteral("5"));
    EXPECT_EQ(f.find<QLineEdit>("txtYearRange_0")->text(), QStringLiteral("2024"));
    EXPECT_EQ(f.find<QLineEdit>("txtMonthRange_1")->text(), QStringLiteral("3"));
    EXPECT_EQ(f.find<QLineEdit>("txtDayRange_1")->text(), QStringLiteral("9"));
    EXPECT_EQ(f.find<QLineEdit>("txtYearRange_1")->maxLength(), 4);
    EXPECT_EQ(f.find<QLineEdit>("txtDayRange_1")->maxLength(), 2);
    EXPECT_TRUE(f.find<QCheckBox>("chkPlateName")->isChecked());
    EXPECT_FALSE(f.find<QCheckBox>("chkRunName")->isChecked());
    EXPECT_FALSE(f.find<QCheckBox>("chkDate")->isChecked());
    EXPECT_EQ(f.find<QCheckBox>("chkTime")->text(), QStringLiteral("Time of Day"));
    EXPECT_TRUE(f.find<QCheckBox>("chkStdDev")->isChecked());
    EXPECT_EQ(f.find<QCheckBox>("chkStdDev")->text(), QStringLiteral("Display +/- Standard Deviations"));
    EXPECT_TRUE(f.find<QPushButton>("cmdOK")->isEnabled());
    EXPECT_FALSE(f.find<QLabel>("lblWarning")->isVisible());
    // With TAVIMETRA_SCREENSHOT_DIR set, the dialog's picture goes there.
    const QString shots = qEnvironmentVariable("TAVIMETRA_SCREENSHOT_DIR");
    if (!shots.isEmpty())
        f.dialog->grab().save(shots + QStringLiteral("/frmTrackControls.png"));
    QStringList frames;
    for (const QGroupBox *box : f.dialog->findChildren<QGroupBox *>())
        frames << box->title();
    EXPECT_EQ(frames, QStringList({"Data to Report:", "Chart Options"}));
}

TEST(frmTrackControls, ClearingEveryXAxisBoxDisablesOk)
{
    TrackDialog f;
    auto *plateName = f.find<QCheckBox>("chkPlateName");
    auto *runName = f.find<QCheckBox>("chkRunName");
    auto *ok = f.find<QPushButton>("cmdOK");
    auto *warning = f.find<QLabel>("lblWarning");
    clickBox(plateName);
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_TRUE(warning->isVisible());
    EXPECT_EQ(warning->text(), QStringLiteral("Please select at least one chartable element."));
    clickBox(runName);
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_FALSE(warning->isVisible());
    EXPECT_TRUE(warning->text().isEmpty());
}

TEST(frmTrackControls, OkOpensTheWorkbookAndTheDialogStays)
{
    TrackDialog f;
    clickBox(f.find<QCheckBox>("chkDate"));
    clickBox(f.find<QCheckBox>("chkStdDev"));
    QTest::mouseClick(f.find<QPushButton>("cmdOK"), Qt::LeftButton);
    ASSERT_EQ(f.browser.opened.size(), 1);
    EXPECT_EQ(f.dialog->lastWorkbook(), f.browser.opened.first());
    EXPECT_TRUE(f.dialog->isVisible());
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_TRUE(f.dialog->logic().chkDate);
    EXPECT_FALSE(f.dialog->logic().chkStdDev);
}

TEST(frmTrackControls, TypedDatesAndChoicesReachTheReport)
{
    TrackDialog f;
    f.typeDate(0, "1", "6", "2024");
    f.typeDate(1, "1", "5", "2024");
    QTest::mouseClick(f.find<QPushButton>("cmdOK"), Qt::LeftButton);
    ASSERT_EQ(f.prompt.count(), 2);
    EXPECT_EQ(f.prompt.boxes()[0].text, QStringLiteral("The date range is invalid"));
    EXPECT_EQ(f.prompt.boxes()[1].title, QStringLiteral("Specified Data Not Available"));
    EXPECT_TRUE(f.browser.opened.isEmpty());
    EXPECT_TRUE(f.dialog->isVisible());

    f.prompt.clearBoxes();
    f.typeDate(1, "1", "6", "2024");
    auto *tests = f.find<QComboBox>("cboTests");
    tests->setCurrentIndex(tests->findText(QStringLiteral("KSV 414")));
    QTest::mouseClick(f.find<QPushButton>("cmdOK"), Qt::LeftButton);
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.last().title, QStringLiteral("Specified Data Not Available"));

    f.prompt.clearBoxes();
    tests->setCurrentIndex(0);
    QTest::mouseClick(f.find<QPushButton>("cmdOK"), Qt::LeftButton);
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.browser.opened.size(), 1);
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

TEST(frmTrackControls, CancelCloses)
{
    TrackDialog f;
    QTest::mouseClick(f.find<QPushButton>("cmdCancel"), Qt::LeftButton);
    EXPECT_FALSE(f.dialog->isVisible());
    EXPECT_EQ(f.dialog->result(), QDialog::Rejected);
}
