#include "store/DatabaseError.h"

#include <QSqlError>

DatabaseError::DatabaseError(const QString &message, int nativeCode, const QString &state)
    : std::runtime_error(message.toStdString()), mMessage(message), mNativeCode(nativeCode), mState(state)
{
}

namespace {

// SQLite's "database is locked" and "database table is locked", extended codes included.
constexpr int kBusy = 5;
constexpr int kLocked = 6;
constexpr int kInUseCode = kBusy;

bool meansInUse(int nativeCode)
{
    return (nativeCode & 0xff) == kBusy || (nativeCode & 0xff) == kLocked;
}

} // namespace

DatabaseError DatabaseError::inUse()
{
    return DatabaseError(kInUseText, kInUseCode);
}

bool DatabaseError::isInUse() const
{
    return meansInUse(mNativeCode);
}

DatabaseError DatabaseError::fromSqlError(const QSqlError &error, const QString &context)
{
    bool numeric = false;
    const int code = error.nativeErrorCode().toInt(&numeric);
    if (numeric && meansInUse(code))
        return DatabaseError(kInUseText, code);
    QString driverText = error.text().trimmed();
    if (driverText.isEmpty())
        driverText = QStringLiteral("Unknown database error");
    return DatabaseError(driverText + QStringLiteral(" [") + context + QLatin1Char(']'), numeric ? code : 0,
                         error.nativeErrorCode());
}
