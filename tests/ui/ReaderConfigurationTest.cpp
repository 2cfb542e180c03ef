// The reader configuration dialog driven through its widgets.

#include "FakeSerialPort.h"
#include "WorkbenchFixture.h"

#include "ui/frmReaderConfiguration.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct DialogBench {
    TempProgramFolder folder;
    FakePrompt prompt;
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakeSerialPort port{clock};
    std::unique_ptr<frmReaderConfiguration> dialog;

    int readerID(const QString &name) const
    {
        const QVariant id = folder.open().scalar(QStringLiteral("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?"),
                                                 {name});
        return id.isNull() ? -1 : id.toInt();
    }
    frmReaderConfiguration &open(const QString &reader = QStringLiteral("Demo"))
    {
        dialog = std::make_unique<frmReaderConfiguration>(folder.folder(), prompt, port, sleeper, readerID(reader));
        dialog->show();
        return *dialog;
    }
    template <typename T>
    T *find(const char *name) const
    {
        T *w = dialog->findChild<T *>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    void click(const char *name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }
    void pick(const char *combo, const QString &text)
    {
        QComboBox *box = find<QComboBox>(combo);
        const int index = box->findText(text);
        ASSERT_GE(index, 0) << text.toStdString();
        box->setCurrentIndex(index);
        Q_EMIT box->activated(index);
    }
    QList<int> filters(const QString &name) const
    {
        DbConnection db = folder.open();
        QSqlQuery q = db.query(
            QStringLiteral("SELECT FilterValue FROM UserFilters WHERE UserReaderID = ? ORDER BY FilterNo"), {readerID(name)});
        QList<int> values;
        while (q.next())
            values << q.value(0).toInt();
        return values;
    }
    int readerCount() const { return folder.open().scalar(QStringLiteral("SELECT COUNT(*) FROM UserReaders")).toInt(); }
};

} // namespace

TEST(ReaderConfigurationDialog, ShowsTheChosenReaderInItsControls)
{
    DialogBench b;
    b.open(QStringLiteral("Demo2"));
    for (const char *name : {"cboUserReaders", "cboReaderModels", "cboComPort", "cboBitsPerSecond", "cboParity",
                             "cboDataBits", "cboStopBits", "cboFlowControl"})
        b.find<QComboBox>(name);
    for (const char *name : {"btnAddFilter", "btnInsertFilter", "btnRemoveFilter", "btnNewUserReader",
                             "btnDeleteUserReader", "btnLoadDefaults", "btnTestComm", "btnApply", "btnOK", "btnCancel"})
        b.find<QPushButton>(name);
    b.find<QWidget>("btnUpDownFilter");
    EXPECT_EQ(b.find<QComboBox>("cboUserReaders")->currentText(), QStringLiteral("Demo2"));
    EXPECT_EQ(b.find<QComboBox>("cboReaderModels")->currentText(), QStringLiteral("Demo2"));
    EXPECT_EQ(b.find<QComboBox>("cboBitsPerSecond")->currentText(), QStringLiteral("9600"));
    EXPECT_EQ(b.find<QComboBox>("cboParity")->currentText(), QStringLiteral("None"));
    EXPECT_EQ(b.find<QTableWidget>("dgFilters")->rowCount(), 1);
    EXPECT_EQ(b.find<QTableWidget>("dgFilters")->item(0, 1)->text(), QStringLiteral("450"));
    EXPECT_EQ(b.find<QLabel>("lblDefaultFilter")->text(), QStringLiteral("(Default filter: 450 nm) "));
    EXPECT_FALSE(b.find<QPushButton>("btnApply")->isEnabled());
    EXPECT_FALSE(b.find<QLineEdit>("txbUserReaders")->isVisible());
}

