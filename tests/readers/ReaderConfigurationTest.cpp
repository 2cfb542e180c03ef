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

#include <QDir>

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
        DbConnection db = folder.open();
        const QVariant id = db.scalar(QStringLiteral("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?"), {name});
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
    void close() { config->close(); }
    // What another connection sees: the committed state.
    QVariantList row(const QString &name) const
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
    QList<int> filters(const QString &name) const
    {
        DbConnection db = folder.open();
        QSqlQuery q = db.query(QStringLiteral("SELECT FilterValue FROM UserFilters WHERE UserReaderID = ? ORDER BY FilterNo"),
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

TEST(ReaderConfiguration, OpensOnTheChosenReaderWithNothingToApply)
{
    ConfigBench b;
    RC &c = b.open(QStringLiteral("Demo2"));
    EXPECT_EQ(c.combo(RC::UserReaders).texts, QStringList({"Demo", "Demo2"}));
    EXPECT_EQ(c.combo(RC::UserReaders).text(), QStringLiteral("Demo2"));
    EXPECT_EQ(c.combo(RC::ReaderModels).count(), 26);
    EXPECT_EQ(c.combo(RC::ReaderModels).text(), QStringLiteral("Demo2"));
    EXPECT_EQ(c.combo(RC::ComPort).index, 0);
    EXPECT_EQ(c.settingsText(), QStringLiteral("9600,N,8,1"));
    EXPECT_EQ(c.combo(RC::Parity).text(), QStringLiteral("None"));
    EXPECT_EQ(c.combo(RC::FlowControl).text(), QStringLiteral("None"));
    ASSERT_EQ(c.filters().count(), 1);
    EXPECT_EQ(c.filters().filterValue(0), 450);
    EXPECT_EQ(c.filters().current(), 0);
    EXPECT_EQ(c.defaultFilterCaption(), QStringLiteral("(Default filter: 450 nm) "));
    EXPECT_FALSE(c.applyEnabled());
    EXPECT_TRUE(c.deleteEnabled());
    EXPECT_TRUE(c.testCommEnabled());
}

TEST(ReaderConfiguration, ChangesReachTheDatabaseOnlyAtApply)
{
    ConfigBench b;
    RC &c = b.open();
    b.select(RC::ReaderModels, QStringLiteral("Labsystems: Multiscan RC"));
    b.select(RC::ComPort, SerialPortMap().portNames()[2]);
    b.select(RC::BitsPerSecond, QStringLiteral("4800"));
    b.select(RC::Parity, QStringLiteral("Even"));
    b.select(RC::DataBits, QStringLiteral("7"));
    b.select(RC::StopBits, QStringLiteral("2"));
    b.select(RC::FlowControl, QStringLiteral("Hardware"));
    EXPECT_TRUE(c.applyEnabled());
    EXPECT_EQ(b.row(QStringLiteral("Demo")), QVariantList({6, 1, QStringLiteral("9600,N,8,1"), 0, 1}));

    EXPECT_TRUE(c.apply());
    EXPECT_EQ(b.row(QStringLiteral("Demo")), QVariantList({1, 3, QStringLiteral("4800,E,7,2"), 2, 1}));
    EXPECT_EQ(b.trail(), (QStringList{"Reader changed|1|ReaderModelID|6|1", "Reader changed|1|UserCOMPort|1|3",
                                      "Reader changed|1|UserFlowControl|0|2",
                                      "Reader changed|1|UserSettings|9600,N,8,1|4800,E,7,2"}));
    EXPECT_FALSE(c.applyEnabled());
    EXPECT_TRUE(c.outcome().changesApplied);
    b.close();
    EXPECT_EQ(b.row(QStringLiteral("Demo")), QVariantList({1, 3, QStringLiteral("4800,E,7,2"), 2, 1}));
}

TEST(ReaderConfiguration, ANewReaderWithTheNameOfAnExistingOneUpdatesIt)
{
    ConfigBench b;
    RC &c = b.open(QStringLiteral("Demo2"));
    c.newUserReader();
    EXPECT_TRUE(c.newNameVisible());
    EXPECT_EQ(c.newNameText(), QStringLiteral("Type new reader name here"));
    EXPECT_FALSE(c.deleteEnabled());
    c.setNewNameText(QStringLiteral("Demo"));
    b.select(RC::BitsPerSecond, QStringLiteral("2400"));
    c.setFilterValueText(0, QStringLiteral("620"));
    EXPECT_TRUE(c.apply());
    EXPECT_EQ(b.readerCount(), 2);
    EXPECT_EQ(b.row(QStringLiteral("Demo")), QVariantList({7, 1, QStringLiteral("2400,N,8,1"), 0, 1}));
    EXPECT_EQ(b.filters(QStringLiteral("Demo")), QList<int>({620}));
    EXPECT_EQ(b.filters(QStringLiteral("Demo2")), QList<int>({450}));
    EXPECT_EQ(c.currentReaderID(), b.readerID(QStringLiteral("Demo")));
    EXPECT_FALSE(c.newNameVisible());
}

TEST(ReaderConfiguration, ANewReaderIsAddedWithItsFiltersAndShown)
{
    ConfigBench b;
    RC &c = b.open();
    c.newUserReader();
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
    EXPECT_EQ(c.newNameText(), QStringLiteral("Type new reader name here"));
    EXPECT_EQ(b.readerCount(), 2);
    EXPECT_FALSE(c.outcome().changesApplied);
}

TEST(ReaderConfiguration, AnEmptiedNameBoxGoesAwayAndTheReaderShowsAgain)
{
    ConfigBench b;
    RC &c = b.open(QStringLiteral("Demo2"));
    c.newUserReader();
    c.clearNewName();
    c.newNameFocusLost();
    EXPECT_FALSE(c.newNameVisible());
    EXPECT_EQ(c.combo(RC::UserReaders).text(), QStringLiteral("Demo2"));
    EXPECT_TRUE(c.deleteEnabled());
    EXPECT_FALSE(c.applyEnabled());
}

TEST(ReaderConfiguration, ApplyWithAnEmptyFilterListLeavesNoFilterRows)
{
    ConfigBench b;
    RC &c = b.open();
    c.removeFilter();
    EXPECT_EQ(c.filters().count(), 0);
    EXPECT_FALSE(c.removeFilterEnabled());
    EXPECT_FALSE(c.upDownFilterEnabled());
    EXPECT_EQ(c.defaultFilterCaption(), QStringLiteral("(Default filter: none) "));
    EXPECT_TRUE(c.apply());
    EXPECT_TRUE(b.filters(QStringLiteral("Demo")).isEmpty());
    EXPECT_EQ(b.row(QStringLiteral("Demo")).value(4).toInt(), 0);
}

TEST(ReaderConfiguration, ACancelledDialogAfterADeleteKeepsTheReader)
{
    ConfigBench b;
    RC &c = b.open();
    c.deleteUserReader();
    EXPECT_EQ(c.combo(RC::UserReaders).texts, QStringList({"Demo2"}));
    EXPECT_TRUE(c.applyEnabled());
    EXPECT_TRUE(b.prompt.boxes().isEmpty()); // no question
    b.close();
    EXPECT_EQ(b.readerCount(), 2);
    EXPECT_EQ(b.filters(QStringLiteral("Demo")), QList<int>({630}));
}

TEST(ReaderConfiguration, ADeleteCountsAtApply)
{
    ConfigBench b;
    RC &c = b.open();
    c.deleteUserReader();
    EXPECT_TRUE(c.apply());
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
    EXPECT_EQ(c.combo(RC::ReaderModels).text(), QStringLiteral("Labsystems: Multiscan RC"));
    EXPECT_EQ(c.combo(RC::ComPort).index, 0);
    EXPECT_EQ(c.settingsText(), QStringLiteral("9600,N,8,1"));
    ASSERT_EQ(c.filters().count(), 1);
    EXPECT_EQ(c.filters().filterValue(0), 0);
    EXPECT_TRUE(c.applyEnabled());
}

TEST(ReaderConfiguration, TheRowStoodOnAtApplyBecomesTheDefaultFilter)
{
    ConfigBench b;
    RC &c = b.open();
    c.addFilter();
    c.setFilterValueText(1, QStringLiteral("405"));
    c.setFilterRow(0);
    c.apply();
    EXPECT_EQ(b.row(QStringLiteral("Demo")).value(4).toInt(), 1);
    c.setFilterRow(1);
    EXPECT_EQ(c.defaultFilterCaption(), QStringLiteral("(Default filter: 405 nm) "));
    c.apply();
    EXPECT_EQ(b.row(QStringLiteral("Demo")).value(4).toInt(), 2);
    EXPECT_EQ(c.filters().current(), 1); // shown again on the new default
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
    EXPECT_TRUE(c.removeFilterEnabled());
    EXPECT_TRUE(c.testCommEnabled());

    b.select(RC::ReaderModels, QStringLiteral("Bio-Tek: ELx800"));
    c.loadDefaults();
    EXPECT_EQ(c.settingsText(), QStringLiteral("9600,N,8,2"));
    EXPECT_EQ(c.filters().count(), 1);
    EXPECT_EQ(c.defaultFilterCaption(), QStringLiteral("(Default filter: none) "));
}

TEST(ReaderConfiguration, SettingsTextsSetTheSerialBoxes)
{
    ConfigBench b;
    {
        DbConnection db = b.folder.open();
        db.execute(QStringLiteral("UPDATE UserReaders SET UserSettings = ' 19200,o,7,2 ', UserCOMPort = 6, "
                                  "UserFlowControl = 3 WHERE UserReaderName = 'Demo'"));
    }
    RC &c = b.open();
    EXPECT_EQ(c.combo(RC::BitsPerSecond).text(), QStringLiteral("19200"));
    EXPECT_EQ(c.combo(RC::Parity).text(), QStringLiteral("Odd"));
    EXPECT_EQ(c.combo(RC::DataBits).text(), QStringLiteral("7"));
    EXPECT_EQ(c.combo(RC::StopBits).text(), QStringLiteral("2"));
    EXPECT_EQ(c.combo(RC::FlowControl).text(), QStringLiteral("Xon / Xoff + Hardware"));
    EXPECT_EQ(c.portNumber(), 6);
}

TEST(ReaderConfiguration, ATypedDevicePathBecomesThePortOfTheReader)
{
    ConfigBench b;
    RC &c = b.open();
    c.setComPortText(QStringLiteral("/dev/serial/by-id/usb-FTDI_Multiscan-if00"));
    EXPECT_EQ(c.portNumber(), 9);
    EXPECT_EQ(c.combo(RC::ComPort).text(), QStringLiteral("/dev/serial/by-id/usb-FTDI_Multiscan-if00"));
    EXPECT_TRUE(c.applyEnabled());
    EXPECT_EQ(SerialPortMap::load(b.folder.path()).count(), 8); // kept only once applied
    c.apply();
    EXPECT_EQ(b.row(QStringLiteral("Demo")).value(1).toInt(), 9);
    EXPECT_EQ(SerialPortMap::load(b.folder.path()).devicePath(9),
              QStringLiteral("/dev/serial/by-id/usb-FTDI_Multiscan-if00"));
    EXPECT_EQ(c.combo(RC::ComPort).text(), QStringLiteral("/dev/serial/by-id/usb-FTDI_Multiscan-if00"));

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
    EXPECT_EQ(b.row(QStringLiteral("Demo")).value(0).toInt(), 6); // nothing applied
}

TEST(ReaderConfiguration, TheCommunicationTestRunsTheDriverOfTheChosenModel)
{
    ConfigBench b;
    RC &c = b.open();
    b.select(RC::ReaderModels, QStringLiteral("MS2 Reader"));
    // Nothing answers on the fake port: the MS2 driver asks whether to retry at once.
    b.prompt.queueAnswer(MsgAnswer::Cancel);
    c.testCommunication();
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.boxes()[0].title, QStringLiteral("Communication Problem"));
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("There is a communication problem with this communication "
                                                   "settings! You have to try some other settings!"));
    EXPECT_EQ(b.busy, QList<bool>({true, false}));
}

