#pragma once

#include "store/DbConnection.h"

#include <QString>

// Makes every INSERT, UPDATE or DELETE (event) of a row of the table fail with the message,
// as a disk or engine failure would, when the condition (SQL on OLD or NEW; empty: always)
// holds. A trigger on either engine, named name.
inline void injectFailure(const DbConnection &db, const QString &name, const QString &event, const QString &table,
                          const QString &message, const QString &condition = QString())
{
    if (!db.dialect().isServer()) {
        db.execute(QStringLiteral("CREATE TRIGGER %1 BEFORE %2 ON %3 %4 BEGIN SELECT RAISE(ABORT, '%5'); END")
                       .arg(name, event, table, condition.isEmpty() ? QString() : QStringLiteral("WHEN ") + condition,
                            message));
        return;
    }
    db.execute(QStringLiteral("CREATE FUNCTION %1() RETURNS trigger LANGUAGE plpgsql AS $body$ BEGIN "
                              "IF %2 THEN RAISE EXCEPTION '%3'; END IF; RETURN COALESCE(NEW, OLD); END $body$")
                   .arg(name, condition.isEmpty() ? QStringLiteral("TRUE") : condition, message));
    db.execute(
        QStringLiteral("CREATE TRIGGER %1 BEFORE %2 ON %3 FOR EACH ROW EXECUTE FUNCTION %1()").arg(name, event, table));
}