TEST(ReaderConfigurationDialog, ANewReaderNamedLikeAnExistingOneUpdatesIt)
{
    DialogBench b;
    b.open(QStringLiteral("Demo2"));
    b.click("btnNewUserReader");
    QLineEdit *name = b.find<QLineEdit>("txbUserReaders");
    ASSERT_TRUE(name->isVisible());
    EXPECT_EQ(name->text(), QStringLiteral("Type new reader name here"));
    EXPECT_EQ(name->selectedText(), name->text());
    EXPECT_FALSE(b.find<QPushButton>("btnDeleteUserReader")->isEnabled());
    QTest::keyClicks(name, QStringLiteral("Demo"));
    QTest::keyClick(name, Qt::Key_Return); // on to the model box, not out of the dialog
    EXPECT_TRUE(b.dialog->isVisible());
    b.pick("cboBitsPerSecond", QStringLiteral("1200"));
    b.click("btnApply");
    EXPECT_EQ(b.readerCount(), 2);
    EXPECT_EQ(b.folder.open().scalar(QStringLiteral("SELECT UserSettings FROM UserReaders WHERE UserReaderName = 'Demo'")),
              QStringLiteral("1200,N,8,1"));
    EXPECT_EQ(b.filters(QStringLiteral("Demo")), QList<int>({450}));
    EXPECT_FALSE(name->isVisible());
    EXPECT_EQ(b.find<QComboBox>("cboUserReaders")->currentText(), QStringLiteral("Demo"));
}

TEST(ReaderConfigurationDialog, ApplyWithAnEmptyFilterListLeavesNoFilterRows)
{
    DialogBench b;
    b.open();
    b.click("btnRemoveFilter");
    EXPECT_EQ(b.find<QTableWidget>("dgFilters")->rowCount(), 0);
    EXPECT_FALSE(b.find<QPushButton>("btnRemoveFilter")->isEnabled());
    EXPECT_FALSE(b.find<QWidget>("btnUpDownFilter")->isEnabled());
    EXPECT_EQ(b.find<QLabel>("lblDefaultFilter")->text(), QStringLiteral("(Default filter: none) "));
    b.click("btnApply");
    EXPECT_TRUE(b.filters(QStringLiteral("Demo")).isEmpty());
    EXPECT_EQ(b.readerCount(), 2);
}

TEST(ReaderConfigurationDialog, ACancelledDialogAfterADeleteKeepsTheReader)
{
    DialogBench b;
    b.open();
    b.click("btnDeleteUserReader");
    EXPECT_EQ(b.find<QComboBox>("cboUserReaders")->count(), 1);
    EXPECT_TRUE(b.prompt.boxes().isEmpty());
    b.click("btnCancel");
    EXPECT_FALSE(b.dialog->isVisible());
    EXPECT_FALSE(b.dialog->changesApplied());
    EXPECT_EQ(b.readerCount(), 2);
    EXPECT_EQ(b.filters(QStringLiteral("Demo")), QList<int>({630}));
}

TEST(ReaderConfigurationDialog, TypedFilterValuesKeepToThreeDigits)
{
    DialogBench b;
    b.open();
    b.click("btnAddFilter");
    QTableWidget *grid = b.find<QTableWidget>("dgFilters");
    ASSERT_EQ(grid->rowCount(), 2);
    QLineEdit *editor = grid->findChild<QLineEdit *>(QStringLiteral("dgFiltersEditor"));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), QStringLiteral("0"));
    QTest::keyClicks(editor, QStringLiteral("4x05"));
    EXPECT_EQ(editor->text(), QStringLiteral("405"));
    QTest::keyClick(editor, Qt::Key_9); // a fourth digit is dropped
    EXPECT_EQ(editor->text(), QStringLiteral("405"));
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_4); // unless digits are selected
    QTest::keyClicks(editor, QStringLiteral("92"));
    EXPECT_EQ(editor->text(), QStringLiteral("492"));
    QTest::keyClick(editor, Qt::Key_Return); // the last row: Enter adds a new one
    EXPECT_EQ(grid->rowCount(), 3) << b.dialog->logic().filters().count() << " current " << b.dialog->logic().filters().current();
    EXPECT_EQ(grid->item(1, 1)->text(), QStringLiteral("492"));
    b.click("btnOK");
    EXPECT_EQ(b.prompt.count(), 0) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(b.filters(QStringLiteral("Demo")), QList<int>({630, 492, 0}));
    EXPECT_TRUE(b.dialog->changesApplied());
    EXPECT_EQ(b.dialog->selectedFilterIndex(), 2);
}