TEST(ReaderConfiguration, OkAppliesAndHandsTheReaderAndFilterToTheMainWindow)
{
    ConfigBench b;
    RC &c = b.open();
    c.addFilter();
    c.setFilterValueText(1, QStringLiteral("405"));
    c.setFilterRow(1);
    c.ok();
    b.close();
    EXPECT_EQ(b.filters(QStringLiteral("Demo")), QList<int>({630, 405}));
    const RC::Outcome outcome = c.outcome();
    EXPECT_TRUE(outcome.changesApplied);
    EXPECT_EQ(outcome.currentReaderID, b.readerID(QStringLiteral("Demo")));
    EXPECT_EQ(outcome.selectedFilterIndex, 1);
}

TEST(ReaderConfiguration, TheMainWindowTakesTheAppliedReaderAndFilter)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
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
    EXPECT_EQ(wb.testPanel().filterCurrent, QStringLiteral("492 nm"));
}

TEST(ReaderConfiguration, ACancelledDialogLeavesTheMainWindowAlone)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    const QStringList filtersBefore = wb.combo(Workbench::Filters).texts;
    refreshMainWindow(wb, ReaderConfiguration::Outcome{});
    EXPECT_EQ(wb.combo(Workbench::Readers).text(), QStringLiteral("Demo"));
    EXPECT_EQ(wb.combo(Workbench::Filters).texts, filtersBefore);
}

