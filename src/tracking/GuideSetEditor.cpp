#include "tracking/GuideSetEditor.h"

#include "evaluation/clsTests.h"
#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "store/ProgramFolder.h"
#include "store/RunDatabase.h"
#include "tracking/GuideSetStore.h"
#include "tracking/QcHistory.h"
#include "tracking/TrackingStatistics.h"

#include <stdexcept>

namespace {

std::optional<double> number(const QString &text)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    return ok ? std::optional<double>(value) : std::nullopt;
}

} // namespace

GuideSetEditor::GuideSetEditor(const ProgramFolder &folder, Prompt &prompt, const Clock &clock)
    : mFolder(folder), mPrompt(prompt), mClock(clock)
{
}

QStringList GuideSetEditor::quantitiesOf(const QString &testName)
{
    return QcHistory::quantitiesOf(testName, mPrompt);
}

std::vector<GuideSetEditor::Candidate> GuideSetEditor::candidates(const TrackingCriteria &criteria)
{
    const QStringList quantities = quantitiesOf(criteria.testName);
    DbConnection db = openDatabase(mFolder);
    const QList<TrackedPlate> plates = ControlTracking::readPlates(db, criteria);
    clsTests tests(mPrompt);
    TrackingStatistics stats(tests);
    std::vector<Candidate> list;
    list.reserve(size_t(plates.size()));
    for (const TrackedPlate &plate : plates)
        list.push_back({plate, QcHistory::plateValues(plate, quantities, stats)});
    return list;
}

void GuideSetEditor::refuse(const QString &why)
{
    mPrompt.message(QStringLiteral("The guide set was not kept: ") + why, kTitle, MsgIcon::Exclamation);
}

std::optional<qint64> GuideSetEditor::addTyped(const Entry &entry, const QString &meanText, const QString &sdText)
{
    const std::optional<double> mean = number(meanText);
    if (!mean) {
        refuse(QStringLiteral("the mean \"%1\" is not a number.").arg(meanText));
        return std::nullopt;
    }
    const std::optional<double> sd = number(sdText);
    if (!sd) {
        refuse(QStringLiteral("the SD \"%1\" is not a number.").arg(sdText));
        return std::nullopt;
    }
    const QString problem = GuideSet::problemWith(*mean, *sd);
    if (!problem.isEmpty()) {
        refuse(problem);
        return std::nullopt;
    }
    return store(entry, *mean, *sd, 0);
}

std::optional<qint64> GuideSetEditor::addFromBaseline(const Entry &entry, const std::vector<Candidate> &picked)
{
    const qsizetype q = quantitiesOf(entry.testName).indexOf(entry.quantity);
    std::vector<double> values;
    for (const Candidate &c : picked) {
        if (q >= 0 && size_t(q) < c.values.size() && c.values[size_t(q)])
            values.push_back(*c.values[size_t(q)]);
    }
    QString error;
    const std::optional<GuideSet::Baseline> baseline = GuideSet::fromBaseline(values, &error);
    if (!baseline) {
        refuse(error);
        return std::nullopt;
    }
    if (!baseline->warning.isEmpty())
        mPrompt.message(baseline->warning, kTitle, MsgIcon::Information);
    return store(entry, baseline->mean, baseline->sd, baseline->plates);
}

std::optional<qint64> GuideSetEditor::store(const Entry &entry, double mean, double sd, int plates)
{
    GuideSet set;
    set.testName = entry.testName;
    set.quantity = entry.quantity;
    set.lotNumber = entry.lotNumber.trimmed();
    set.start = entry.start;
    set.mean = mean;
    set.sd = sd;
    set.plateCount = plates;
    set.setBy = entry.setBy;
    set.setAt = mClock.now();
    DbConnection db = openDatabase(mFolder);
    try {
        return GuideSetStore::add(db, set);
    } catch (const std::invalid_argument &e) {
        mPrompt.message(QString::fromUtf8(e.what()), kTitle, MsgIcon::Exclamation);
        return std::nullopt;
    }
}

bool GuideSetEditor::setRules(const QString &testName, const QStringList &names)
{
    QString unknown;
    const std::optional<QList<WestgardRule>> rules = westgard::fromNames(names, &unknown);
    if (!rules) {
        mPrompt.message(westgard::unknownRuleMessage(unknown), kRulesTitle, MsgIcon::Exclamation);
        return false;
    }
    DbConnection db = openDatabase(mFolder);
    GuideSetStore::setRules(db, testName, *rules);
    return true;
}
