#include "tracking/QcLine.h"

#include <QStringList>

namespace {

bool judgedAcrossQuantities(WestgardRule rule)
{
    return rule == WestgardRule::RangeFourS || rule == WestgardRule::TwoOfThreeTwoS;
}

} // namespace

QString QcLine::ruleList(const QcHistory &history, const std::vector<QcFlag> &flags, bool reject)
{
    QStringList parts;
    for (WestgardRule rule : history.rules) {
        QStringList quantities;
        for (const QcFlag &flag : flags) {
            if (flag.rule == rule && flag.reject == reject)
                quantities << history.quantities[flag.quantity];
        }
        if (quantities.isEmpty())
            continue;
        const QString name = westgard::name(rule);
        parts << (judgedAcrossQuantities(rule) ? name : name + u' ' + quantities.join(u'/'));
    }
    return parts.join(QStringLiteral(", "));
}

QcLine QcLine::of(const QcHistory &history, int run)
{
    const std::vector<QcFlag> flags = history.flagsOf(run);
    QcLine line;
    const QString rejected = ruleList(history, flags, true);
    const QString warned = ruleList(history, flags, false);
    if (!rejected.isEmpty())
        line.text = QStringLiteral("QC rejected: ") + rejected;
    else if (!warned.isEmpty())
        line.text = QStringLiteral("QC warning: ") + warned;
    else
        line.text = QStringLiteral("QC: in control");

    QStringList tips;
    const QcRun &r = history.runs[size_t(run)];
    for (int q = 0; q < history.quantities.size(); ++q) {
        const std::optional<double> &value = r.values[size_t(q)];
        const std::optional<GuideSet> &set = r.sets[size_t(q)];
        const QString &name = history.quantities[q];
        if (!set)
            tips << QStringLiteral("%1: no guide set in force").arg(name);
        else if (!value)
            tips << QStringLiteral("%1: not measured on this plate").arg(name);
        else
            tips << QStringLiteral("%1 %2: %3 SD from %4 \u00b1 %5 (guide set from %6)")
                        .arg(name)
                        .arg(*value, 0, 'f', 3)
                        .arg((*value - set->mean) / set->sd, 0, 'f', 2)
                        .arg(set->mean, 0, 'f', 3)
                        .arg(set->sd, 0, 'f', 3)
                        .arg(set->start.toString(QStringLiteral("M/d/yyyy")));
    }
    if (!warned.isEmpty() && !rejected.isEmpty())
        tips << QStringLiteral("Warning: ") + warned;
    line.toolTip = tips.join(u'\n');
    return line;
}
