#pragma once

#include "tracking/GuideSetEditor.h"
#include "tracking/QcHistory.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class Clock;
class ProgramFolder;
class Prompt;

// What the QC window (Tools > Quality Control...) shows, without a screen: the choice of
// kit, lot and dates; for each quantity of the kit a Levey-Jennings chart (the values in
// the order read, the lines of the guide set in force at each plate, the violations
// labelled by rule); the table of violations; and the guide-set editor.
class QcWindowLogic {
public:
    static inline const QString kCaption = QStringLiteral("Quality Control");
    static inline const QString kAnyLot = QStringLiteral("Any Lot Number");
    static inline const QString kBadDatesTitle = QStringLiteral("Date range is invalid.");
    static inline const QString kBadDatesText = QStringLiteral("The date range is invalid");

    // A plate's value and the guide set in force for it; no set: the value is not judged.
    struct Point {
        int run = 0; // the plate's place in the order read, from 0
        double value = 0;
        std::optional<double> mean, sd;
        QStringList rules; // the rules the value broke ("1-3s", "1-2s" ...)
    };
    struct Chart {
        QString quantity;
        std::vector<Point> points;
    };
    // A row of the violations table.
    struct Violation {
        QString plate; // "Plate #1" of run "Monday"
        QDate dateRead;
        QString quantity;
        QString rule;
        bool reject = true;
        std::optional<double> value, z;
    };
    struct View {
        QcHistory history;
        std::vector<Chart> charts; // one per quantity
        std::vector<Violation> violations;
        QString notice; // said instead of charts: no plate, no guide set
    };

    QcWindowLogic(const ProgramFolder &folder, Prompt &prompt, const Clock &clock);

    // The kits (every one but "Generic"), the lots, the dates from a year before today to today.
    void load();

    // The view of the choice; nullopt after a box when the dates are not a range. Throws
    // DatabaseError and TrackingDataError.
    std::optional<View> gather();

    static View viewOf(QcHistory history);

    GuideSetEditor &editor() { return mEditor; }

    // The rules the chosen kit is judged by.
    QList<WestgardRule> kitRules();

    // The choice.
    QStringList tests;
    QString testName;
    QStringList lots; // kAnyLot first
    QString lot;      // kAnyLot or a lot
    QDate from, to;

private:
    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    const Clock &mClock;
    GuideSetEditor mEditor;
};
