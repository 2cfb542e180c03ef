// The reader configuration's logic: its transaction from opening to closing, Apply, New,
// Delete, Load Defaults, the filter list and Test Communication.

#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeSerialPort.h"
#include "TempProgramFolder.h"
#include "WorkbenchFixture.h"

#include "platform/SerialPortMap.h"
#include "readers/ReaderConfiguration.h"
#include "store/AuditQuery.h"
#include "worksheet/ReaderRefresh.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using RC = ReaderConfiguration;

struct ConfigBench {
    TempProgramFolder folder;
    FakePrompt prompt;
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakeSerialPort port{clock};
    int beeps = 0;
    QList<bool> busy;
    std::unique_ptr<ReaderConfiguration> config;

    int readerID(const QString &name) const
    {
        const QVariant id = folder.open().scalar(
            QStringLiteral("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?"), {name});
        return id.isNull() ? -1 : id.toInt();
    }
    ReaderConfiguration &open(const QString &readerName = QStringLiteral("Demo"))
    {
        config = std::make_unique<ReaderConfiguration>(folder.folder(), prompt, port, sleeper, readerID(readerName));
        config->onBeep = [this] { ++beeps; };
        config->onBusy = [this](bool b) { busy.append(b); };
        config->open();
        return *config;
    }
    // What another connection sees: the committed state of the reader's row and filters.
    QVariantList row(const QString &name = QStringLiteral("Demo")) const
    {
        DbConnection db = folder.open();
        QSqlQuery q = db.query(QStringLiteral("SELECT ReaderModelID, UserCOMPort, UserSettings, UserFlowControl, "
                                              "UserDefaultFilterNo FROM UserReaders WHERE UserReaderName = ?"),
                               {name});
        if (!q.next())
            return {};
        return {q.value(0).toInt(), q.value(1).toInt(), q.value(2).toString(), q.value(3).toInt(), q.value(4).toInt()};
    }
    // The audit rows of the readers, as "action|record|field|old|new".
    QStringList trail() const
    {
        QStringList rows;
        for (const AuditRow &row : AuditQuery::rows(folder.open()))
            rows << QStringList{row.action, row.recordID, row.field, row.oldValue, row.newValue}.join('|');
        return rows;
    }
    QList<int> filters(const QString &name = QStringLiteral("Demo")) const
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
    int readerCount() const { return folder.open().scalar(QStringLiteral("SELECT COUNT(*) FROM UserReaders")).toInt(); }
    void select(RC::Combo which, const QString &text)
    {
        const int index = config->combo(which).findText(text);
        ASSERT_GE(index, 0) << text.toStdString();
        config->selectCombo(which, index);
    }
};

} // namespace

TEST(ReaderConfiguration, ChangesReachTheDatabaseOnlyAtApply)
{
    ConfigBench b;
    RC &c = b.open();
    EXPECT_FALSE(c.applyEnabled());
    b.select(RC::ReaderModels, QStringLiteral("Labsystems: Multiscan RC"));
    b.select(RC::ComPort, SerialPortMap().portNames()[2]);
    b.select(RC::BitsPerSecond, QStringLiteral("4800"));
    b.select(RC::Parity, QStringLiteral("Even"));
    b.select(RC::DataBits, QStringLiteral("7"));
    b.select(RC::StopBits, QStringLiteral("2"));
    b.select(RC::FlowControl, QStringLiteral("Hardware"));
    EXPECT_TRUE(c.applyEnabled());
    EXPECT_EQ(b.row(), QVariantList({6, 1, QStringLiteral("9600,N,8,1"), 0, 1}));

    EXPECT_TRUE(c.apply());
    EXPECT_EQ(b.row(), QVariantList({1, 3, QStringLiteral("4800,E,7,2"), 2, 1}));
    EXPECT_EQ(b.trail(), (QStringList{"Reader changed|1|ReaderModelID|6|1", "Reader changed|1|UserCOMPort|1|3",
                                      "Reader changed|1|UserFlowControl|0|2",
                                      "Reader changed|1|UserSettings|9600,N,8,1|4800,E,7,2"}));
    EXPECT_FALSE(c.applyEnabled());
    c.close();
    EXPECT_EQ(b.row(), QVariantList({1, 3, QStringLiteral("4800,E,7,2"), 2, 1}));
}

