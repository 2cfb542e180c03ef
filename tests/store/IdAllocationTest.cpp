#include "TempProgramFolder.h"

#include "store/RunDatabase.h"

#include <QList>

#include <gtest/gtest.h>

namespace {

void insertRuns(const DbConnection &db, const QList<int> &ids)
{
    for (int id : ids)
        db.execute(QStringLiteral("INSERT INTO Runs (RunID, RunName, FolderID) VALUES (?, ?, 1)"),
                   {id, QStringLiteral("Run %1").arg(id)});
}

struct IdCase {
    QList<int> ids;
    int expected;
};

class NewRunID : public ::testing::TestWithParam<IdCase> {};

TEST_P(NewRunID, IsTheSmallestFreePositiveId)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    insertRuns(db, GetParam().ids);
    EXPECT_EQ(getNewRunID(db), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Holes, NewRunID,
                         ::testing::Values(IdCase{{}, 1},           // empty table
                                           IdCase{{1, 2, 4}, 3},    // first hole
                                           IdCase{{2, 3}, 1},       // hole at the bottom
                                           IdCase{{1, 2, 3}, 4},    // no hole: one past the last
                                           IdCase{{4, 1, 2}, 3},    // inserted out of order
                                           IdCase{{1, 3, 5, 6}, 2}, // first of several holes
                                           IdCase{{1}, 2}));

TEST(IdAllocation, EachKindOfIdFillsTheHolesOfItsOwnTable)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    insertRuns(db, {1, 2, 3});
    EXPECT_EQ(getNewGroupID(db), 1);
    for (int id : {1, 2, 5})
        db.execute(QStringLiteral("INSERT INTO Groups (GroupID, GroupName) VALUES (?, ?)"),
                   {id, QStringLiteral("Farm %1").arg(id)});
    EXPECT_EQ(getNewRunID(db), 4);
    EXPECT_EQ(getNewGroupID(db), 3);
    EXPECT_EQ(getNewFolderID(db), 2); // after the delivered folder
    db.execute(QStringLiteral("DELETE FROM Folders"));
    EXPECT_EQ(getNewFolderID(db), 1);
}

} // namespace
