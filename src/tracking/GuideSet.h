#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

// The fixed limits one tracked quantity of a kit (a control mean or the ratio), and
// optionally one lot, is judged by from its start date on: a mean and an SD, typed in or
// figured from a baseline of saved plates. A newer guide set of the same kit, quantity and
// lot takes over from its own start date; plates read before it keep the one in force then.
struct GuideSet {
    qint64 id = 0;
    QString testName;
    QString quantity;  // "PC", "NC" or the kit's ratio header ("S/P", "%I", ...)
    QString lotNumber; // empty: every lot without a guide set of its own
    double mean = 0;
    double sd = 0;
    QDate start;
    int plateCount = 0; // the plates of the baseline; 0 when typed in
    QString setBy;      // the technician or user who set it
    QDateTime setAt;

    // Empty when mean and SD can serve as limits; else why not ("the SD must be above 0").
    static QString problemWith(double mean, double sd);

    // A baseline this short gives limits, with a warning.
    static constexpr int kAdvisedPlates = 20;

    struct Baseline {
        double mean = 0;
        double sd = 0;
        int plates = 0;
        QString warning; // set below kAdvisedPlates plates
    };
    // The mean and sample SD (n - 1) of the values of the plates picked. nullopt with the
    // reason in *error when there is no value, or when the values give no spread.
    static std::optional<Baseline> fromBaseline(const std::vector<double> &values, QString *error);
};
