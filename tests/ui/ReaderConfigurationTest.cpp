// The reader configuration dialog driven through its widgets.

#include "FakeSerialPort.h"
#include "ModalForm.h"
#include "WorkbenchFixture.h"

#include "ui/frmReaderConfiguration.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

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
        const QVariant id = folder.open().scalar(
            QStringLiteral("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?"), {name});
        return id.isNull() ? -1 : id.toInt();
    }
    frmReaderConfiguration &open(const QString &reader = QStringLiteral("Demo"))
    {
        dialog = std::make_unique<frmReaderConfiguration>(folder.folder(), prompt, port, sleeper, readerID(reader));
        dialog->show();
        return *dialog;
    }
    template <typename T> T *find(const char *name) const
    {
        T *w = dialog->findChild<T *>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    void click(const char *name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }
    QList<int> filters(const QString &name) const
    {
        DbConnection db = folder.open();
        QSqlQuery q =
            db.query(QStringLiteral("SELECT FilterValue FROM UserFilters WHERE UserReaderID = ? ORDER BY FilterNo"),
                     {readerID(name)});
        QList<int> values;
        while (q.next())
            values << q.value(0).toInt();
        return values;
    }
};

} // namespace

// What a reader's settings become and when they reach the database is the dialog's logic
// (tests/readers); here the keys, boxes and buttons that hand the user's work to it.
TEST(ReaderConfigurationDialog, FiltersAreTypedAddedAndMovedByKeys)
{
    DialogBench b;
    b.open();
    b.click("btnAddFilter");
    QTableWidget *grid = b.find<QTableWidget>("dgFilters");
    ASSERT_EQ(grid->rowCount(), 2);
    QLineEdit *editor = grid->findChild<QLineEdit *>(QStringLiteral("dgFiltersEditor"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("4x059"));
    EXPECT_EQ(editor->text(), QStringLiteral("405"));
    QTest::keyClick(editor, Qt::Key_Return); // the last row: Enter adds a new one
    EXPECT_EQ(grid->rowCount(), 3);
    EXPECT_EQ(grid->item(1, 1)->text(), QStringLiteral("405"));
    grid->setFocus();
    grid->setCurrentCell(1, 1);
    EXPECT_EQ(b.find<QLabel>("lblDefaultFilter")->text(), QStringLiteral("(Default filter: 405 nm) "));
    QTest::keyClick(grid, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(grid->item(0, 1)->text(), QStringLiteral("405"));
    EXPECT_EQ(grid->currentRow(), 0);
    QTest::keyClick(grid, Qt::Key_X); // not a digit: no edit starts
    const QLineEdit *open = grid->findChild<QLineEdit *>(QStringLiteral("dgFiltersEditor"));
    EXPECT_TRUE(open == nullptr || !open->isVisible());
    b.click("btnOK");
    EXPECT_EQ(b.prompt.count(), 0) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(b.filters(QStringLiteral("Demo")), QList<int>({405, 630, 0}));
    EXPECT_TRUE(b.dialog->changesApplied());
    EXPECT_EQ(b.dialog->selectedFilterIndex(), 0);
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
    b.click("btnApply");
    EXPECT_EQ(b.folder.open()
                  .scalar(QStringLiteral("SELECT UserCOMPort FROM UserReaders WHERE UserReaderName = 'Demo'"))
                  .toInt(),
              9);
    b.click("btnTestComm");
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("Communication test not required for demo readers."));
}

TEST(ReaderConfigurationDialog, TheMainWindowRefreshesAfterOK)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    FakeSleeper sleeper(f.clock);
    FakeSerialPort port(f.clock);
    // OK straight away picks the reader and filter shown.
    QObject context;
    const auto opened = whenFormOpens<frmReaderConfiguration>(&context, [](frmReaderConfiguration *d) {
        QComboBox *readers = d->findChild<QComboBox *>(QStringLiteral("cboUserReaders"));
        readers->setCurrentIndex(1);
        Q_EMIT readers->activated(1);
        QTest::mouseClick(d->findChild<QPushButton *>(QStringLiteral("btnOK")), Qt::LeftButton);
    });
    frmReaderConfiguration::showFor(wb, port, sleeper, nullptr);
    EXPECT_TRUE(*opened);
    EXPECT_EQ(wb.combo(Workbench::Readers).text(), QStringLiteral("Demo2"));
    EXPECT_EQ(wb.combo(Workbench::Filters).text(), QStringLiteral("1:  450 nm*"));
}
