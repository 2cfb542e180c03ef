#pragma once

#include <QLatin1String>
#include <QtGlobal>

// The catalogue data of one kit as its data sheet gives it: names, control needs,
// filter range and the heads of its figure. Each kit keeps one constant of this.
struct KitSheet {
    QLatin1String testName; // long name for reports
    QLatin1String catNo;
    qint16 minimumPC;
    qint16 recommendedPC;
    qint16 minimumNC;
    qint16 recommendedNC;
    qint16 minimumBlanks;
    qint16 recommendedBlanks;
    qint16 minFilter; // nm, both ends allowed
    qint16 maxFilter;
    qint16 maxVariation;        // largest %CV of a control group
    QLatin1String ratioHeader;  // "%I", "S/N", "S/P" or empty
    QLatin1String ratioControl; // control shown in tracking and reports, or empty
};
