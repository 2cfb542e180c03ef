#pragma once

#include <optional>

class DbConnection;

// The one row of MiscSettings: what the last shutdown had selected and how many saves
// were made since the last compaction. Reads and writes go through the connection given;
// a database without the row is a DatabaseError.
class MiscSettings {
public:
    explicit MiscSettings(const DbConnection &db);

    // The reader selected at the last shutdown; none when no reader was selected.
    std::optional<int> lastUserReaderID() const;
    void setLastUserReaderID(std::optional<int> id) const;

    // The list position (0-based) of the filter selected at the last shutdown; -1 when
    // none was.
    int lastUserFilterNo() const;
    void setLastUserFilterNo(int listIndex) const;

    // Saves since the last compaction.
    double changesSinceLastCompact() const;
    void setChangesSinceLastCompact(double count) const;

private:
    const DbConnection &mDb;
};
