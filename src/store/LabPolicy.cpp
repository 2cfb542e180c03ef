#include "store/LabPolicy.h"

#include "store/AddedTables.h"
#include "store/AuditTrail.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"

namespace {

const QString kTable = QStringLiteral("LabPolicy");
const QString kReason = QStringLiteral("ReasonForValidatedChanges");

} // namespace

bool LabPolicy::reasonForValidatedChanges(const DbConnection &db)
{
    if (!AddedTables::exists(db, kTable))
        return false;
    return db.scalar(QStringLiteral("SELECT Value FROM LabPolicy WHERE Name = ?"), {kReason}).toString() ==
           QLatin1String("1");
}

void LabPolicy::setReasonForValidatedChanges(const DbConnection &db, bool on)
{
    DbTransaction transaction(db);
    AddedTables::ensure(db, kTable);
    const bool was = reasonForValidatedChanges(db);
    if (was == on)
        return;
    db.execute(QStringLiteral("DELETE FROM LabPolicy WHERE Name = ?"), {kReason});
    db.execute(QStringLiteral("INSERT INTO LabPolicy (Name, Value) VALUES (?, ?)"),
               {kReason, on ? QStringLiteral("1") : QStringLiteral("0")});
    AuditTrail(db).record({QStringLiteral("Setting changed"), kTable, kReason, QStringLiteral("Value"),
                           was ? QStringLiteral("1") : QStringLiteral("0"),
                           on ? QStringLiteral("1") : QStringLiteral("0")});
    transaction.commit();
}