TEST(ReaderConfiguration, ANewReaderIsAddedWithItsFiltersOrUpdatesOneOfItsName)
{
    ConfigBench b;
    RC &c = b.open();
    c.newUserReader();
    EXPECT_FALSE(c.deleteEnabled());
    c.setNewNameText(QStringLiteral("Lab 2 Multiscan"));
    b.select(RC::ReaderModels, QStringLiteral("Labsystems: Multiscan RC"));
    c.loadDefaults();
    c.setFilterValueText(0, QStringLiteral("405"));
    c.addFilter();
    c.setFilterValueText(1, QStringLiteral("492"));
    c.setFilterRow(1);
    EXPECT_TRUE(c.apply());
    EXPECT_EQ(b.row(QStringLiteral("Lab 2 Multiscan")), QVariantList({1, 1, QStringLiteral("9600,N,8,1"), 0, 2}));
    EXPECT_EQ(b.filters(QStringLiteral("Lab 2 Multiscan")), QList<int>({405, 492}));
    EXPECT_EQ(c.combo(RC::UserReaders).text(), QStringLiteral("Lab 2 Multiscan"));
    EXPECT_EQ(c.outcome().currentReaderID, b.readerID(QStringLiteral("Lab 2 Multiscan")));
    EXPECT_FALSE(c.newNameVisible());

    c.newUserReader();
    c.setNewNameText(QStringLiteral("Demo"));
    b.select(RC::BitsPerSecond, QStringLiteral("2400"));
    c.setFilterValueText(0, QStringLiteral("620"));
    EXPECT_TRUE(c.apply());
    EXPECT_EQ(b.readerCount(), 3);
    EXPECT_EQ(b.row().value(2), QStringLiteral("2400,N,8,1"));
    EXPECT_EQ(b.filters(), QList<int>({620, 492}));
    EXPECT_EQ(c.currentReaderID(), b.readerID(QStringLiteral("Demo")));
}

TEST(ReaderConfiguration, ANewReaderStillWithoutANameIsNotAppliedAndBeeps)
{
    ConfigBench b;
    RC &c = b.open();
    c.newUserReader();
    c.setNewNameText(QStringLiteral("  Type new reader name here "));
    EXPECT_FALSE(c.apply());
    EXPECT_EQ(b.beeps, 1);
    EXPECT_TRUE(c.newNameVisible());
    EXPECT_EQ(b.readerCount(), 2);
    EXPECT_FALSE(c.outcome().changesApplied);

    // An emptied name box goes away and the reader shows again.
    c.clearNewName();
    c.newNameFocusLost();
    EXPECT_FALSE(c.newNameVisible());
    EXPECT_EQ(c.combo(RC::UserReaders).text(), QStringLiteral("Demo"));
    EXPECT_TRUE(c.deleteEnabled());
}

TEST(ReaderConfiguration, ADeleteCountsAtApplyAndACancelKeepsTheReader)
{
    ConfigBench b;
    RC &c = b.open();
    c.deleteUserReader();
    EXPECT_EQ(c.combo(RC::UserReaders).texts, QStringList({"Demo2"}));
    EXPECT_TRUE(b.prompt.boxes().isEmpty()); // no question
    c.close();
    EXPECT_EQ(b.readerCount(), 2);
    EXPECT_EQ(b.filters(), QList<int>({630}));

    RC &again = b.open();
    again.deleteUserReader();
    EXPECT_TRUE(again.apply());
    EXPECT_EQ(b.readerID(QStringLiteral("Demo")), -1);
    EXPECT_EQ(b.readerCount(), 1);
    EXPECT_EQ(b.trail(), QStringList{"Reader deleted|1||Filters=1:630; ReaderModelID=6; UserCOMPort=1; "
                                     "UserDefaultFilterNo=1; UserFlowControl=0; UserReaderName=Demo; "
                                     "UserSettings=9600,N,8,1|"});
    EXPECT_EQ(b.folder.open().scalar(QStringLiteral("SELECT COUNT(*) FROM UserFilters")).toInt(), 1);
}

TEST(ReaderConfiguration, WithoutAnyReaderANewOneStartsFromTheFirstModel)
{
    ConfigBench b;
    RC &c = b.open();
    c.deleteUserReader();
    c.deleteUserReader();
    EXPECT_FALSE(c.combo(RC::UserReaders).hasSelection());
    EXPECT_FALSE(c.deleteEnabled());
    EXPECT_EQ(c.combo(RC::ReaderModels).index, 0);
    EXPECT_EQ(c.settingsText(), QStringLiteral("9600,N,8,1"));
    ASSERT_EQ(c.filters().count(), 1);
    EXPECT_EQ(c.filters().filterValue(0), 0);
}

