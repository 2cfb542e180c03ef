#include "store/DbTransaction.h"

#include "store/DbConnection.h"
#include "store/SqlDialect.h"

DbTransaction::DbTransaction(const DbConnection &db) : mDb(db)
{
    mDb.execute(mDb.dialect().beginWriteTransaction());
    mActive = true;
}

DbTransaction::~DbTransaction()
{
    rollback();
}

void DbTransaction::commit()
{
    mDb.execute(QStringLiteral("COMMIT"));
    mActive = false;
}

void DbTransaction::rollback() noexcept
{
    if (!mActive)
        return;
    mActive = false;
    try {
        mDb.execute(QStringLiteral("ROLLBACK"));
    } catch (...) {
        // Nothing more can be done: SQLite ends a transaction that failed on its own,
        // and closing the connection undoes whatever is left.
    }
}
