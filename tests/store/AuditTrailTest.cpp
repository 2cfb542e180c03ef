// The audit trail: every change leaves exactly its rows, in the change's transaction, and
// the rows themselves can be neither changed nor deleted.
#include "FakePrompt.h"
#include "InjectedFailure.h"
#include "RunPlates.h"
#include "QtPrinters.h"
#include "TempProgramFolder.h"

#include "core/WellList.h"
#include "directory/GroupDirectory.h"
#include "directory/TechDirectory.h"
#include "store/AddedTables.h"
#include "store/AuditQuery.h"
#include "store/AuditTrail.h"
#include "store/DatabaseError.h"
#include "store/DatabaseSchema.h"
#include "store/DbTransaction.h"
#include "store/LabPolicy.h"
#include "store/NamedRunStore.h"
#include "store/PlateChanges.h"
#include "store/RunCatalog.h"
#include "store/RunSaveAsLogic.h"
#include "store/clsPlates.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

// A database with run "A" (id 1) of two plates saved by Save As, and the plates in hand.
struct Audited {
    TempProgramFolder temp;
    FakePrompt prompt;
    RunSaveAsLogic dialog{temp.folder(), prompt};
    RecordSet plates;

    Audited()
    {
        dialog.setPlatesRecord(RunPlates::make(2, 1, QStringLiteral("t")));
        dialog.load();
        dialog.setRunNameText(QStringLiteral("A"));
        EXPECT_EQ(dialog.save(), RunBrowser::CommandEnd::Close);
        plates = dialog.getPlatesRecord();
    }
    void save(const RecordSet &changed)
    {
        dialog.setPlatesRecord(changed);
        ASSERT_TRUE(dialog.simpleSave()) << prompt.texts().join('\n').toStdString();
    }
    // The rows after entry `after`, as "action|table|record|field|old|new", values cut.
    QStringList rowsAfter(qint64 after) const
    {
        QStringList found;
        const DbConnection db = temp.open();
        for (const AuditRow &row : AuditQuery::rows(db)) {
            if (row.entryID > after)
                found << QStringList{row.action,           row.table, row.recordID, row.field, row.oldValue.left(24),
                                     row.newValue.left(24)}
                             .join('|');
        }
        return found;
    }
    qint64 lastEntry() const
    {
        const QVector<AuditRow> rows = AuditQuery::rows(temp.open());
        return rows.isEmpty() ? 0 : rows.last().entryID;
    }
    void inTransaction(const std::function<void(const DbConnection &)> &work) const
    {
        const DbConnection db = temp.open();
        DbTransaction transaction(db);
        work(db);
        transaction.commit();
    }
};

QString withWell(const QString &list, int well, const QString &item)
{
    QStringList items = splitWellList(list);
    items[well] = item;
    return joinWellList(items);
}

TEST(TheAuditTrail, SaveAsOfANewRunRecordsTheRunAndEachPlateAdded)
{
    Audited f;
    EXPECT_EQ(f.rowsAfter(0), (QStringList{"Run saved as|Runs|1|RunName||A", "Plate added|Plates|1/1|||Plate #1",
                                           "Plate added|Plates|1/2|||Plate #2"}));
}

// A server takes a save's rows many to a statement: all of them, in their order.
TEST(TheAuditTrail, KeepsEveryRowOfALargeSaveInOrder)
{
    TempProgramFolder temp;
    FakePrompt prompt;
    RunSaveAsLogic dialog{temp.folder(), prompt};
    dialog.setPlatesRecord(RunPlates::make(96, 1, QStringLiteral("t")));
    dialog.load();
    dialog.setRunNameText(QStringLiteral("Large"));
    ASSERT_EQ(dialog.save(), RunBrowser::CommandEnd::Close);
    const QVector<AuditRow> rows = AuditQuery::rows(temp.open());
    ASSERT_EQ(rows.size(), 97);
    for (int n = 1; n <= 96; ++n)
        EXPECT_EQ(rows[n].newValue, QStringLiteral("Plate #%1").arg(n));
}

struct ActionCase {
    const char *label;
    std::function<void(Audited &)> action;
    QStringList rows;
};

