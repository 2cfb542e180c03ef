#pragma once

#include <QSqlQuery>
#include <QString>
#include <QVariantList>

#include <memory>

class DbConnection;
struct sqlite3_stmt;

// A statement prepared once and run many times with values bound ("?" placeholders, in
// order), for the rows of a save. On a file it goes to SQLite directly, texts bound as
// UTF-8: the driver binds UTF-16, which SQLite then translates character by character, and
// names every placeholder it binds; the values stored are the same. On a server it is a
// prepared QSqlQuery. Failures throw DatabaseError with the driver's words, as
// DbConnection's do.
class PreparedStatement {
public:
    PreparedStatement(const DbConnection &db, const QString &sql);
    ~PreparedStatement();
    PreparedStatement(const PreparedStatement &) = delete;
    PreparedStatement &operator=(const PreparedStatement &) = delete;

    // Runs a statement that returns no rows.
    void run(const QVariantList &values);

    // Runs a query; walk its rows with next(), reading each with value(). Texts come as
    // QString, whole numbers as qlonglong, Null as a null QVariant.
    void query(const QVariantList &values);
    bool next();
    QVariant value(int column) const;
    int columnCount() const;
    QString columnName(int column) const;

private:
    void bind(const QVariantList &values, QList<QByteArray> &texts);
    void fail(int stepped);

    QString mSql;
    sqlite3_stmt *mStatement = nullptr;
    bool mPending = false; // a query's first row, stepped to already
    bool mDone = false;
    QList<QByteArray> mTexts; // the texts bound to a query, alive while its rows are read
    std::unique_ptr<QSqlQuery> mQuery;
};
