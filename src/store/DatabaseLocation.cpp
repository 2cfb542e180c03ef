#include "store/DatabaseLocation.h"

#include "store/DatabaseError.h"

#include <QUrl>
#include <QUrlQuery>

namespace {

const QStringList kSchemes = {QStringLiteral("postgresql://"), QStringLiteral("postgres://")};
const QStringList kKeywords = {QStringLiteral("sslmode"),         QStringLiteral("service"),
                               QStringLiteral("connect_timeout"), QStringLiteral("application_name"),
                               QStringLiteral("sslrootcert"),     QStringLiteral("host")};

[[noreturn]] void refuse(const QString &text, const QString &why)
{
    const QString shown = QUrl(text.trimmed()).toString(QUrl::RemovePassword);
    throw DatabaseError(QStringLiteral("The database server address \"") + shown +
                        QStringLiteral("\" can't be used: ") + why);
}

} // namespace

bool DatabaseLocation::looksLikeServer(const QString &text)
{
    const QString trimmed = text.trimmed();
    for (const QString &scheme : kSchemes) {
        if (trimmed.startsWith(scheme, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

DatabaseLocation DatabaseLocation::parse(const QString &text)
{
    DatabaseLocation location;
    location.mText = text;
    if (!looksLikeServer(text)) {
        location.mDatabaseName = text;
        return location;
    }
    location.mBackend = SqlDialect::Backend::PostgreSQL;

    const QUrl url(text.trimmed(), QUrl::StrictMode);
    if (!url.isValid())
        refuse(text, url.errorString());
    if (!url.password().isEmpty())
        refuse(text, QStringLiteral("it holds a password. Passwords are never kept in settings.txt or on the "
                                    "command line: put it in the password file (~/.pgpass) instead."));
    location.mHost = url.host(QUrl::FullyDecoded);
    location.mPort = url.port(-1);
    location.mUserName = url.userName(QUrl::FullyDecoded);
    location.mDatabaseName = url.path(QUrl::FullyDecoded).mid(1);

    QStringList options;
    const QUrlQuery query(url);
    for (const auto &[key, value] : query.queryItems(QUrl::FullyDecoded)) {
        if (!kKeywords.contains(key))
            refuse(text, QStringLiteral("the setting \"") + key +
                             QStringLiteral("\" is not one Tavimetra passes on (") +
                             kKeywords.join(QStringLiteral(", ")) + QStringLiteral(")."));
        if (key == QLatin1String("host"))
            location.mHost = value;
        else
            options << key + QLatin1Char('=') + value;
    }
    location.mConnectOptions = options.join(QLatin1Char(';'));
    const bool namedByService = query.hasQueryItem(QStringLiteral("service"));
    if (location.mDatabaseName.isEmpty() && !namedByService)
        refuse(text, QStringLiteral("it names no database (postgresql://user@host:port/dbname)."));
    return location;
}

QString DatabaseLocation::displayName() const
{
    if (!isServer())
        return mText;
    QString name = mDatabaseName.isEmpty() ? QStringLiteral("the database of the service") : mDatabaseName;
    name += QStringLiteral(" on ") + (mHost.isEmpty() ? QStringLiteral("the local server") : mHost);
    if (mPort > 0)
        name += QLatin1Char(':') + QString::number(mPort);
    return name;
}
