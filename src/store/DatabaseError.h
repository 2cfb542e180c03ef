#pragma once

#include <QString>

#include <stdexcept>

class QSqlError;

// A failure of the run database: a connection that would not open, a statement the
// driver refused, a file that is not a database. The text is the driver's own, with
// the statement that failed behind it; a database locked by another program says so
// plainly (isInUse()).
class DatabaseError : public std::runtime_error {
public:
    // nativeCode is the engine's error number (SQLite result code), 0 when there is none.
    // state is the engine's error code as text (a server's SQLSTATE), empty when there is
    // none.
    explicit DatabaseError(const QString &message, int nativeCode = 0, const QString &state = QString());

    static inline const QString kInUseText =
        QStringLiteral("The database is in use by another program. Nothing was changed. "
                       "Please try again once the other program has finished with it.");

    // An error of the driver, with what was being done ("prepare: SELECT ..."). A
    // database that stayed locked by another program is told in plain words, without SQL.
    static DatabaseError fromSqlError(const QSqlError &error, const QString &context);
    // The database is held by another program (or instance) beyond the time we wait.
    static DatabaseError inUse();

    bool isInUse() const;

    QString message() const { return mMessage; }
    int nativeCode() const { return mNativeCode; }
    QString state() const { return mState; }

private:
    QString mMessage;
    int mNativeCode;
    QString mState;
};
