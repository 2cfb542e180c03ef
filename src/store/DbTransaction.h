#pragma once

class DbConnection;

// A write transaction on one connection: it takes the write lock when it begins, and
// what it did is undone unless commit() was called (an exception that leaves the scope
// rolls it back).
class DbTransaction {
public:
    explicit DbTransaction(const DbConnection &db);
    ~DbTransaction();

    DbTransaction(const DbTransaction &) = delete;
    DbTransaction &operator=(const DbTransaction &) = delete;

    // Makes the work lasting. Throws DatabaseError when the commit fails; the
    // transaction is then rolled back at destruction.
    void commit();

    // Undoes the work now. Never throws.
    void rollback() noexcept;

    bool isActive() const { return mActive; }

private:
    const DbConnection &mDb;
    bool mActive = false;
};
