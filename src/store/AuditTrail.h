#pragma once

#include <QList>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

#include <memory>
#include <optional>

class DbConnection;
class PreparedStatement;

// One change to the lasting data, as a row of the audit trail sees it. Which run and
// plate it concerns, when there is one, is kept apart as numbers so that the trail can be
// searched by them.
struct AuditEntry {
    QString action;   // "Plate changed", "Run renamed", ... (the actions below)
    QString table;    // the table whose row changed
    QString recordID; // that row's key, as text ("3/2" for run 3, plate 2)
    QString field;    // the column that changed; empty for a whole row
    QString oldValue; // empty for a row added
    QString newValue; // empty for a row deleted
    std::optional<qint64> runID = {};
    std::optional<qint64> plateID = {};
};

// The append-only trail of who changed what in the run database. Rows are written through
// the connection of the change, inside its transaction: when a row cannot be written the
// caller's transaction fails and the change is rolled back with it. Nothing updates or
// deletes a row: triggers on the table refuse it on either engine.
//
// Each row carries the time in UTC (the database's clock: on a server the server's), the
// operating-system user, the technician chosen on this workstation, the host name, and
// the reason the user gave for the change, if any.
class AuditTrail {
public:
    static inline const QString kTable = QStringLiteral("AuditTrail");

    // The actions.
    static inline const QString kRunSavedAs = QStringLiteral("Run saved as");
    static inline const QString kRunRenamed = QStringLiteral("Run renamed");
    static inline const QString kRunDeleted = QStringLiteral("Run deleted");
    static inline const QString kFolderAdded = QStringLiteral("Folder added");
    static inline const QString kFolderRenamed = QStringLiteral("Folder renamed");
    static inline const QString kFolderDeleted = QStringLiteral("Folder deleted");
    static inline const QString kPlateAdded = QStringLiteral("Plate added");
    static inline const QString kPlateChanged = QStringLiteral("Plate changed");
    static inline const QString kPlateDeleted = QStringLiteral("Plate deleted");
    static inline const QString kPlateRead = QStringLiteral("Plate read");
    static inline const QString kGroupAdded = QStringLiteral("Group added");
    static inline const QString kGroupChanged = QStringLiteral("Group changed");
    static inline const QString kGroupDeleted = QStringLiteral("Group deleted");
    static inline const QString kTechnicianAdded = QStringLiteral("Technician added");
    static inline const QString kTechnicianRenamed = QStringLiteral("Technician renamed");
    static inline const QString kTechnicianDeleted = QStringLiteral("Technician deleted");
    static inline const QString kReaderAdded = QStringLiteral("Reader added");
    static inline const QString kReaderChanged = QStringLiteral("Reader changed");
    static inline const QString kReaderDeleted = QStringLiteral("Reader deleted");
    static inline const QString kDatabaseCompacted = QStringLiteral("Database compacted");
    static inline const QString kDatabaseUpgraded = QStringLiteral("Database upgraded");
    static inline const QString kDatabaseCopied = QStringLiteral("Database copied");
    static inline const QString kGuideSetAdded = QStringLiteral("Guide set added");
    static inline const QString kQcRulesChanged = QStringLiteral("QC rules changed");

    // Writes through db, whose transaction the caller holds. The table is made by the
    // first write (AddedTables). An object serves one transaction (its insert is
    // prepared once): make a new one for the next, or for a transaction run again.
    explicit AuditTrail(const DbConnection &db);
    ~AuditTrail();
    AuditTrail(const AuditTrail &) = delete;
    AuditTrail &operator=(const AuditTrail &) = delete;

    // Writes one row; throws DatabaseError when it can't, which must fail the change.
    void record(const AuditEntry &entry) const;

    // Writes the rows in their order; on a server many to a statement, a save's changes
    // going in one round trip or a few instead of one each.
    void record(const QList<AuditEntry> &entries) const;

    // The reason the user gave for the changes written from now on by this object.
    void setReason(const QString &reason) { mReason = reason; }

    // The technician chosen on this workstation, written into every row from now on
    // (the main window keeps it in step with its technician box).
    static void setTechnician(const QString &name);
    static QString technician();

    // The operating-system user and the host name written into the rows.
    static QString osUser();
    static QString hostName();

    // "3/2": the record id of plate 2 of run 3.
    static QString plateRecord(qint64 runID, qint64 plateID);

private:
    void appendValues(QVariantList &values, const AuditEntry &entry) const;

    const DbConnection &mDb;
    QString mReason;
    // The insert, prepared by the first write and used for the others of this object.
    mutable std::unique_ptr<PreparedStatement> mInsert;
};
