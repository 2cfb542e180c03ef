#pragma once

#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"

// Runs work in one write transaction and commits it. On a server, a transaction that lost
// a race with another workstation (a serialization failure, a deadlock, or an id that the
// other took at the same moment) is rolled back and run again from the start, a bounded
// number of times; work must therefore do everything again when called again. The last
// failure is thrown with a message that says nothing was saved.
template <typename Work> void runTransaction(const DbConnection &db, Work &&work)
{
    constexpr int kAttempts = 8;
    for (int attempt = 1;; ++attempt) {
        try {
            DbTransaction transaction(db);
            work();
            transaction.commit();
            return;
        } catch (const DatabaseError &error) {
            if (!db.dialect().isRetryable(error))
                throw;
            if (attempt == kAttempts)
                throw DatabaseError(QStringLiteral("The database server was too busy with other workstations' work: "
                                                   "%1 tries failed, and nothing of this one was kept. Please try "
                                                   "again.\r\n\r\n%2")
                                        .arg(kAttempts)
                                        .arg(error.message()),
                                    error.nativeCode(), error.state());
        }
    }
}
