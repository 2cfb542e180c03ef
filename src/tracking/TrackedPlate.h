#pragma once

#include <QDate>
#include <QString>
#include <QTime>
#include <QVariant>

#include <array>
#include <stdexcept>
#include <vector>

// A saved plate that tracking can't read (a flag or a control's OD that is not a number, a
// well list of more than 96 items). The message names the plate, its run and the well.
class TrackingDataError : public std::runtime_error {
public:
    explicit TrackingDataError(const QString &message) : std::runtime_error(message.toStdString()) {}
};

// One saved plate as tracking reads it: where and when it was read, by whom, with what
// kit, and the ODs of its control wells that count.
//
// A well counts for a control when its sample text equals the control's name exactly (case
// included) and its flag is not 0; a flag of 2 (kept by hand) counts like 1. Only the four
// control names can be asked about; the empty name and any other text count no well.
class TrackedPlate {
public:
    // The version of a plate that no version validated.
    static inline const QString kDefaultVersion = QStringLiteral("1.5.4");

    qint64 runID = 0;
    qint64 plateID = 0;
    QString plateName;
    QString runName;
    QString techName;
    QString lotNumber;
    QString testName;
    QString version;   // LastVersionValidated; kDefaultVersion when Null
    QVariant dateRead; // QDate
    QVariant timeRead; // QTime or Null

    // Reads the well lists of a saved plate. The flags may be in either stored form (96
    // digits with no delimiters, as a plate that was never stored holds them, or a well
    // list). Every flag must be a number, and so must the OD of every counted control well.
    // Throws TrackingDataError naming the plate and the well otherwise.
    void setWells(const QString &samples, const QString &ods, const QString &flags);

    // The ODs of the wells that count for the control, in well order (A1, B1, ... H12).
    const std::vector<double> &countedODs(QStringView controlType) const;

    // "Plate #1" of run "Monday": for messages.
    QString describe() const;

private:
    std::array<std::vector<double>, 4> mCounted; // PC, NC, AUX, BLANK
};
