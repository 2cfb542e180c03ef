#pragma once

#include <QString>
#include <QStringList>

class DbConnection;
class RecordSet;

// Group names that hold the well-list delimiter "¬". Databases made before the delimiter
// was refused in names may hold such groups, and a plate saved with one in a well has a
// Groups list whose later wells moved on by one item per delimiter (or that has more than
// 96 items and can't be read at all). Opening such a run puts each of these names back
// into its well without the delimiter.
class DelimitedGroupNames {
public:
    explicit DelimitedGroupNames(const QStringList &names);
    // The group names of the database that hold the delimiter.
    static DelimitedGroupNames fromDatabase(const DbConnection &db);

    bool isEmpty() const { return mNames.isEmpty(); }

    // The list with every item that is one of the names (the whole name, delimiters and
    // all, between two item ends; longer names first) written as one item without the
    // delimiter. found receives the names met.
    QString repairList(const QString &list, QStringList *found = nullptr) const;

    // Repairs the Groups list of every plate. Returns one line per plate and name
    // repaired, for the box that tells the user.
    QStringList repairPlates(RecordSet &plates) const;

    // The box that tells what was repaired.
    static QString messageText(const QStringList &lines);
    static inline const QString kTitle = QStringLiteral("Group Names Repaired");

private:
    QStringList mNames;
};
