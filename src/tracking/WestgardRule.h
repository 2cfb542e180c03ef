#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The quality-control rules a kit's control values are judged by, in SDs from the mean of
// the guide set in force (z). Their names are the ones labs write: "1-3s", "2-2s", ...
enum class WestgardRule {
    OneTwoS,        // "1-2s": one value at or beyond +-2 (a warning only)
    OneThreeS,      // "1-3s": one value at or beyond +-3
    TwoTwoS,        // "2-2s": two values at or beyond the same +2 or -2
    RangeFourS,     // "R-4s": within one run, one value at or beyond +2 and another at or beyond -2
    FourOneS,       // "4-1s": four consecutive values at or beyond the same +1 or -1
    TenX,           // "10x": ten consecutive values on the same side of the mean
    EightX,         // "8x"
    TwelveX,        // "12x"
    TwoOfThreeTwoS, // "2of3-2s": within one run, two values at or beyond the same +2 or -2
    ThreeOneS,      // "3-1s": three values at or beyond the same +1 or -1
    SixX,           // "6x"
    NineX,          // "9x"
};

namespace westgard {

// Every rule, in the order they are offered.
const QList<WestgardRule> &allRules();

// The rules a kit starts with: 1-3s, 2-2s, R-4s, 4-1s, 10x, and 1-2s as a warning.
const QList<WestgardRule> &defaultRules();

QString name(WestgardRule rule);

// The rule of that name ("R-4s"; case matters as labs write them); nullopt for any other text.
std::optional<WestgardRule> fromName(const QString &name);

// The names, in order; and back, with the first unknown name in *unknown.
QStringList names(const QList<WestgardRule> &rules);
std::optional<QList<WestgardRule>> fromNames(const QStringList &names, QString *unknown);

// True for the one rule that warns without rejecting (1-2s).
bool isWarningOnly(WestgardRule rule);

// The message for an unknown rule name, listing the known ones.
QString unknownRuleMessage(const QString &name);

} // namespace westgard
