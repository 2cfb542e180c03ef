#include "tracking/GuideSetStore.h"

#include "store/AddedTables.h"
#include "store/AuditTrail.h"
#include "store/DbConnection.h"
#include "store/PlateRows.h"
#include "store/RunDatabase.h"
#include "store/TransactionRetry.h"

#include <QSqlQuery>

#include <stdexcept>

namespace {

const QString kSetAtFormat = QStringLiteral("yyyy-MM-ddTHH:mm:ss");

// An empty text, never NULL, for the columns that hold texts.
QString text(const QString &value)
{
    return value.isNull() ? QStringLiteral("") : value;
}

} // namespace

GuideSetBook::GuideSetBook(QList<GuideSet> sets) : mSets(std::move(sets))
{
    std::stable_sort(mSets.begin(), mSets.end(), [](const GuideSet &a, const GuideSet &b) {
        return a.start != b.start ? a.start < b.start : a.id < b.id;
    });
}

std::optional<GuideSet> GuideSetBook::inForce(const QString &quantity, const QString &lot, const QDate &day) const
{
    std::optional<GuideSet> own, general;
    for (const GuideSet &set : mSets) {
        if (set.quantity != quantity || set.start > day)
            continue;
        if (set.lotNumber.isEmpty())
            general = set;
        else if (set.lotNumber == lot)
            own = set;
    }
    return own ? own : general;
}

namespace GuideSetStore {

qint64 add(const DbConnection &db, GuideSet set)
{
    if (set.testName.isEmpty() || set.quantity.isEmpty())
        throw std::invalid_argument("A guide set needs a kit and a quantity.");
    if (!set.start.isValid())
        throw std::invalid_argument("A guide set needs the date it starts on.");
    const QString problem = GuideSet::problemWith(set.mean, set.sd);
    if (!problem.isEmpty())
        throw std::invalid_argument(("The guide set can't be kept: " + problem).toStdString());

    qint64 id = 0;
    runTransaction(db, [&] {
        AddedTables::ensure(db, QStringLiteral("QcGuideSets"));
        lockBeforeNewId(db, QStringLiteral("QcGuideSets"));
        id = db.scalar(QStringLiteral("SELECT COALESCE(MAX(GuideSetID), 0) + 1 FROM QcGuideSets")).toLongLong();
        db.execute(QStringLiteral("INSERT INTO QcGuideSets (GuideSetID, TestName, Quantity, LotNumber, Mean, SD, "
                                  "StartDate, PlateCount, SetBy, SetAt) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                   {id, set.testName, set.quantity, text(set.lotNumber), set.mean, set.sd,
                    set.start.toString(PlateRows::kDateFormat), set.plateCount, text(set.setBy),
                    text(set.setAt.toString(kSetAtFormat))});
        const QString lot =
            set.lotNumber.isEmpty() ? QStringLiteral("every lot") : QStringLiteral("lot ") + set.lotNumber;
        AuditTrail(db).record({AuditTrail::kGuideSetAdded,
                               QStringLiteral("QcGuideSets"),
                               QString::number(id),
                               {},
                               {},
                               QStringLiteral("%1 %2, %3: mean %4, SD %5 from %6 (%7 plates)")
                                   .arg(set.testName, set.quantity, lot, QString::number(set.mean, 'g', 17),
                                        QString::number(set.sd, 'g', 17), set.start.toString(PlateRows::kDateFormat))
                                   .arg(set.plateCount)});
    });
    return id;
}

GuideSetBook read(const DbConnection &db, const QString &testName)
{
    if (!AddedTables::exists(db, QStringLiteral("QcGuideSets")))
        return {};
    QList<GuideSet> sets;
    QSqlQuery rows = db.query(QStringLiteral("SELECT GuideSetID, Quantity, LotNumber, Mean, SD, StartDate, "
                                             "PlateCount, SetBy, SetAt FROM QcGuideSets WHERE TestName = ? "
                                             "ORDER BY StartDate, GuideSetID"),
                              {testName});
    while (rows.next()) {
        GuideSet set;
        set.id = rows.value(0).toLongLong();
        set.testName = testName;
        set.quantity = rows.value(1).toString();
        set.lotNumber = rows.value(2).toString();
        set.mean = rows.value(3).toDouble();
        set.sd = rows.value(4).toDouble();
        set.start = QDate::fromString(rows.value(5).toString(), PlateRows::kDateFormat);
        set.plateCount = rows.value(6).toInt();
        set.setBy = rows.value(7).toString();
        set.setAt = QDateTime::fromString(rows.value(8).toString(), kSetAtFormat);
        sets << set;
    }
    return GuideSetBook(sets);
}

QList<WestgardRule> rules(const DbConnection &db, const QString &testName)
{
    if (!AddedTables::exists(db, QStringLiteral("QcKitRules")))
        return westgard::defaultRules();
    const QVariant stored = db.scalar(QStringLiteral("SELECT Rules FROM QcKitRules WHERE TestName = ?"), {testName});
    if (stored.isNull())
        return westgard::defaultRules();
    // Names this version doesn't know (written by a later one) are left out.
    QList<WestgardRule> list;
    for (const QString &name : stored.toString().split(u',', Qt::SkipEmptyParts)) {
        if (const std::optional<WestgardRule> rule = westgard::fromName(name))
            list << *rule;
    }
    return list;
}

void setRules(const DbConnection &db, const QString &testName, const QList<WestgardRule> &rules)
{
    runTransaction(db, [&] {
        AddedTables::ensure(db, QStringLiteral("QcKitRules"));
        const QString before = westgard::names(GuideSetStore::rules(db, testName)).join(u',');
        const QString after = westgard::names(rules).join(u',');
        db.execute(QStringLiteral("DELETE FROM QcKitRules WHERE TestName = ?"), {testName});
        db.execute(QStringLiteral("INSERT INTO QcKitRules (TestName, Rules) VALUES (?, ?)"), {testName, after});
        if (before != after)
            AuditTrail(db).record({AuditTrail::kQcRulesChanged, QStringLiteral("QcKitRules"), testName,
                                   QStringLiteral("Rules"), before, after});
    });
}

} // namespace GuideSetStore
