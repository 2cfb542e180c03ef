#include "store/SqlDialect.h"

namespace SqlDialect {

QString driverName()
{
    return QStringLiteral("QSQLITE");
}

QString connectOptions(bool readOnly, int busyTimeoutMs)
{
    const QString timeout = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutMs);
    return readOnly ? QStringLiteral("QSQLITE_OPEN_READONLY;") + timeout : timeout;
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