TEST(TheAuditTrail, EachActionLeavesExactlyItsRows)
{
    const QList<ActionCase> cases = {
        {"a plate's lot and one well of its ODs changed",
         [](Audited &f) {
             RecordSet changed = copyRecordset(f.plates);
             changed.setValueAt(1, u"LotNumber", QStringLiteral("L9"));
             changed.setValueAt(1, u"ODs", withWell(changed.valueAt(1, u"ODs").toString(), 9, QStringLiteral("1.5")));
             f.save(changed);
         },
         {"Plate changed|Plates|1/2|LotNumber|Lot 2 t|L9", "Plate changed|Plates|1/2|ODs|B2=0.1 2/9 t|B2=1.5"}},
        {"a plate deleted keeps its whole record",
         [](Audited &f) {
             RecordSet changed = copyRecordset(f.plates);
             changed.setPosition(0);
             changed.deleteCurrent();
             f.save(changed);
         },
         {"Plate deleted|Plates|1/1||{\"DateRead\":\"2026-11-02\"|"}},
        {"a plate added",
         [](Audited &f) {
             RecordSet changed = copyRecordset(f.plates);
             clsPlates::addDefaultPlate(changed, 3, QStringLiteral("Plate #3"), 1);
             f.save(changed);
         },
         {"Plate added|Plates|1/3|||Plate #3"}},
        {"a save that changes nothing", [](Audited &f) { f.save(f.plates); }, {}},
        {"a run renamed",
         [](Audited &f) { f.inTransaction([](const DbConnection &db) { RunCatalog(db).renameRun(1, "B"); }); },
         {"Run renamed|Runs|1|RunName|A|B"}},
        {"a folder added, renamed, deleted with its run and plates",
         [](Audited &f) {
             f.inTransaction([](const DbConnection &db) {
                 const RunCatalog catalog(db);
                 catalog.addFolder(7, "F");
                 catalog.renameFolder(7, "G");
                 catalog.deleteFolder(1);
             });
         },
         {"Folder added|Folders|7|FolderName||F", "Folder renamed|Folders|7|FolderName|F|G",
          "Plate deleted|Plates|1/1||{\"DateRead\":\"2026-11-02\"|",
          "Plate deleted|Plates|1/2||{\"DateRead\":\"2026-11-03\"|", "Run deleted|Runs|1|RunName|A|",
          "Folder deleted|Folders|1|FolderName|Runs|"}},
        {"a group added, renamed with the plates it reached, deleted",
         [](Audited &f) {
             RecordSet changed = copyRecordset(f.plates);
             changed.setValueAt(0, u"Groups", withWell(changed.valueAt(0, u"Groups").toString(), 0, "Farm"));
             f.save(changed);
             const DbConnection db = f.temp.open();
             const GroupDirectory groups(db);
             GroupDirectory::Fields fields{"Farm", "Ann"};
             ASSERT_TRUE(groups.insertGroup(fields));
             fields[0] = "Ranch";
             ASSERT_TRUE(groups.updateGroup("Farm", fields));
             groups.deleteGroup("Ranch");
         },
         {"Plate changed|Plates|1/1|Groups|A1=O'Brien 1/0 t|A1=Farm", "Group added|Groups|1|GroupName||Farm",
          "Group changed|Groups|1|GroupName|Farm|Ranch", "Plate changed|Plates|1/1|Groups|A1=Farm|A1=Ranch",
          "Group deleted|Groups|1|GroupName|GroupName=Ranch; Name=An|"}},
        {"a technician added, renamed with the plates it reached, deleted",
         [](Audited &f) {
             const DbConnection db = f.temp.open();
             const TechDirectory techs(db);
             ASSERT_TRUE(techs.insertTech("D'Arcy"));
             ASSERT_TRUE(techs.updateTech("D'Arcy", "Dee"));
             techs.deleteTech("Dee");
         },
         {"Technician added|Technicians|D'Arcy|TechName||D'Arcy",
          "Technician renamed|Technicians|Dee|TechName|D'Arcy|Dee", "Plate changed|Plates|1/1|TechName|D'Arcy|Dee",
          "Plate changed|Plates|1/2|TechName|D'Arcy|Dee", "Technician deleted|Technicians|Dee|TechName|Dee|"}},
    };
    for (const ActionCase &c : cases) {
        SCOPED_TRACE(c.label);
        Audited f;
        const qint64 before = f.lastEntry();
        c.action(f);
        EXPECT_EQ(f.rowsAfter(before), c.rows);
    }
}

TEST(TheAuditTrail, RowsSayWhoWhereAndWhenInUtc)
{
    AuditTrail::setTechnician(QStringLiteral("Ann"));
    Audited f;
    AuditTrail::setTechnician(QString());
    const AuditRow row = AuditQuery::rows(f.temp.open()).first();
    EXPECT_EQ(row.technician, "Ann");
    EXPECT_EQ(row.osUser, AuditTrail::osUser());
    EXPECT_FALSE(row.host.isEmpty());
    const QDateTime time = QDateTime::fromString(row.time, Qt::ISODateWithMs);
    EXPECT_EQ(time.timeSpec(), Qt::UTC) << row.time.toStdString();
    EXPECT_LT(std::abs(time.secsTo(QDateTime::currentDateTimeUtc())), 120) << row.time.toStdString();
}

TEST(TheAuditTrail, ThatCanNotBeWrittenFailsTheSaveAndKeepsTheRunAsItWas)
{
    Audited f;
    injectFailure(f.temp.open(), QStringLiteral("refuse_audit"), QStringLiteral("INSERT"), QStringLiteral("AuditTrail"),
                  QStringLiteral("the trail is full"));
    RecordSet changed = copyRecordset(f.plates);
    RunPlates::retag(changed, QStringLiteral("u"));
    f.dialog.setPlatesRecord(changed);
    EXPECT_FALSE(f.dialog.simpleSave());
    EXPECT_EQ(f.prompt.last().title, "Run Not Saved");
    EXPECT_TRUE(f.prompt.last().text.contains("the trail is full")) << f.prompt.last().text.toStdString();
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"t"});
    EXPECT_EQ(f.rowsAfter(3), QStringList());
}