TEST(ReaderConfigurationDialog, ShiftArrowsMoveAFilterAndTheDefaultFollowsTheRow)
{
    DialogBench b;
    b.folder.open().execute(QStringLiteral("INSERT INTO UserFilters VALUES (?, 405, 2)"), {b.readerID(QStringLiteral("Demo"))});
    b.open();
    QTableWidget *grid = b.find<QTableWidget>("dgFilters");
    ASSERT_EQ(grid->rowCount(), 2);
    grid->setFocus();
    grid->setCurrentCell(1, 1);
    EXPECT_EQ(b.find<QLabel>("lblDefaultFilter")->text(), QStringLiteral("(Default filter: 405 nm) "));
    QTest::keyClick(grid, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(grid->item(0, 1)->text(), QStringLiteral("405"));
    EXPECT_EQ(grid->item(1, 1)->text(), QStringLiteral("630"));
    EXPECT_EQ(grid->item(0, 0)->text(), QStringLiteral("1"));
    EXPECT_EQ(grid->currentRow(), 0);
    EXPECT_TRUE(b.find<QPushButton>("btnApply")->isEnabled());
    QTest::keyClick(grid, Qt::Key_X); // not a digit: no edit starts
    const QLineEdit *editor = grid->findChild<QLineEdit *>(QStringLiteral("dgFiltersEditor"));
    EXPECT_TRUE(editor == nullptr || !editor->isVisible());
    b.click("btnApply");
    EXPECT_EQ(b.prompt.count(), 0) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(b.filters(QStringLiteral("Demo")), QList<int>({405, 630}));
    EXPECT_EQ(b.folder.open().scalar(QStringLiteral("SELECT UserDefaultFilterNo FROM UserReaders WHERE UserReaderName = 'Demo'")).toInt(),
              1);
}

TEST(ReaderConfigurationDialog, ADevicePathCanBeTypedForThePort)
{
    DialogBench b;
    b.open();
    QComboBox *port = b.find<QComboBox>("cboComPort");
    ASSERT_TRUE(port->isEditable());
    port->setFocus();
    port->lineEdit()->selectAll();
    QTest::keyClicks(port->lineEdit(), QStringLiteral("/dev/ttyACM0"));
    QTest::keyClick(port->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(port->currentText(), QStringLiteral("/dev/ttyACM0"));
    EXPECT_TRUE(b.find<QPushButton>("btnApply")->isEnabled());
    b.click("btnApply");
    EXPECT_EQ(b.folder.open().scalar(QStringLiteral("SELECT UserCOMPort FROM UserReaders WHERE UserReaderName = 'Demo'")).toInt(),
              9);
}

TEST(ReaderConfigurationDialog, TheDemoReadersNeedNoCommunicationTest)
{
    DialogBench b;
    b.open();
    b.click("btnTestComm");
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("Communication test not required for demo readers."));
}

TEST(ReaderConfigurationDialog, TheMainWindowRefreshesAfterOK)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    FakeSleeper sleeper(f.clock);
    FakeSerialPort port(f.clock);
    // OK straight away picks the reader and filter shown.
    QTimer::singleShot(0, [] {
        for (QWidget *w : QApplication::topLevelWidgets()) {
            if (auto *d = qobject_cast<frmReaderConfiguration *>(w)) {
                QComboBox *readers = d->findChild<QComboBox *>(QStringLiteral("cboUserReaders"));
                readers->setCurrentIndex(1);
                Q_EMIT readers->activated(1);
                QTest::mouseClick(d->findChild<QPushButton *>(QStringLiteral("btnOK")), Qt::LeftButton);
            }
        }
    });
    frmReaderConfiguration::showFor(wb, port, sleeper, nullptr);
    EXPECT_EQ(wb.combo(Workbench::Readers).text(), QStringLiteral("Demo2"));
    EXPECT_EQ(wb.combo(Workbench::Filters).text(), QStringLiteral("1:  450 nm*"));
}
