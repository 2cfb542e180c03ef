#pragma once

#include "tracking/WestgardCheck.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>
#include <vector>

// One tracked quantity of a series: its guide-set mean and SD, and its value in each run
// (nothing: not measured in that run).
struct QcQuantity {
    QString name;
    double mean = 0;
    double sd = 0;
    std::vector<std::optional<double>> values;
};

// A series of runs to judge, as the command line takes it:
//   {"rules": ["1-3s", "2-2s", ...], "quantities": [{"name": "NC", "mean": 1.2, "sd": 0.05,
//    "values": [1.21, null, 1.3]}, ...]}
// with the values aligned by run; without "rules" the default rules apply.
struct QcSeries {
    QList<WestgardRule> rules;
    std::vector<QcQuantity> quantities;

    // nullopt with the reason in *error for text that isn't such a series: not JSON, a
    // quantity without a name, mean or SD, an SD of zero or below, a value that is neither
    // a number nor null, quantities of unequal lengths, an unknown rule name.
    static std::optional<QcSeries> fromJson(const QByteArray &json, QString *error);

    QcZTable zTable() const;

    // {"flags": [{"run": 3, "quantity": "NC", "rule": "2-2s", "reject": true}, ...]}, runs
    // counted from 1.
    QJsonObject flagsJson(const std::vector<QcFlag> &flags) const;
};
