#include "store/DatabaseSchema.h"

#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/SqlDialect.h"

#include <QVariant>

namespace {

struct DeliveryReader {
    QString name;
    int modelID;
    int filterValue;
};

// Plain serial settings; the demo readers ignore them, but they show in the reader
// configuration like any other reader's.
constexpr int kDeliveryComPort = 1;
const QString kDeliverySettings = QStringLiteral("9600,N,8,1");
constexpr int kDeliveryFlowControl = 0;
constexpr int kDeliveryDefaultFilterNo = 1;

} // namespace

QStringList generation1Tables()
{
    return {QStringLiteral("Groups"),     QStringLiteral("Folders"), QStringLiteral("MiscSettings"),
            QStringLiteral("Plates"),     QStringLiteral("Runs"),    QStringLiteral("UserFilters"),
            QStringLiteral("UserReaders")};
}

void createDatabaseSchema(const DbConnection &db)
{
    const SqlDialect &dialect = db.dialect();
    // On a server each run counts its saves, so that a workstation can tell that a run
    // it has open was saved elsewhere meanwhile.
    const QString changeCount =
        dialect.isServer() ? QStringLiteral(", ChangeCount INTEGER NOT NULL DEFAULT 0") : QString();
    const QString plateOrder =
        dialect.insertionOrderColumn().isEmpty() ? QString() : dialect.insertionOrderColumn() + QStringLiteral(", ");
    // On a server MiscSettings has a row per workstation: the reader and filter chosen last
    // are that workstation's own.
    const QString workstation =
        dialect.isServer() ? QStringLiteral("Workstation TEXT NOT NULL PRIMARY KEY, ") : QString();
    const QStringList statements = {
        QStringLiteral("CREATE TABLE Folders ("
                       "FolderID INTEGER NOT NULL PRIMARY KEY, "
                       "FolderName TEXT)"),
        QStringLiteral("CREATE TABLE Runs ("
                       "RunID INTEGER NOT NULL PRIMARY KEY, "
                       "RunName TEXT, "
                       "FolderID INTEGER%1)")
            .arg(changeCount),
        QStringLiteral("CREATE TABLE Plates ("
                       "PlateID INTEGER NOT NULL, "
                       "PlateName TEXT, "
                       "RunID INTEGER NOT NULL, "
                       "TestName TEXT, "
                       "LotNumber TEXT, "
                       "ExpDate TEXT, "
                       "TimeRead TEXT, "
                       "DateRead TEXT, "
                       "FilterUsed TEXT, "
                       "ReaderUsed TEXT, "
                       "LastVersionValidated TEXT, "
                       "Groups TEXT, "
                       "Samples TEXT, "
                       "ODs TEXT, "
                       "RawODs TEXT, "
                       "Results TEXT, "
                       "IncludeExcludeFlags TEXT, "
                       "CurrentTest TEXT, "
                       "CurrentReader TEXT, "
                       "CurrentFilter TEXT, "
                       "TechName %1, "
                       "%2"
                       "PRIMARY KEY (RunID, PlateID), "
                       "UNIQUE (RunID, PlateName))")
            .arg(dialect.shortNameColumn(), plateOrder),
        QStringLiteral("CREATE TABLE Groups ("
                       "GroupID INTEGER NOT NULL PRIMARY KEY, "
                       "GroupName TEXT, "
                       "Name TEXT, "
                       "Company TEXT, "
                       "Address1 TEXT, "
                       "Address2 TEXT, "
                       "City TEXT, "
                       "State TEXT, "
                       "Zip TEXT, "
                       "Country TEXT, "
                       "Phone TEXT, "
                       "Fax TEXT, "
                       "Email TEXT, "
                       "Vet TEXT)"),
        QStringLiteral("CREATE TABLE Technicians ("
                       "TechName %1 PRIMARY KEY)")
            .arg(dialect.shortNameColumn()),
        QStringLiteral("CREATE TABLE UserReaders ("
                       "UserReaderID %1, "
                       "UserReaderName TEXT, "
                       "ReaderModelID INTEGER, "
                       "UserCOMPort SMALLINT, "
                       "UserSettings TEXT, "
                       "UserFlowControl SMALLINT, "
                       "UserDefaultFilterNo SMALLINT)")
            .arg(dialect.counterColumn()),
        // The column order matters: filters are inserted without naming the columns.
        QStringLiteral("CREATE TABLE UserFilters ("
                       "UserReaderID INTEGER, "
                       "FilterValue INTEGER, "
                       "FilterNo SMALLINT)"),
        QStringLiteral("CREATE TABLE MiscSettings ("
                       "%1"
                       "LastUserReaderID INTEGER, "
                       "LastUserFilterNo SMALLINT, "
                       "ChangesSinceLastCompact DOUBLE PRECISION)")
            .arg(workstation),
    };
    for (const QString &statement : statements)
        db.execute(statement);
}

void insertDeliveryRows(const DbConnection &db)
{
    const bool perWorkstation = db.dialect().isServer();
    if (!perWorkstation)
        db.execute(QStringLiteral("INSERT INTO MiscSettings (LastUserReaderID, LastUserFilterNo, "
                                  "ChangesSinceLastCompact) VALUES (?, ?, ?)"),
                   {QVariant(QMetaType::fromType<int>()), 0, 0.0});

    const DeliveryReader readers[] = {
        {QStringLiteral("Demo"), kDemoReaderModelID, 630},
        {QStringLiteral("Demo2"), kDemo2ReaderModelID, 450},
    };
    for (const DeliveryReader &reader : readers) {
        db.execute(QStringLiteral("INSERT INTO UserReaders (UserReaderName, ReaderModelID, "
                                  "UserCOMPort, UserSettings, UserFlowControl, "
                                  "UserDefaultFilterNo) VALUES (?, ?, ?, ?, ?, ?)"),
                   {reader.name, reader.modelID, kDeliveryComPort, kDeliverySettings, kDeliveryFlowControl,
                    kDeliveryDefaultFilterNo});
        // The counter is read back by name, as the reader configuration does.
        const QVariant id =
            db.scalar(QStringLiteral("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?"), {reader.name});
        if (id.isNull())
            throw DatabaseError(QStringLiteral("The delivered reader was not stored: ") + reader.name);
        db.execute(QStringLiteral("INSERT INTO UserFilters VALUES (?, ?, ?)"),
                   {id, reader.filterValue, kDeliveryDefaultFilterNo});
    }

    // A new install starts with the first demo reader chosen, so a plate can be read at once
    // (on a server, each workstation's row is made so when it is first needed).
    if (!perWorkstation)
        db.execute(QStringLiteral("UPDATE MiscSettings SET LastUserReaderID = "
                                  "(SELECT MIN(UserReaderID) FROM UserReaders)"));

    db.execute(QStringLiteral("INSERT INTO Folders (FolderID, FolderName) VALUES (?, ?)"),
               {kDeliveryFolderID, kDeliveryFolderName});
}
