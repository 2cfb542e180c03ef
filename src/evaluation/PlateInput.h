#pragma once

#include "core/Wells.h"

#include <QDate>
#include <QString>
#include <QVariant>

#include <array>

// One plate as the evaluation sees it: everything it reads, nothing it could reach through.
// Arrays are in well order (A1, B1 ... H1, A2 ... H12).
struct PlateInput {
    // The test chosen for the plate; the evaluation stamps it on the plate.
    QString testName;
    // The version that first validated the plate (LastVersionValidated); empty for a plate
    // never validated, which the evaluation stamps with this version.
    QString version;
    std::array<double, wells::kCount> rawODs{};
    // 1 counted, 0 excluded (by the user or by an earlier evaluation), 2 kept by the user.
    std::array<qint16, wells::kCount> flags{};
    std::array<QString, wells::kCount> samples;
    std::array<QString, wells::kCount> groups;
    // The wavelength the plate was read with, as the plate record holds it (FilterUsed);
    // empty for none, which can't be checked against a kit and stops the evaluation.
    QString filter;
    // The kit lot's expiry and the day the plate was read, as the plate record holds them:
    // a date, a date and time, or null (no expiry; read day unknown, so today counts).
    QVariant expDate;
    QVariant dateRead;
    QDate today;
};
