#pragma once

#include <QDate>
#include <QString>
#include <QVector>

#include <optional>

class DbConnection;

// A row of the audit trail as it was written (AuditTrail).
struct AuditRow {
    qint64 entryID = 0;
    QString time; // UTC, ISO 8601 ("2026-11-24T09:30:00.123Z")
    QString osUser, technician, host, action, table, recordID;
    std::optional<qint64> runID, plateID;
    QString field, oldValue, newValue, reason;
};

// What to list: every condition given must hold. Dates are days of the UTC time, both
// ends included; texts compare exactly.
struct AuditFilter {
    std::optional<qint64> runID, plateID;
    QString osUser, technician, action;
    QDate from, to;
};

// Reading the audit trail: in the order it was written, which is time order.
class AuditQuery {
public:
    // The rows that pass the filter; none when the database has no trail yet.
    static QVector<AuditRow> rows(const DbConnection &db, const AuditFilter &filter = {});

    // The distinct values of a column (OsUser, Technician, Action), sorted, for the
    // filters of the window.
    static QStringList distinct(const DbConnection &db, const QString &column);

    // One row as a line of JSON (keys sorted).
    static QString jsonLine(const AuditRow &row);

    // The rows as CSV (RFC 4180: a heading line, fields with a comma, quote or line break
    // quoted, lines ending in CR LF).
    static QString csv(const QVector<AuditRow> &rows);
};
