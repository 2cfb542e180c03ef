#pragma once

#include "core/RecordSet.h"

#include <QString>
#include <QStringList>

// The tracking table: one row per saved plate of the chosen kit, lot, technician and
// dates, in the order of reading (date, time, then the run and plate as saved). DateRead is
// a QDate, TimeRead a QTime or Null; the other fields are texts. The six statistics are
// texts in the format "###.000" (0.25 reads ".250", -1 reads "-1.000"); the four super
// fields hold the same value in every row.
namespace TrackingTable {

inline const QStringList &fieldNames()
{
    static const QStringList names = {
        QStringLiteral("DateRead"),           QStringLiteral("TimeRead"),
        QStringLiteral("PlateName"),          QStringLiteral("RunName"),
        QStringLiteral("TechName"),           QStringLiteral("LotNumber"),
        QStringLiteral("MeanControl"),        QStringLiteral("MeanCalcRatio"),
        QStringLiteral("SuperMeanCalcRatio"), QStringLiteral("SuperStdDevCalcRatio"),
        QStringLiteral("SuperMeanControl"),   QStringLiteral("SuperStdDevControl"),
    };
    return names;
}

inline RecordSet create()
{
    return RecordSet(fieldNames());
}

// The text form of every statistic of the table.
inline const QString kStatisticFormat = QStringLiteral("###.000");

} // namespace TrackingTable

// What the gathering of tracking data gives to the dialog and to the workbook.
struct TrackingData {
    bool ok = false;
    RecordSet rows;            // the tracking table, on its first row
    QString criticalType;      // "PC" or "NC"
    QString ratioChartTitle;   // "S/P for Test TSC 6174.20"
    QString ratioHeader;       // "%I", "S/N", "S/P" or empty
    QString ratioCriticalType; // "PC", "NC" or empty: a kit without a ratio
    QString controlChartTitle; // "Control ODs for Test TSC 6174.20"
};
