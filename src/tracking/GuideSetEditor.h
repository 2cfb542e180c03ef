#pragma once

#include "tracking/ControlTracking.h"
#include "tracking/TrackedPlate.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class Clock;
class ProgramFolder;
class Prompt;

// What the guide-set editor of the QC window does, without a screen: a guide set typed in
// (mean, SD, start date, optionally a lot) or figured from a baseline of saved plates the
// user picks, and the rules each kit is judged by. Bad input (a mean or SD that is not a
// number, an SD of zero or below, no plate with a value) is refused with a box saying why,
// and nothing is stored; a baseline under 20 plates is kept after a box that warns.
// Failures of the database throw DatabaseError.
class GuideSetEditor {
public:
    static inline const QString kTitle = QStringLiteral("Guide Set");
    static inline const QString kRulesTitle = QStringLiteral("Westgard Rules");

    // What the user fills in for a new guide set.
    struct Entry {
        QString testName;
        QString quantity;  // "PC", "NC" or the kit's ratio header
        QString lotNumber; // empty: every lot
        QDate start;
        QString setBy;
    };

    // A saved plate a baseline can be made of, with the values of its kit's quantities.
    struct Candidate {
        TrackedPlate plate;
        std::vector<std::optional<double>> values; // in the order of quantitiesOf
    };

    GuideSetEditor(const ProgramFolder &folder, Prompt &prompt, const Clock &clock);

    // "PC", "NC" and the ratio header when the kit has a ratio.
    QStringList quantitiesOf(const QString &testName);

    // The saved plates of the criteria, in the order read.
    std::vector<Candidate> candidates(const TrackingCriteria &criteria);

    // Typed in: the new guide set's id, or nothing when refused (the user was told).
    std::optional<qint64> addTyped(const Entry &entry, const QString &meanText, const QString &sdText);

    // The mean and sample SD of the quantity on the plates picked.
    std::optional<qint64> addFromBaseline(const Entry &entry, const std::vector<Candidate> &picked);

    // The kit's rules by name ("1-3s", "2-2s", ...); false after a box when a name is unknown.
    bool setRules(const QString &testName, const QStringList &names);

private:
    std::optional<qint64> store(const Entry &entry, double mean, double sd, int plates);
    void refuse(const QString &why);

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    const Clock &mClock;
};
