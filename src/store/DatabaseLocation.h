#pragma once

#include "store/SqlDialect.h"

#include <QString>

// Where the run database is: a SQLite file (a path, as settings.txt has always held) or a
// PostgreSQL server, named by a URI:
//
//     postgresql://user@host:port/dbname?sslmode=require
//
// Host, port and user may be left out (the server's defaults apply). The query may carry
// the connection keywords sslmode, sslrootcert, service, connect_timeout and
// application_name, and host: the folder of the server's Unix socket
// (postgresql:///dbname?host=/run/postgresql). A password never stands in the URI: the
// standard password file (~/.pgpass or PGPASSFILE) and service file are used instead.
class DatabaseLocation {
public:
    // Reads a path or a URI. Throws DatabaseError, with a message for the user, when a URI
    // can't be used (a password in it, an unknown keyword, no database name).
    static DatabaseLocation parse(const QString &text);

    // Whether the text is meant as a server URI (whether or not it is a valid one).
    static bool looksLikeServer(const QString &text);

    SqlDialect::Backend backend() const { return mBackend; }
    bool isServer() const { return mBackend == SqlDialect::Backend::PostgreSQL; }

    // The text as given.
    QString text() const { return mText; }
    // A file: its path. A server: the database name.
    QString databaseName() const { return mDatabaseName; }
    QString host() const { return mHost; }
    int port() const { return mPort; }
    QString userName() const { return mUserName; }
    // The keywords of the query, as the Qt driver takes them ("k=v;k=v").
    QString connectOptions() const { return mConnectOptions; }

    // How the database is named in messages: the path, or "dbname on host".
    QString displayName() const;

private:
    SqlDialect::Backend mBackend = SqlDialect::Backend::SQLite;
    QString mText;
    QString mDatabaseName;
    QString mHost;
    int mPort = -1;
    QString mUserName;
    QString mConnectOptions;
};