TEST(ReaderConfiguration, TheRowStoodOnAtApplyBecomesTheDefaultFilter)
{
    ConfigBench b;
    RC &c = b.open();
    c.addFilter();
    c.setFilterValueText(1, QStringLiteral("405"));
    c.setFilterRow(0);
    c.apply();
    EXPECT_EQ(b.row().value(4).toInt(), 1);
    c.setFilterRow(1);
    EXPECT_EQ(c.defaultFilterCaption(), QStringLiteral("(Default filter: 405 nm) "));
    c.apply();
    EXPECT_EQ(b.row().value(4).toInt(), 2);
    EXPECT_EQ(c.filters().current(), 1); // shown again on the new default
    c.ok();
    EXPECT_EQ(c.outcome().selectedFilterIndex, 1);

    // An empty list leaves no filter rows and no default.
    c.removeFilter();
    c.removeFilter();
    EXPECT_FALSE(c.removeFilterEnabled());
    EXPECT_EQ(c.defaultFilterCaption(), QStringLiteral("(Default filter: none) "));
    EXPECT_TRUE(c.apply());
    EXPECT_TRUE(b.filters().isEmpty());
    EXPECT_EQ(b.row().value(4).toInt(), 0);
}

TEST(ReaderConfiguration, LoadDefaultsTakesTheModelsSettingsAndFilters)
{
    ConfigBench b;
    RC &c = b.open();
    b.select(RC::ReaderModels, QStringLiteral("Molecular Devices Series I: EMAX, VMAX, ThermoMax"));
    c.loadDefaults();
    ASSERT_EQ(c.filters().count(), 4);
    EXPECT_EQ(c.filters().filterValue(3), 650);
    EXPECT_EQ(c.filters().current(), 0);

    b.select(RC::ReaderModels, QStringLiteral("Bio-Tek: ELx800"));
    c.loadDefaults();
    EXPECT_EQ(c.settingsText(), QStringLiteral("9600,N,8,2"));
    EXPECT_EQ(c.filters().count(), 1);
}

TEST(ReaderConfiguration, TheRowsSettingsAndPortSetTheBoxesAndAPortPastTheListIsKept)
{
    ConfigBench b;
    b.folder.open().execute(QStringLiteral("UPDATE UserReaders SET UserSettings = ' 19200,o,7,2 ', UserCOMPort = 12, "
                                           "UserFlowControl = 3 WHERE UserReaderName = 'Demo'"));
    RC &c = b.open();
    EXPECT_EQ(c.combo(RC::BitsPerSecond).text(), QStringLiteral("19200"));
    EXPECT_EQ(c.combo(RC::Parity).text(), QStringLiteral("Odd"));
    EXPECT_EQ(c.combo(RC::DataBits).text(), QStringLiteral("7"));
    EXPECT_EQ(c.combo(RC::StopBits).text(), QStringLiteral("2"));
    EXPECT_EQ(c.combo(RC::FlowControl).text(), QStringLiteral("Xon / Xoff + Hardware"));
    EXPECT_EQ(c.portNumber(), 12);
    EXPECT_EQ(c.combo(RC::ComPort).count(), 12);
    b.select(RC::BitsPerSecond, QStringLiteral("2400"));
    c.apply();
    EXPECT_EQ(b.row().value(1).toInt(), 12);
}

TEST(ReaderConfiguration, ATypedDevicePathBecomesThePortOfTheReader)
{
    ConfigBench b;
    RC &c = b.open();
    const QString path = QStringLiteral("/dev/serial/by-id/usb-FTDI_Multiscan-if00");
    c.setComPortText(path);
    EXPECT_EQ(c.portNumber(), 9);
    EXPECT_TRUE(c.applyEnabled());
    EXPECT_EQ(SerialPortMap::load(b.folder.path()).count(), 8); // kept only once applied
    c.apply();
    EXPECT_EQ(b.row().value(1).toInt(), 9);
    EXPECT_EQ(SerialPortMap::load(b.folder.path()).devicePath(9), path);
    EXPECT_EQ(c.combo(RC::ComPort).text(), path);

    // Typing a port the list has chooses it.
    c.setComPortText(SerialPortMap().portNames()[1]);
    EXPECT_EQ(c.portNumber(), 2);
}

