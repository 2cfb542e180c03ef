#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>

#include <optional>

class DbConnection;

// The one row of MiscSettings: what the last shutdown had selected and how many saves
// were made since the last compaction. Reads and writes go through the connection given;
// a database without the row is a DatabaseError.
//
// On a server the table has a row per workstation (by host name, or the environment
// variable TAVIMETRA_WORKSTATION when set), made when first needed: each workstation keeps
// its own last reader and filter. The save count stays 0 there, as a server looks after
// its own storage.
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

    // The name of this workstation's row on a server.
    static QString workstationName();

private:
    bool perWorkstation() const;
    QString rowFilter() const;
    QVariantList rowKey() const;
    void makeRow() const;
    QVariant read(const QString &column) const;
    void write(const QString &column, const QVariant &value) const;

    const DbConnection &mDb;
};
