#include "QtPrinters.h"
#include "TempProgramFolder.h"

#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"
#include "store/RunDatabase.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(DbConnection, ApostrophesGoInAndComeBackAsTheyAre)
{
    TempProgramFolder temp;
    const QVariantList group = {1,
                                "O'Brien",
                                "Pat O'Brien",
                                "O'Brien & Sons",
                                "1 Farmer's Lane",
                                "'",
                                "St. John's",
                                "N'A",
                                "'0'",
                                "Ire'land",
                                "+1 '555'",
                                "''",
                                "pat.o'brien@example.com",
                                "Dr. D'Arcy"};
    {
        const DbConnection db = temp.open();
        db.execute("INSERT INTO Groups (GroupID, GroupName, Name, Company, Address1, Address2, "
                   "City, State, Zip, Country, Phone, Fax, Email, Vet) "
                   "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                   group);
    }
    const DbConnection db = openDatabase(temp.folder());
    QSqlQuery found = db.query("SELECT * FROM Groups WHERE GroupName = ?", {"O'Brien"});
    ASSERT_TRUE(found.next());
    QVariantList back;
    for (int i = 0; i < group.size(); ++i)
        back.append(found.value(i));
    EXPECT_EQ(back, group);
    EXPECT_FALSE(found.next());
}

TEST(DbConnection, AFailedStatementThrowsWithTheDriverText)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    try {
        db.query("SELECT * FROM NoSuchTable");
        FAIL() << "no exception";
    } catch (const DatabaseError &error) {
        EXPECT_TRUE(error.message().contains("no such table")) << error.what();
        EXPECT_TRUE(error.message().contains("SELECT * FROM NoSuchTable")) << error.what();
        EXPECT_NE(error.nativeCode(), 0);
    }
}

TEST(DbConnection, AMissingFileIsAnErrorAndIsNotMade)
{
    TempProgramFolder temp;
    const QString missing = QDir(temp.path()).filePath("missing.db");
    EXPECT_THROW(DbConnection{missing}, DatabaseError);
    EXPECT_THROW((DbConnection{missing, DbConnection::Mode::ReadOnly}), DatabaseError);
    EXPECT_FALSE(QFileInfo::exists(missing));
    EXPECT_THROW(DbConnection{QString()}, DatabaseError);
}

TEST(DbConnection, AReadOnlyConnectionNeverWrites)
{
    TempProgramFolder temp;
    const QByteArray before = TempProgramFolder::readFile(temp.databasePath());
    {
        const DbConnection db(temp.databasePath(), DbConnection::Mode::ReadOnly);
        EXPECT_EQ(db.scalar("SELECT FolderName FROM Folders").toString(), QStringLiteral("Runs"));
        EXPECT_THROW(db.execute("DELETE FROM Folders"), DatabaseError);
    }
    EXPECT_EQ(TempProgramFolder::readFile(temp.databasePath()), before);
}

TEST(DbTransaction, WorkIsKeptOnlyWhenCommittedAndAFailureUndoesTheWhole)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    EXPECT_THROW(
        {
            DbTransaction transaction(db);
            db.execute("INSERT INTO Runs VALUES (1, 'Half', 1)");
            db.execute("CREATE TABLE Scratch (A INTEGER)");
            db.execute("INSERT INTO Runs VALUES (1, 'Same id', 1)"); // key violation
            transaction.commit();
        },
        DatabaseError);
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM Runs").toInt(), 0);
    EXPECT_THROW(db.query("SELECT * FROM Scratch"), DatabaseError);
    // The connection is fit for the next piece of work, seen by others once committed.
    {
        DbTransaction next(db);
        db.execute("INSERT INTO Runs VALUES (1, 'Kept', 1)");
        next.commit();
    }
    EXPECT_EQ(temp.open().scalar("SELECT RunName FROM Runs").toString(), QStringLiteral("Kept"));
}

} // namespace
