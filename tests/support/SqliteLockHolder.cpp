#include "SqliteLockHolder.h"

#include "store/DbConnection.h"

SqliteLockHolder::SqliteLockHolder(const QString &databasePath, Lock lock)
{
    mChild = std::make_unique<ChildProcess>([databasePath, lock](int pipeOut) -> int {
        const DbConnection db(databasePath);
        switch (lock) {
        case Lock::None: break;
        case Lock::Shared:
            db.execute(QStringLiteral("BEGIN"));
            db.scalar(QStringLiteral("SELECT COUNT(*) FROM MiscSettings"));
            break;
        case Lock::Reserved: db.execute(QStringLiteral("BEGIN IMMEDIATE")); break;
        case Lock::Exclusive: db.execute(QStringLiteral("BEGIN EXCLUSIVE")); break;
        }
        ChildProcess::tell(pipeOut, 'h');
        ChildProcess::waitToBeKilled();
    });
    char byte = 0;
    mHolding = mChild->readByte(byte) && byte == 'h';
}