TEST(ReaderConfiguration, TheCommunicationTestRunsTheModelsDriverOnTheDialogsSettings)
{
    ConfigBench b;
    RC &c = b.open();
    b.select(RC::ReaderModels, QStringLiteral("Labsystems: Multiscan RC"));
    b.select(RC::ComPort, SerialPortMap().portNames()[3]);
    b.select(RC::BitsPerSecond, QStringLiteral("19200"));
    b.select(RC::FlowControl, QStringLiteral("Xon / Xoff"));
    c.testCommunication(); // nobody answers
    EXPECT_EQ(b.port.commPort(), 4);
    EXPECT_EQ(b.port.portName(), SerialPortMap().portNames()[3]);
    EXPECT_EQ(b.port.settings(), QStringLiteral("19200,N,8,1"));
    EXPECT_EQ(b.port.handshakingHistory().first(), 1);
    EXPECT_EQ(b.busy, QList<bool>({true, false}));
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Communication Failed"));
    EXPECT_EQ(b.row().value(0).toInt(), 6); // nothing applied
}

TEST(ReaderConfiguration, TheMainWindowTakesTheAppliedReaderAndFilterButNotACancel)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    const QStringList filtersBefore = wb.combo(Workbench::Filters).texts;
    refreshMainWindow(wb, ReaderConfiguration::Outcome{});
    EXPECT_EQ(wb.combo(Workbench::Readers).text(), QStringLiteral("Demo"));
    EXPECT_EQ(wb.combo(Workbench::Filters).texts, filtersBefore);

    FakeSleeper sleeper(f.clock);
    FakeSerialPort port(f.clock);
    ReaderConfiguration c(f.folder.folder(), f.prompt, port, sleeper, wb.combo(Workbench::Readers).itemData().toInt());
    c.open();
    c.selectUserReader(1); // Demo2
    c.addFilter();
    c.setFilterValueText(1, QStringLiteral("492"));
    c.setFilterRow(1);
    c.ok();
    c.close();
    refreshMainWindow(wb, c.outcome());
    EXPECT_EQ(wb.combo(Workbench::Readers).text(), QStringLiteral("Demo2"));
    EXPECT_EQ(wb.combo(Workbench::Filters).texts, QStringList({"1:  450 nm", "2:  492 nm*"}));
    EXPECT_EQ(wb.combo(Workbench::Filters).index, 1);
}

TEST(ReaderFilterList, RowsAreNumberedByTheirPlaceAndMovingSwapsValues)
{
    ReaderFilterList list;
    list.insert(); // an empty list adds
    list.setValueText(0, QStringLiteral("405"));
    list.add();
    list.setValueText(1, QStringLiteral("450"));
    list.setCurrent(1);
    list.insert();
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(list.current(), 1);
    EXPECT_EQ(list.filterValue(1), 0);
    EXPECT_EQ(list.filterValue(2), 450);
    EXPECT_EQ(list.filterNo(2), 3);

    list.setCurrent(0);
    EXPECT_FALSE(list.move(-1));
    EXPECT_TRUE(list.move(+1));
    EXPECT_EQ(list.current(), 1);
    EXPECT_EQ(list.filterValue(0), 0);
    EXPECT_EQ(list.filterValue(1), 405);
    list.setCurrent(2);
    EXPECT_FALSE(list.move(+1));

    list.setCurrent(0);
    list.remove();
    EXPECT_EQ(list.filterNo(0), 1);
    EXPECT_EQ(list.filterValue(0), 405);
    list.setCurrent(1);
    list.remove();
    EXPECT_EQ(list.current(), 0); // falls on the last row
    list.remove();
    EXPECT_EQ(list.current(), -1);
}

TEST(ReaderFilterList, KeysAllowAtMostThreeDigits)
{
    using V = ReaderFilterList::KeyVerdict;
    const struct {
        char16_t key;
        int row;
        const char *text;
        bool selected;
        V verdict;
    } cases[] = {
        {u'4', 2, "45", false, V::Pass},          {u'4', 2, "450", false, V::Reject}, {u'4', 2, "450", true, V::Pass},
        {u'x', 2, "4", false, V::Reject},         {u'-', 2, "", false, V::Reject},    {u'7', 0, "", false, V::AddRow},
        {u'\b', 2, "450", false, V::Pass},        {u'\t', 2, "450", false, V::Pass},  {u'\r', 2, "450", false, V::Pass},
        {char16_t(27), 2, "450", false, V::Pass},
    };
    for (const auto &c : cases)
        EXPECT_EQ(ReaderFilterList::keyVerdict(c.key, c.row, QString::fromLatin1(c.text), c.selected), c.verdict)
            << int(c.key) << " " << c.text;
}
