#pragma once

#include "tracking/GuideSet.h"
#include "tracking/WestgardRule.h"

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

class DbConnection;

// The guide sets of one kit as stored, and which one is in force for a plate.
class GuideSetBook {
public:
    GuideSetBook() = default;
    explicit GuideSetBook(QList<GuideSet> sets);

    const QList<GuideSet> &all() const { return mSets; }
    bool isEmpty() const { return mSets.isEmpty(); }

    // The guide set of the quantity in force on the day a plate of the lot was read: of
    // those starting on or before that day, the latest start (and of one start, the last
    // set). One of the lot's own wins over one for every lot.
    std::optional<GuideSet> inForce(const QString &quantity, const QString &lot, const QDate &day) const;

private:
    QList<GuideSet> mSets; // in order of start, then of setting
};

// Guide sets and the rules of each kit in the run database (the added tables QcGuideSets
// and QcKitRules). A guide set is never changed or removed: a newer one replaces it from
// its start date on, so every plate stays judged as it was when it was read.
namespace GuideSetStore {

// Stores a new guide set; the id is chosen here and returned. Every guide set written
// goes through this one function, in one transaction. Throws std::invalid_argument with
// the message to show when the set can't serve (no kit, no quantity, no start date, an SD
// of zero or below): nothing is stored then.
qint64 add(const DbConnection &db, GuideSet set);

// The guide sets of the kit, oldest start first; none when the table is not there yet.
GuideSetBook read(const DbConnection &db, const QString &testName);

// The rules the kit's plates are judged by; the default rules when none were chosen.
QList<WestgardRule> rules(const DbConnection &db, const QString &testName);
void setRules(const DbConnection &db, const QString &testName, const QList<WestgardRule> &rules);

} // namespace GuideSetStore
