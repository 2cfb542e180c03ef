#pragma once

#include "ChildProcess.h"

#include <QString>

#include <memory>

// Another program holding a database: a child process with a read-write connection open
// and, as asked, one of SQLite's locks taken in an open transaction. It holds them until
// the object goes.
//
//     SqliteLockHolder other(path, SqliteLockHolder::Lock::Reserved);
//     ASSERT_TRUE(other.holding());
class SqliteLockHolder {
public:
    enum class Lock {
        None,      // the connection is open, no transaction
        Shared,    // a read transaction: others may read, no one may commit a write
        Reserved,  // a write transaction begun: others may read, no one else may write
        Exclusive, // no one else may read or write
    };

    SqliteLockHolder(const QString &databasePath, Lock lock);
    // True once the child holds what was asked.
    bool holding() const { return mHolding; }

private:
    std::unique_ptr<ChildProcess> mChild;
    bool mHolding = false;
};
