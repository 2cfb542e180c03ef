#include "tracking/WestgardRule.h"

namespace westgard {

namespace {

struct Entry {
    WestgardRule rule;
    const char *name;
};

constexpr Entry kEntries[] = {
    {WestgardRule::OneTwoS, "1-2s"},    {WestgardRule::OneThreeS, "1-3s"}, {WestgardRule::TwoTwoS, "2-2s"},
    {WestgardRule::RangeFourS, "R-4s"}, {WestgardRule::FourOneS, "4-1s"},  {WestgardRule::TenX, "10x"},
    {WestgardRule::EightX, "8x"},       {WestgardRule::TwelveX, "12x"},    {WestgardRule::TwoOfThreeTwoS, "2of3-2s"},
    {WestgardRule::ThreeOneS, "3-1s"},  {WestgardRule::SixX, "6x"},        {WestgardRule::NineX, "9x"},
};

} // namespace

const QList<WestgardRule> &allRules()
{
    static const QList<WestgardRule> rules = [] {
        QList<WestgardRule> list;
        for (const Entry &e : kEntries)
            list << e.rule;
        return list;
    }();
    return rules;
}

const QList<WestgardRule> &defaultRules()
{
    static const QList<WestgardRule> rules = {WestgardRule::OneThreeS, WestgardRule::TwoTwoS, WestgardRule::RangeFourS,
                                              WestgardRule::FourOneS,  WestgardRule::TenX,    WestgardRule::OneTwoS};
    return rules;
}

QString name(WestgardRule rule)
{
    for (const Entry &e : kEntries) {
        if (e.rule == rule)
            return QString::fromLatin1(e.name);
    }
    return QString();
}

std::optional<WestgardRule> fromName(const QString &text)
{
    for (const Entry &e : kEntries) {
        if (text == QLatin1String(e.name))
            return e.rule;
    }
    return std::nullopt;
}

QStringList names(const QList<WestgardRule> &rules)
{
    QStringList list;
    for (WestgardRule rule : rules)
        list << name(rule);
    return list;
}

std::optional<QList<WestgardRule>> fromNames(const QStringList &texts, QString *unknown)
{
    QList<WestgardRule> rules;
    for (const QString &text : texts) {
        const std::optional<WestgardRule> rule = fromName(text);
        if (!rule) {
            if (unknown)
                *unknown = text;
            return std::nullopt;
        }
        if (!rules.contains(*rule))
            rules << *rule;
    }
    return rules;
}

bool isWarningOnly(WestgardRule rule)
{
    return rule == WestgardRule::OneTwoS;
}

QString unknownRuleMessage(const QString &text)
{
    return QStringLiteral("\"%1\" is not a quality-control rule; the rules are %2.")
        .arg(text, names(allRules()).join(QStringLiteral(", ")));
}

} // namespace westgard
