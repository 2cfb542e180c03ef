#include "Generation1Database.h"

#include "store/DbConnection.h"

#include <QStringList>
#include <QVariant>

void createGeneration1Database(const QString &path, Generation1Kind kind)
{
    const QString missingTable =
        kind == Generation1Kind::WithoutUserFilters ? QStringLiteral("UserFilters") : QString();
    const DbConnection db(path, DbConnection::Mode::Create);
    const QList<QPair<QString, QString>> tables = {
        {"Folders", "CREATE TABLE Folders (FolderID INTEGER PRIMARY KEY, FolderName TEXT)"},
        {"Runs", "CREATE TABLE Runs (RunID INTEGER PRIMARY KEY, RunName TEXT, FolderID INTEGER)"},
        {"Plates", "CREATE TABLE Plates (PlateID INTEGER, PlateName TEXT, RunID INTEGER, "
                   "TestName TEXT, LotNumber TEXT, ExpDate TEXT, TimeRead TEXT, DateRead TEXT, "
                   "FilterUsed TEXT, ReaderUsed TEXT, LastVersionValidated TEXT, Groups TEXT, "
                   "Samples TEXT, ODs TEXT, RawODs TEXT, Results TEXT, IncludeExcludeFlags TEXT, "
                   "CurrentTest TEXT, CurrentReader TEXT, CurrentFilter TEXT)"},
        {"Groups", "CREATE TABLE Groups (GroupID INTEGER PRIMARY KEY, GroupName TEXT, Name TEXT, "
                   "Company TEXT, Address1 TEXT, Address2 TEXT, City TEXT, State TEXT, Zip TEXT, "
                   "Country TEXT, Phone TEXT, Fax TEXT, Email TEXT, Vet TEXT)"},
        {"UserReaders", "CREATE TABLE UserReaders (UserReaderID INTEGER PRIMARY KEY, "
                        "UserReaderName TEXT, ReaderModelID INTEGER, UserCOMPort SMALLINT, "
                        "UserSettings TEXT, UserFlowControl SMALLINT, UserDefaultFilterNo SMALLINT)"},
        {"UserFilters", "CREATE TABLE UserFilters (UserReaderID INTEGER, FilterValue INTEGER, "
                        "FilterNo SMALLINT)"},
        {"MiscSettings", "CREATE TABLE MiscSettings (LastUserReaderID INTEGER, "
                         "LastUserFilterNo SMALLINT, ChangesSinceLastCompact DOUBLE PRECISION)"},
    };
    for (const auto &[name, statement] : tables) {
        if (name != missingTable)
            db.execute(statement);
    }
    if (kind == Generation1Kind::WithTechniciansTable)
        db.execute(QStringLiteral("CREATE TABLE Technicians (TechName CHAR(50) PRIMARY KEY)"));

    db.execute(QStringLiteral("INSERT INTO MiscSettings VALUES (NULL, 0, 12)"));
    db.execute(QStringLiteral("INSERT INTO Folders VALUES (1, 'Old runs')"));
    db.execute(QStringLiteral("INSERT INTO Runs VALUES (1, 'Herd 7', 1)"));
    {
        const QString wells = QString(96, QChar(0x00AC));
        const QString insert =
            QStringLiteral("INSERT INTO Plates (PlateID, PlateName, RunID, TestName, LotNumber, DateRead, "
                           "Groups, Samples, ODs, RawODs, Results, IncludeExcludeFlags) "
                           "VALUES (?, ?, 1, ?, ?, ?, ?, ?, ?, '', ?, ?)");
        db.execute(insert, {1, "Plate #1", "Generic", "L-1", "2003-05-14", wells, wells, wells, wells,
                            QString(96, QLatin1Char('1'))});
        db.execute(insert, {2, "Plate #2", "RTUV 419", "L-2", "2003-05-15", wells, wells, wells, wells,
                            QString(96, QLatin1Char('1'))});
    }
}
