// A save that fails anywhere leaves the database, and the plates in hand, as they were, and
// says so.
#include "InjectedFailure.h"
#include "QtPrinters.h"
#include "RunSaveDesk.h"

#include "store/DatabaseError.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using End = RunBrowser::CommandEnd;

struct Failing : RunSaveDesk {
    void expectOldRunWhole() const
    {
        const DbConnection db = temp.open();
        EXPECT_EQ(RunPlates::runID(db, kDeliveryFolderName, QStringLiteral("A")), 1);
        EXPECT_EQ(RunPlates::rowCount(db, 1), 3);
        EXPECT_EQ(RunPlates::tags(db, 1), QStringList{"old"});
        EXPECT_EQ(count(QStringLiteral("SELECT COUNT(*) FROM Runs")), 1);
        EXPECT_EQ(count(QStringLiteral("SELECT COUNT(*) FROM Plates")), 3);
    }
    void failEveryPlateInsert() const
    {
        injectFailure(temp.open(), QStringLiteral("refuse_plates"), QStringLiteral("INSERT"), QStringLiteral("Plates"),
                      QStringLiteral("the disk is full"));
    }
};

TEST(AFailedSave, LeavesTheOldRowsInPlaceAndSaysWhy)
{
    struct Case {
        const char *label;
        std::function<void(Failing &)> fail;
        QString detail;
    };
    const auto stopAt = [](int at, const char *why) {
        return [at, why](Failing &f) {
            f.dialog.setSaveProgress([at, why](int written) {
                if (written == at)
                    throw DatabaseError(QString::fromUtf8(why));
            });
        };
    };
    const auto change = [](int row, const char *field, const char *value) {
        return [=](Failing &f) {
            RecordSet plates = f.dialog.getPlatesRecord();
            plates.setValueAt(row, QString::fromUtf8(field), QString::fromUtf8(value));
            f.dialog.setPlatesRecord(plates);
        };
    };
    const Case cases[] = {
        {"between the delete and the inserts", stopAt(0, "power lost after the delete"), "power lost after the delete"},
        {"half way through the plates", stopAt(2, "stopped after two plates"), "stopped after two plates"},
        {"by the database refusing the inserts", [](Failing &f) { f.failEveryPlateInsert(); }, "the disk is full"},
        {"of two plates with one name", change(2, "PlateName", "Plate #1"), QString()}, // the engine's words
        {"of a date that is no date", change(1, "ExpDate", "next spring"),
         "Plate 'Plate #2': ExpDate is not a date: 'next spring'"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        Failing f;
        f.saveOldRun();
        ASSERT_TRUE(f.dialog.getUserOk());
        c.fail(f);
        EXPECT_FALSE(f.dialog.simpleSave());
        EXPECT_FALSE(f.dialog.getUserOk());
        f.expectOldRunWhole();
        f.expectNotSavedBox(!c.detail.isEmpty() ? c.detail
                            : f.temp.onServer() ? QStringLiteral("unique constraint")
                                                : QStringLiteral("UNIQUE"));
    }
}

TEST(AFailedSave, OfANewRunLeavesNoRunBehindAndThePlatesTheirId)
{
    Failing f;
    f.failEveryPlateInsert();
    EXPECT_EQ(f.saveAs(RunPlates::make(2, 7), QStringLiteral("A")), End::Stay);
    EXPECT_FALSE(f.dialog.getUserOk());
    EXPECT_EQ(f.count(QStringLiteral("SELECT COUNT(*) FROM Runs")), 0);
    EXPECT_EQ(f.dialog.getPlatesRecord().valueAt(1, u"RunID").toLongLong(), 7);
    f.expectNotSavedBox(QStringLiteral("the disk is full"));
}

TEST(AFailedSave, AsANewRunOfASavedRunKeepsTheOldIdInHand)
{
    Failing f;
    f.saveOldRun();
    f.failEveryPlateInsert();
    EXPECT_EQ(f.saveAs(f.dialog.getPlatesRecord(), QStringLiteral("B")), End::Stay);
    f.expectOldRunWhole();
    EXPECT_EQ(f.dialog.getPlatesRecord().valueAt(0, u"RunID").toLongLong(), 1);
}

TEST(AFailedSave, OverAnotherRunLeavesThatRunWhole)
{
    Failing f;
    f.saveOldRun();
    f.dialog.setSaveProgress([](int written) {
        if (written == 1)
            throw DatabaseError(QStringLiteral("stopped"));
    });
    f.prompt.queueAnswer(MsgAnswer::Yes);
    EXPECT_EQ(f.saveAs(RunPlates::make(1, 2), QStringLiteral("A")), End::Stay);
    f.expectOldRunWhole();
}

TEST(AFailedSave, IsFollowedByASaveThatWorks)
{
    Failing f;
    f.saveOldRun();
    f.dialog.setSaveProgress([](int) { throw DatabaseError(QStringLiteral("once")); });
    ASSERT_FALSE(f.dialog.simpleSave());
    f.dialog.setSaveProgress({});
    ASSERT_TRUE(f.dialog.simpleSave());
    EXPECT_EQ(RunPlates::tags(f.temp.open(), 1), QStringList{"new"});
    EXPECT_EQ(RunPlates::rowCount(f.temp.open(), 1), 3);
}

TEST(AFailedSave, OfADatabaseThatIsGoneIsToldAndNotOk)
{
    Failing f;
    if (f.temp.onServer())
        GTEST_SKIP() << "a database file that is gone";
    f.saveOldRun();
    ASSERT_TRUE(QFile::remove(f.temp.databasePath()));
    EXPECT_FALSE(f.dialog.simpleSave());
    f.expectNotSavedBox(QStringLiteral("does not exist"));
}

} // namespace
