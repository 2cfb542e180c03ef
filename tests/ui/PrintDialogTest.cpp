#include "FakeBrowser.h"
#include "FakePrompt.h"
#include "PlateRecordBuilder.h"
#include "QtPrinters.h"
#include "TempProgramFolder.h"

#include "ui/frmPrint.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace {

// A read Generic plate with one sample, and a plate never read.
RecordSet twoPlates()
{
    TestPlate read;
    read.plateName = QStringLiteral("Plate #1");
    read.testName = QStringLiteral("Generic");
    read.dateRead = QDate(2026, 11, 23);
    read.timeRead = QTime(9, 30);
    read.wells = {{QStringLiteral("A1"), {QStringLiteral("PC"), QString(), QStringLiteral("0.500"), QString()}},
                  {QStringLiteral("B1"),
                   {QStringLiteral("Cow 1"), QStringLiteral("Herd A"), QStringLiteral("0.250"), QString()}}};
    TestPlate unread;
    unread.plateID = 2;
    unread.plateName = QStringLiteral("Plate #2");
    unread.testName = QStringLiteral("Generic");
    return plateRecordSet({read, unread});
}

struct PrintDialogFixture : ::testing::Test {
    TempProgramFolder folder;
    FakePrompt prompt;
    FakeBrowser browser;
    std::unique_ptr<frmPrint> dialog;

    void SetUp() override
    {
        dialog = std::make_unique<frmPrint>(folder.folder(), prompt, browser);
        dialog->setRunName(QStringLiteral("Spring Run"));
        dialog->setPlatesRecord(twoPlates());
        dialog->load();
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    }

    template <typename T> T *find(const QString &name) const
    {
        T *widget = dialog->findChild<T *>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }
    QRadioButton *radio(const char *name) const { return find<QRadioButton>(QString::fromLatin1(name)); }
    // A click as the user makes it; click() rather than a mouse event at a position, as
    // where a button's mark lies depends on the style and fonts of the machine.
    void click(QAbstractButton *button) const
    {
        ASSERT_TRUE(button->isEnabled());
        button->click();
    }
    QString reportPath() const { return folder.folder().filePath(QStringLiteral("TempHTML.htm")); }
};

} // namespace

// Which choice enables what is the selection's (tests/reports); here that the widgets
// follow it and hand the user's choices to it.
TEST_F(PrintDialogFixture, TheChoicesReachTheSelectionAndOkShowsTheReport)
{
    auto *check = find<QCheckBox>(QStringLiteral("chkSeparateGroups"));
    click(check);
    click(radio("optReport_2"));
    EXPECT_FALSE(check->isEnabled());
    EXPECT_TRUE(check->isChecked()); // the tick stays visible
    click(radio("optGroupReport_2"));
    auto *month = find<QLineEdit>(QStringLiteral("txtMonthRange_0"));
    QTest::keyClicks(month, QStringLiteral("123"));
    EXPECT_EQ(dialog->selection().monthRange[0], QStringLiteral("12"));
    // A click in a date box selects its whole text.
    QTest::mouseClick(month, Qt::LeftButton);
    QTest::qWait(20);
    EXPECT_EQ(month->selectedText(), QStringLiteral("12"));

    click(radio("optReport_0"));
    EXPECT_FALSE(month->isEnabled());
    EXPECT_TRUE(dialog->selection().separateGroups);
    click(radio("optReplicates_1"));
    EXPECT_EQ(dialog->selection().replicatesMode(), 1);
    click(radio("optSort_1"));
    EXPECT_EQ(dialog->selection().sort, 1);
    click(radio("optStyle_1"));
    EXPECT_EQ(dialog->selection().style, 1);

    click(find<QPushButton>(QStringLiteral("cmdOK")));
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(browser.opened, QStringList{reportPath()});
    EXPECT_EQ(prompt.count(), 0);
    QFile file(reportPath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("<font size=\"-1\">Cow 1</td>"));
}

TEST_F(PrintDialogFixture, NothingToReportKeepsTheDialogOpenAndCancelCloses)
{
    find<QComboBox>(QStringLiteral("cboPlates"))->setCurrentIndex(1); // the unread plate
    click(find<QPushButton>(QStringLiteral("cmdOK")));
    EXPECT_TRUE(dialog->isVisible());
    ASSERT_EQ(prompt.count(), 1);
    EXPECT_EQ(prompt.last().title, QStringLiteral("Requested Data Not Available"));
    click(find<QPushButton>(QStringLiteral("cmdCancel")));
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(browser.opened.isEmpty());
}

TEST_F(PrintDialogFixture, AFailureIsToldAndTheDialogStays)
{
    click(radio("optReport_2"));
    click(radio("optGroupReport_1")); // no saved run exists
    click(find<QPushButton>(QStringLiteral("cmdOK")));
    EXPECT_TRUE(dialog->isVisible());
    ASSERT_EQ(prompt.count(), 1);
    EXPECT_EQ(prompt.last().title, QStringLiteral("Generate Report"));
    EXPECT_EQ(prompt.last().icon, MsgIcon::Critical);
    EXPECT_TRUE(prompt.last().text.startsWith(QStringLiteral("The report could not be made.")));
}
