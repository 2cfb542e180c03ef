#include "store/SqlDialect.h"

namespace SqlDialect {

QString driverName()
{
    return QStringLiteral("QSQLITE");
}

QString readOnlyConnectOptions()
{
    return QStringLiteral("QSQLITE_OPEN_READONLY");
}

QStringList connectionSetup()
{
    return {QStringLiteral("PRAGMA synchronous=FULL"), QStringLiteral("PRAGMA foreign_keys=OFF")};
}

QString beginWriteTransaction()
{
    return QStringLiteral("BEGIN IMMEDIATE");
}

QString counterColumn()
{
    return QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT");
}

QString insertionOrder()
{
    return QStringLiteral("rowid");
}

QString compactInto()
{
    return QStringLiteral("VACUUM INTO ?");
}

QString integrityCheck()
{
    return QStringLiteral("PRAGMA integrity_check");
}

QString integrityCheckPassed()
{
    return QStringLiteral("ok");
}

} // namespace SqlDialect
