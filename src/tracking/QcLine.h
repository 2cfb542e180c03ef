#pragma once

#include "tracking/QcHistory.h"

#include <QString>

// The line the panel shows for a plate's quality control, from the flags of its run in the
// kit's history: "QC: in control", "QC warning: 1-2s NC" or "QC rejected: 2-2s NC, R-4s",
// with a tool tip naming the values and the guide sets they were judged against. It says
// nothing of the kit's own verdict.
struct QcLine {
    QString text;
    QString toolTip;

    // For the run (counted from 0) of the history. Rules judged within one run across
    // quantities (R-4s, 2of3-2s) are named alone; the others with their quantities.
    static QcLine of(const QcHistory &history, int run);

    // "2-2s NC, 2-2s PC/NC, R-4s": the rules of the flags that reject (or only warn), in the
    // kit's order of rules.
    static QString ruleList(const QcHistory &history, const std::vector<QcFlag> &flags, bool reject);
};
