#include "store/DatabaseError.h"

#include <QSqlError>

DatabaseError::DatabaseError(const QString &message, int nativeCode, const QString &state)
    : std::runtime_error(message.toStdString()), mMessage(message), mNativeCode(nativeCode), mState(state)
{
}

DatabaseError DatabaseError::fromSqlError(const QSqlError &error, const QString &context)
{
    QString driverText = error.text().trimmed();
    if (driverText.isEmpty())
        driverText = QStringLiteral("Unknown database error");
    bool numeric = false;
    const int code = error.nativeErrorCode().toInt(&numeric);
    return DatabaseError(driverText + QStringLiteral(" [") + context + QLatin1Char(']'),
                         numeric ? code : 0, error.nativeErrorCode());
}
