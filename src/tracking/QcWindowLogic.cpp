#include "tracking/QcWindowLogic.h"

#include "evaluation/clsTests.h"
#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "store/ProgramFolder.h"
#include "store/RunDatabase.h"
#include "tracking/GuideSetStore.h"

#include <QSqlQuery>

#include <algorithm>

QcWindowLogic::QcWindowLogic(const ProgramFolder &folder, Prompt &prompt, const Clock &clock)
    : mFolder(folder), mPrompt(prompt), mClock(clock), mEditor(folder, prompt, clock)
{
}

void QcWindowLogic::load()
{
    tests.clear();
    for (const QString &name : clsTests::allTestNames()) {
        if (name != u"Generic")
            tests << name;
    }
    if (!tests.contains(testName))
        testName = tests.isEmpty() ? QString() : tests.first();
    lots = QStringList{kAnyLot};
    DbConnection db = openDatabase(mFolder);
    QSqlQuery rows = db.query(QStringLiteral("SELECT DISTINCT LotNumber FROM Plates ORDER BY LotNumber"));
    while (rows.next()) {
        const QString l = rows.value(0).toString();
        if (!l.isEmpty())
            lots << l;
    }
    if (!lots.contains(lot))
        lot = kAnyLot;
    to = mClock.now().date();
    from = to.addYears(-1);
}

std::optional<QcWindowLogic::View> QcWindowLogic::gather()
{
    if (!from.isValid() || !to.isValid() || from > to) {
        mPrompt.message(kBadDatesText, kBadDatesTitle, MsgIcon::Exclamation);
        return std::nullopt;
    }
    TrackingCriteria criteria;
    criteria.testName = testName;
    if (lot != kAnyLot)
        criteria.lotNumber = lot;
    criteria.start = from;
    criteria.end = to;
    DbConnection db = openDatabase(mFolder);
    View view = viewOf(QcHistory::gather(db, criteria, mPrompt));
    if (view.history.book.isEmpty())
        view.notice = QStringLiteral("%1 has no guide set: add one below to judge its plates.").arg(testName);
    else if (view.history.runs.empty())
        view.notice = QStringLiteral("No saved plate of %1 fits this choice.").arg(testName);
    return view;
}

QList<WestgardRule> QcWindowLogic::kitRules()
{
    DbConnection db = openDatabase(mFolder);
    return GuideSetStore::rules(db, testName);
}

QcWindowLogic::View QcWindowLogic::viewOf(QcHistory history)
{
    View view;
    const int quantities = int(history.quantities.size());
    view.charts.resize(size_t(quantities));
    for (int q = 0; q < quantities; ++q) {
        view.charts[size_t(q)].quantity = history.quantities[q];
        view.charts[size_t(q)].points.reserve(history.runs.size());
    }
    for (size_t r = 0; r < history.runs.size(); ++r) {
        const QcRun &run = history.runs[r];
        for (int q = 0; q < quantities; ++q) {
            const std::optional<double> &value = run.values[size_t(q)];
            if (!value)
                continue;
            Point point{int(r), *value, std::nullopt, std::nullopt, {}};
            if (const std::optional<GuideSet> &set = run.sets[size_t(q)]) {
                point.mean = set->mean;
                point.sd = set->sd;
            }
            view.charts[size_t(q)].points.push_back(std::move(point));
        }
    }
    // Each flag labels its quantity's point of that run (the points are in run order).
    for (const QcFlag &flag : history.flags) {
        const QcRun &run = history.runs[size_t(flag.run)];
        const std::optional<double> &value = run.values[size_t(flag.quantity)];
        const std::optional<GuideSet> &set = run.sets[size_t(flag.quantity)];
        Violation v;
        v.plate = run.plate.describe();
        v.dateRead = run.plate.dateRead.toDate();
        v.quantity = history.quantities[flag.quantity];
        v.rule = westgard::name(flag.rule);
        v.reject = flag.reject;
        v.value = value;
        if (value && set)
            v.z = (*value - set->mean) / set->sd;
        view.violations.push_back(v);

        std::vector<Point> &points = view.charts[size_t(flag.quantity)].points;
        auto it = std::lower_bound(points.begin(), points.end(), flag.run,
                                   [](const Point &p, int run) { return p.run < run; });
        if (it != points.end() && it->run == flag.run)
            it->rules << v.rule;
    }
    view.history = std::move(history);
    return view;
}
