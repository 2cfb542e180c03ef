#pragma once

class DbConnection;

// Settings of the laboratory that hold for every workstation of the database.
class LabPolicy {
public:
    // Whether a save must be given a reason when it would change the ODs, inclusion flags
    // or results of a plate that was read and passed. Off when never set.
    static bool reasonForValidatedChanges(const DbConnection &db);

    // Sets it, with its row in the audit trail, in one transaction of its own.
    static void setReasonForValidatedChanges(const DbConnection &db, bool on);
};
