#pragma once

#include <QString>

#include <stdexcept>

class QSqlError;

// A failure of the run database: a connection that would not open, a statement the
// driver refused, a file that is not a database. The text is the driver's own, with
// the statement that failed behind it.
class DatabaseError : public std::runtime_error {
public:
    // nativeCode is the engine's error number (SQLite result code), 0 when there is none.
    // state is the engine's error code as text (a server's SQLSTATE), empty when there is
    // none.
    explicit DatabaseError(const QString &message, int nativeCode = 0, const QString &state = QString());

    // An error of the driver, with what was being done ("prepare: SELECT ...").
    static DatabaseError fromSqlError(const QSqlError &error, const QString &context);

    QString message() const { return mMessage; }
    int nativeCode() const { return mNativeCode; }
    QString state() const { return mState; }

private:
    QString mMessage;
    int mNativeCode;
    QString mState;
};
