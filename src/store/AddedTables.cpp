#include "store/AddedTables.h"

#include "store/DbConnection.h"

#include <stdexcept>

namespace AddedTables {

const QList<Table> &all()
{
    // Each entry: name, statements for a file, statements for a server, copy order.
    static const QList<Table> tables = {
        // Quality control: the guide sets of each kit's tracked quantities, and the rules a
        // kit is judged by (no row: the default rules). Dates are ISO texts on both engines.
        {QStringLiteral("QcGuideSets"),
         {QStringLiteral("CREATE TABLE QcGuideSets (GuideSetID INTEGER PRIMARY KEY, TestName TEXT NOT NULL, "
                         "Quantity TEXT NOT NULL, LotNumber TEXT NOT NULL, Mean DOUBLE PRECISION NOT NULL, "
                         "SD DOUBLE PRECISION NOT NULL, StartDate TEXT NOT NULL, PlateCount INTEGER NOT NULL, "
                         "SetBy TEXT NOT NULL, SetAt TEXT NOT NULL)")},
         {QStringLiteral("CREATE TABLE QcGuideSets (GuideSetID INTEGER PRIMARY KEY, TestName TEXT NOT NULL, "
                         "Quantity TEXT NOT NULL, LotNumber TEXT NOT NULL, Mean DOUBLE PRECISION NOT NULL, "
                         "SD DOUBLE PRECISION NOT NULL, StartDate TEXT NOT NULL, PlateCount INTEGER NOT NULL, "
                         "SetBy TEXT NOT NULL, SetAt TEXT NOT NULL)")},
         QStringLiteral("GuideSetID")},
        {QStringLiteral("QcKitRules"),
         {QStringLiteral("CREATE TABLE QcKitRules (TestName TEXT PRIMARY KEY, Rules TEXT NOT NULL)")},
         {QStringLiteral("CREATE TABLE QcKitRules (TestName TEXT PRIMARY KEY, Rules TEXT NOT NULL)")},
         QStringLiteral("TestName")},
    };
    return tables;
}

const Table &named(const QString &name)
{
    for (const Table &table : all()) {
        if (table.name.compare(name, Qt::CaseInsensitive) == 0)
            return table;
    }
    throw std::invalid_argument("not an added table: " + name.toStdString());
}

bool exists(const DbConnection &db, const QString &name)
{
    const QString sql = db.dialect().isServer()
                            ? QStringLiteral("SELECT COUNT(*) FROM information_schema.tables "
                                             "WHERE table_schema = current_schema() AND table_name = ?")
                            : QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND "
                                             "lower(name) = ?");
    return db.scalar(sql, {named(name).name.toLower()}).toInt() > 0;
}

void ensure(const DbConnection &db, const QString &name)
{
    if (exists(db, name))
        return;
    const Table &table = named(name);
    for (const QString &statement : db.dialect().isServer() ? table.serverStatements : table.fileStatements)
        db.execute(statement);
}

} // namespace AddedTables