TEST(TheAuditTrail, RefusesToChangeOrDeleteItsRows)
{
    Audited f;
    const DbConnection db = f.temp.open();
    EXPECT_THROW(db.execute(QStringLiteral("UPDATE AuditTrail SET NewValue = 'forged'")), DatabaseError);
    EXPECT_THROW(db.execute(QStringLiteral("DELETE FROM AuditTrail WHERE EntryID = 1")), DatabaseError);
    if (db.dialect().isServer()) {
        EXPECT_THROW(db.execute(QStringLiteral("TRUNCATE AuditTrail")), DatabaseError);
    }
    EXPECT_EQ(AuditQuery::rows(db).size(), 3);
    EXPECT_EQ(AuditQuery::rows(db).first().newValue, "A");
}

TEST(TheAuditTrail, IsEmptyAndUnmadeUntilTheFirstChange)
{
    const TempProgramFolder temp;
    const DbConnection db = temp.open();
    EXPECT_FALSE(AddedTables::exists(db, AuditTrail::kTable));
    EXPECT_TRUE(AuditQuery::rows(db).isEmpty());
}

TEST(AReasonForChanges, IsAskedOnlyByPolicyForAValidatedPlateAndGoesIntoItsRows)
{
    Audited f;
    RecordSet changed = copyRecordset(f.plates);
    changed.setValueAt(1, u"Results", withWell(changed.valueAt(1, u"Results").toString(), 3, "NEG"));
    changed.setValueAt(0, u"LotNumber", "L1"); // not a validated value: no reason needed for it
    QStringList asked;
    f.dialog.setReasonAsker([&](const QStringList &plates) {
        asked = plates;
        return std::optional<QString>(" Recalibrated reader ");
    });
    LabPolicy::setReasonForValidatedChanges(f.temp.open(), true);
    EXPECT_EQ(f.rowsAfter(3), QStringList{"Setting changed|LabPolicy|ReasonForValidatedChanges|Value|0|1"});
    const qint64 before = f.lastEntry();
    f.save(changed);
    EXPECT_EQ(asked, QStringList{"Plate #2"});
    QStringList reasons;
    for (const AuditRow &row : AuditQuery::rows(f.temp.open()))
        if (row.entryID > before)
            reasons << row.reason;
    EXPECT_EQ(reasons, (QStringList{"Recalibrated reader", "Recalibrated reader"}));

    // Cancelled: nothing saved, and told.
    f.dialog.setReasonAsker([](const QStringList &) { return std::nullopt; });
    RecordSet again = copyRecordset(changed);
    again.setValueAt(1, u"Results", withWell(again.valueAt(1, u"Results").toString(), 3, "POS"));
    f.dialog.setPlatesRecord(again);
    EXPECT_FALSE(f.dialog.simpleSave());
    EXPECT_EQ(f.prompt.last().text, RunSaveAsLogic::kNoReasonText);
    EXPECT_EQ(AuditQuery::rows(f.temp.open()).last().entryID, before + 2);
}

// The command line's replacement of a run by name: no one to ask, so the reason is given
// beforehand or the save is refused whole.
TEST(AReasonForChanges, IsGivenBeforehandToReplaceARunByName)
{
    Audited f;
    const DbConnection db = f.temp.open();
    const NamedRunStore store(db);
    store.save(QStringLiteral("F"), QStringLiteral("R"), f.plates, false);
    LabPolicy::setReasonForValidatedChanges(db, true);
    RecordSet changed = copyRecordset(f.plates);
    changed.setValueAt(1, u"Results", withWell(changed.valueAt(1, u"Results").toString(), 3, "NEG"));
    const qint64 before = f.lastEntry();
    EXPECT_THROW(store.save(QStringLiteral("F"), QStringLiteral("R"), changed, true), NamedRunStore::ReasonRequired);
    EXPECT_EQ(f.lastEntry(), before);
    store.save(QStringLiteral("F"), QStringLiteral("R"), changed, true, QStringLiteral(" Recalibrated reader "));
    EXPECT_EQ(AuditQuery::rows(db).last().reason, QStringLiteral("Recalibrated reader"));
}

TEST(WellChanges, ShowOnlyTheWellsThatDiffer)
{
    QStringList items(96);
    items[0] = "0.1";
    items[95] = "x";
    const QString list = joinWellList(items);
    items[95] = "y";
    const QString changed = joinWellList(items);
    const struct {
        const char *label;
        QString before, after, was, is;
    } cases[] = {
        {"one well", list, changed, "H12=x", "H12=y"},
        {"the same list", list, list, "", ""},
        {"a list where there was none", "", list, "A1=; H12=", "A1=0.1; H12=x"},
        {"flags never stored against a list", QString(96, '1'), joinWellList(QStringList(96, "1")), "", ""},
        {"texts that are no lists", "abc", "abd", "abc", "abd"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.label);
        const auto [was, is] = PlateChanges::wellChanges(c.before, c.after);
        EXPECT_EQ(was, c.was);
        EXPECT_EQ(is, c.is);
    }
}

} // namespace