TEST(ReaderFilterList, RowsAreNumberedByTheirPlace)
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
    list.remove();
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list.filterNo(0), 1);
    EXPECT_EQ(list.filterValue(0), 0);
    EXPECT_EQ(list.current(), 0);
    list.setCurrent(1);
    list.remove();
    EXPECT_EQ(list.current(), 0); // falls on the last row
    list.remove();
    EXPECT_EQ(list.current(), -1);
    EXPECT_EQ(list.count(), 0);
}

TEST(ReaderFilterList, MovingSwapsValuesAndTheNumbersStay)
{
    ReaderFilterList list;
    for (const char *v : {"405", "450", "630"}) {
        list.add();
        list.setValueText(list.current(), QString::fromLatin1(v));
    }
    list.setCurrent(0);
    EXPECT_FALSE(list.move(-1));
    EXPECT_TRUE(list.move(+1));
    EXPECT_EQ(list.current(), 1);
    EXPECT_EQ(list.filterValue(0), 450);
    EXPECT_EQ(list.filterValue(1), 405);
    EXPECT_EQ(list.filterNo(0), 1);
    list.setCurrent(2);
    EXPECT_FALSE(list.move(+1));
}

TEST(ReaderFilterList, KeysAllowAtMostThreeDigits)
{
    using V = ReaderFilterList::KeyVerdict;
    EXPECT_EQ(ReaderFilterList::keyVerdict(u'4', 2, QStringLiteral("45"), false), V::Pass);
    EXPECT_EQ(ReaderFilterList::keyVerdict(u'4', 2, QStringLiteral("450"), false), V::Reject);
    EXPECT_EQ(ReaderFilterList::keyVerdict(u'4', 2, QStringLiteral("450"), true), V::Pass);
    EXPECT_EQ(ReaderFilterList::keyVerdict(u'x', 2, QStringLiteral("4"), false), V::Reject);
    EXPECT_EQ(ReaderFilterList::keyVerdict(u'-', 2, QString(), false), V::Reject);
    EXPECT_EQ(ReaderFilterList::keyVerdict(u'7', 0, QString(), false), V::AddRow);
    for (char16_t passing : {u'\b', u'\t', u'\r', char16_t(27)})
        EXPECT_EQ(ReaderFilterList::keyVerdict(passing, 2, QStringLiteral("450"), false), V::Pass);
}

TEST(ReaderConfiguration, APortPastTheListIsShownAndKept)
{
    ConfigBench b;
    b.folder.open().execute(QStringLiteral("UPDATE UserReaders SET UserCOMPort = 12 WHERE UserReaderName = 'Demo'"));
    RC &c = b.open();
    EXPECT_EQ(c.portNumber(), 12);
    EXPECT_EQ(c.combo(RC::ComPort).count(), 12);
    b.select(RC::BitsPerSecond, QStringLiteral("2400"));
    c.apply();
    EXPECT_EQ(b.row(QStringLiteral("Demo")).value(1).toInt(), 12);
}
